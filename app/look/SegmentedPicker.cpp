#include "app/look/SegmentedPicker.h"

#include "app/look/ButtonControls.h"
#include "app/look/ControlPainting.h"
#include "app/look/FocusRing.h"
#include "app/look/LookColors.h"
#include "platform/desktop/Symbols.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QRadioButton>
#include <QStyleOptionButton>

namespace sorrel {
namespace {

constexpr int inset = 2;  // of the choices in their trough
constexpr int padding = 8;
constexpr int symbolSide = 14;

}  // namespace

/// A radio button, so that the arrow keys and what a screen reader says are those of a choice.
class SegmentedPicker::Segment : public QRadioButton {
 public:
  explicit Segment(QWidget* parent) : QRadioButton(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFocusPolicy(Qt::TabFocus);
  }

  void show(const Choice& choice) {
    symbol = choice.symbol;
    setText(choice.text);
    setAccessibleName(choice.text);
    setToolTip(symbol.isEmpty() ? QString() : choice.text);
    updateGeometry();
    update();
  }

  [[nodiscard]] QSize sizeHint() const override {
    const int contents = symbol.isEmpty() ? fontMetrics().horizontalAdvance(text()) + 1 : symbolSide;
    return {contents + 2 * padding, std::max(ButtonControls::height - 2 * inset, fontMetrics().height() + 4)};
  }
  [[nodiscard]] QSize minimumSizeHint() const override { return {symbolSide + padding, sizeHint().height()}; }

 protected:
  bool hitButton(const QPoint& point) const override { return rect().contains(point); }

  void paintEvent(QPaintEvent*) override {
    QStyleOptionButton option;
    initStyleOption(&option);
    const ControlColors colors(option);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = onWholePixels(painter, rect());
    const bool isHovered = underMouse() && isEnabled();
    constexpr double radius = controlRadius - inset;
    if (isChecked())
      fillRounded(painter, area, radius, colors.accent(isHovered, isDown()));
    else if (isHovered)
      fillRounded(painter, area, radius, colors.ground(false, isDown()));
    const QColor ink = colors(isChecked() ? LookColors::onAccent : LookColors::label);
    if (symbol.isEmpty()) {
      painter.setPen(ink);
      painter.drawText(rect().adjusted(inset, 0, -inset, 0), Qt::AlignCenter | Qt::TextSingleLine,
                       fontMetrics().elidedText(text(), Qt::ElideRight, width() - 2 * inset));
    } else {
      QRectF place(0, 0, symbolSide, symbolSide);
      place.moveCenter(area.center());
      platform::drawSymbol(painter, place, symbol, {ink});
    }
    if (showsKeyboardFocus(option))
      drawFocusRing(painter, area.adjusted(1, 1, -1, -1),
                    colors(isChecked() ? LookColors::onAccent : AppColors::accent), radius - 1);
  }

 private:
  QString symbol;
};

SegmentedPicker::SegmentedPicker(std::function<void(int)> handler, QWidget* parent)
    : QWidget(parent), onChoose(std::move(handler)) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(inset, inset, inset, inset);
  row->setSpacing(1);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void SegmentedPicker::setChoices(const std::vector<Choice>& choices) {
  while (segments.size() < choices.size()) {
    auto* const segment = new Segment(this);
    segment->setFont(font());
    layout()->addWidget(segment);
    // The arrow keys choose without a click.
    connect(segment, &QAbstractButton::toggled, this, [this, index = int(segments.size())](bool isOn) {
      if (isOn && !isSetting)
        onChoose(index);
    });
    segments.push_back(segment);
  }
  for (size_t i = 0; i < choices.size(); ++i)
    segments[i]->show(choices[i]);
}

void SegmentedPicker::setChosen(int index) {
  isSetting = true;
  for (int i = 0; i < int(segments.size()); ++i) {
    segments[size_t(i)]->setAutoExclusive(false);  // so that none may hold
    segments[size_t(i)]->setChecked(i == index);
  }
  for (Segment* const segment : segments)
    segment->setAutoExclusive(true);
  isSetting = false;
}

int SegmentedPicker::chosen() const {
  for (size_t i = 0; i < segments.size(); ++i)
    if (segments[i]->isChecked())
      return int(i);
  return -1;
}

void SegmentedPicker::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  fillRounded(painter, onWholePixels(painter, rect()), controlRadius,
              ControlColors(palette(), isEnabled())(LookColors::control));
}

}  // namespace sorrel
