// Draws all controls in all their states, light and dark, as a sheet to judge them by: controls_board FOLDER
// [SCALE].

#include "app/look/ButtonControls.h"
#include "app/look/LookStyle.h"
#include "app/look/SegmentedPicker.h"
#include "app/shell/AppColors.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QSlider>

#include <functional>

using namespace Qt::StringLiterals;

namespace demo {
namespace {

enum class State { Normal, Hovered, Pressed, Focused, Disabled };
constexpr std::array states = {State::Normal, State::Hovered, State::Pressed, State::Focused,
                               State::Disabled};

constexpr QSize cell(172, 44);

using Maker = std::function<QWidget*(QWidget*)>;

QPushButton* button(QWidget* parent, const QString& text) {
  return new QPushButton(text, parent);
}

template <typename Kind>
Kind* ranged(Kind* control, int page) {
  control->setRange(0, 100);
  control->setPageStep(page);
  control->setValue(40);
  return control;
}

std::vector<Maker> makers() {
  const auto picker = [](QWidget* parent, const std::vector<sorrel::SegmentedPicker::Choice>& choices) {
    auto* const made = new sorrel::SegmentedPicker([](int) {}, parent);
    made->setChoices(choices);
    made->setChosen(0);
    return made;
  };
  return {
      [](QWidget* parent) { return button(parent, u"Choose…"_s); },
      [](QWidget* parent) {
        auto* const made = button(parent, u"저장"_s);
        made->setDefault(true);
        return made;
      },
      [](QWidget* parent) {
        auto* const made = button(parent, u"Delete"_s);
        sorrel::setSymbol(*made, u"trash"_s);
        sorrel::setDestructive(*made);
        return made;
      },
      [](QWidget* parent) {
        auto* const made = button(parent, u"Logo"_s);
        sorrel::setSymbol(*made, u"photo"_s);
        made->setFlat(true);
        made->setMenu(new QMenu(made));
        return made;
      },
      [](QWidget* parent) {
        auto* const made = button(parent, u"Every month"_s);
        made->setMenu(new QMenu(made));
        return made;
      },
      [](QWidget* parent) {
        auto* const made = new QCheckBox(u"Switch"_s, parent);
        made->setChecked(true);
        return made;
      },
      [](QWidget* parent) { return new QCheckBox(u"스위치"_s, parent); },
      [picker](QWidget* parent) {
        return picker(parent, {{u"Gaussian"_s}, {u"Mosaic"_s}});
      },
      [picker](QWidget* parent) {
        return picker(parent, {{u"Left"_s, u"text.alignleft"_s},
                               {u"Middle"_s, u"text.aligncenter"_s},
                               {u"Right"_s, u"text.alignright"_s}});
      },
      [](QWidget* parent) { return ranged(new QSlider(Qt::Horizontal, parent), 10); },
      [](QWidget* parent) {
        auto* const made = new QComboBox(parent);
        made->addItems({u"시스템"_s, u"한국어"_s, u"English"_s});
        return made;
      },
      [](QWidget* parent) {
        auto* const made = new QComboBox(parent);
        made->setEditable(true);
        made->addItems({u"Written"_s});
        return made;
      },
      [](QWidget* parent) { return new QLineEdit(u"Alt+Shift+S"_s, parent); },
      [](QWidget* parent) {
        auto* const made = new QLineEdit(parent);
        made->setPlaceholderText(u"Record a shortcut"_s);
        return made;
      },
      [](QWidget* parent) { return ranged(new QScrollBar(Qt::Horizontal, parent), 60); },
  };
}

/// The control itself, or the part of it that has states.
QWidget* partOf(QWidget* control) {
  QWidget* const segment = qobject_cast<QAbstractButton*>(control->childAt(8, control->height() / 2));
  return segment ? segment : control;
}

void bring(QWidget* control, State state) {
  QWidget* const part = partOf(control);
  part->setAttribute(Qt::WA_UnderMouse, state == State::Hovered || state == State::Pressed);
  if (auto* const pressed = qobject_cast<QAbstractButton*>(part); pressed && state == State::Pressed)
    pressed->setDown(true);
  if (state == State::Focused)
    part->setFocus(Qt::TabFocusReason);
  control->window()->setAttribute(Qt::WA_KeyboardFocusChange);
  control->setEnabled(state != State::Disabled);
}

QImage board(platform::Appearance appearance, double scale) {
  QWidget window;
  window.setPalette(platform::paletteOf(appearance, sorrel::AppColors::accent));
  const std::vector<Maker> controls = makers();
  window.resize(cell.width() * int(states.size()), cell.height() * int(controls.size()));
  window.show();
  window.activateWindow();
  QApplication::processEvents();
  QImage sheet(window.size() * scale, QImage::Format_RGB32);
  sheet.setDevicePixelRatio(scale);
  QPainter painter(&sheet);
  painter.fillRect(QRect({}, window.size()), window.palette().window());
  for (size_t row = 0; row < controls.size(); ++row)
    for (size_t column = 0; column < states.size(); ++column) {
      const std::unique_ptr<QWidget> control(controls[row](&window));
      control->resize(std::min(control->sizeHint().width(), cell.width() - 24), control->sizeHint().height());
      if (qobject_cast<QAbstractSlider*>(control.get()) || qobject_cast<QLineEdit*>(control.get()))
        control->resize(cell.width() - 24, control->sizeHint().height());
      QRect place(QPoint(cell.width() * int(column), cell.height() * int(row)), cell);
      control->move(place.left() + 12, place.top() + (cell.height() - control->height()) / 2);
      control->show();
      QApplication::processEvents();
      bring(control.get(), states[column]);
      painter.drawPixmap(place, window.grab(place));
    }
  return sheet;
}

}  // namespace
}  // namespace demo

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const double scale = argc > 2 ? QByteArray(argv[2]).toDouble() : 1;
  qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
  const QApplication application(argc, argv);
  if (argc < 2)
    return 2;
  QApplication::setStyle(new sorrel::LookStyle);
  const QImage light = demo::board(platform::Appearance::Light, scale);
  const QImage dark = demo::board(platform::Appearance::Dark, scale);
  QImage both(light.width() + dark.width(), light.height(), QImage::Format_RGB32);
  QPainter painter(&both);
  painter.drawImage(QRect({}, light.size()), light);
  painter.drawImage(QRect({light.width(), 0}, dark.size()), dark);
  painter.end();
  return both.save(QDir(QString::fromLocal8Bit(argv[1])).filePath(u"controls.png"_s)) ? 0 : 1;
}
