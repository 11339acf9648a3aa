#include "app/editor/view/InlineColorPicker.h"

#include "app/editor/view/HueWheel.h"
#include "app/editor/view/OptionsSection.h"
#include "app/editor/view/PickerField.h"
#include "app/look/ControlPainting.h"
#include "app/look/Fading.h"
#include "app/settings/LocalizationManager.h"

#include <QPainter>
#include <QVBoxLayout>

namespace sorrel {
namespace {

constexpr std::chrono::milliseconds duration(150);
constexpr QSize squareSize(150, 96);
constexpr QSize barSize(150, 14);
constexpr double squareRadius = 6;
constexpr int gap = 12;  // between the square and the bar
static_assert(OptionsSection::overhang == PickerField::room);
// The fields' own room lies in the gaps around them.
constexpr int topMargin = OptionsSection::spacing - PickerField::room;
constexpr int overlap = 2 * PickerField::room - gap;
constexpr int belowBar = 3;  // for the lower edge of its thumb

/// One fill with all layers in it: at a rounded edge each fill of its own would let the ones below through.
void fillSquare(QPainter& painter, const QRectF& area, double hue) {
  const double ratio = painter.deviceTransform().m11();
  const QRect pixels({}, (area.size() * ratio).toSize());
  QImage layers(pixels.size(), QImage::Format_RGB32);
  layers.fill(pureHue(hue));
  QLinearGradient white(pixels.topLeft(), pixels.topRight());
  white.setColorAt(0, Qt::white);
  white.setColorAt(1, QColor(255, 255, 255, 0));
  QLinearGradient black(pixels.topLeft(), pixels.bottomLeft());
  black.setColorAt(0, QColor(0, 0, 0, 0));
  black.setColorAt(1, Qt::black);
  QPainter onLayers(&layers);
  onLayers.fillRect(pixels, white);
  onLayers.fillRect(pixels, black);
  onLayers.end();
  QBrush brush(layers);
  brush.setTransform(QTransform::fromScale(1 / ratio, 1 / ratio));
  painter.setBrush(brush);
  painter.drawRoundedRect(area, squareRadius, squareRadius);
}

void fillBar(QPainter& painter, const QRectF& area) {
  QLinearGradient hues(area.topLeft(), area.topRight());
  hues.setStops(hueWheel());
  painter.setBrush(hues);
  painter.drawRoundedRect(area, area.height() / 2, area.height() / 2);
}

QString percent(double part) {
  return QStringLiteral("%1%").arg(qRound(part * 100));
}

}  // namespace

InlineColorPicker::InlineColorPicker(EditorModel& shown, QWidget* parent)
    : QWidget(parent),
      model(shown),
      sheet(new QWidget(this)),
      sbSquare(new PickerField(
          {squareSize, squareRadius, 14, 0.5, false,
           [this](QPainter& painter, const QRectF& area) { fillSquare(painter, area, position.hue); }},
          [this](const QPointF& place) {
            position.saturation = place.x();
            position.brightness = 1 - place.y();
            apply();
          },
          sheet)),
      hueBar(new PickerField(
          {barSize, barSize.height() / 2.0, barSize.height() + 4.0, 0.3, true, fillBar},
          [this](const QPointF& place) {
            position.hue = place.x();
            apply();
          },
          sheet)),
      unfolding(duration, platform::Easing::Out, [this](double) { place(); }),
      watch(model, {&model.colorHex}, [this] { colorChanged(); }),
      languageChanges(LocalizationManager::shared().observe([this] { showTexts(); })) {
  sbSquare->move(0, topMargin);
  hueBar->move(0, sbSquare->geometry().bottom() + 1 - overlap);
  sheet->resize(sbSquare->width(), hueBar->geometry().bottom() + 1 - PickerField::room + belowBar);
  showTexts();
  place();
}

void InlineColorPicker::toggle() {
  unfolded = !unfolded;
  if (unfolded) {
    position.seed(model.colorHex);
    showPosition();
  }
  unfolding.moveTo(unfolded ? 1 : 0);
}

/// The picker's own changes don't come back, which would round its position off.
void InlineColorPicker::colorChanged() {
  if (!unfolded || model.colorHex == hsbToHex(position))
    return;
  position.seed(model.colorHex);
  showPosition();
}

void InlineColorPicker::apply() {
  showPosition();
  model.colorHex = hsbToHex(position);
}

void InlineColorPicker::showPosition() {
  sbSquare->setThumb({position.saturation, 1 - position.brightness},
                     QColor::fromRgb(0xff000000 | hsbToHex(position)));
  sbSquare->setValueText(percent(position.saturation) + QStringLiteral(", ") + percent(position.brightness));
  hueBar->setThumb({position.hue, 0}, pureHue(position.hue));
  hueBar->setValueText(QStringLiteral("%1°").arg(qRound(position.hue * 360)));
}

/// It comes from below the row above, as much of it as there is room for.
void InlineColorPicker::place() {
  const double shown = unfolding.value();
  const int room = qRound(sheet->height() * shown);
  setVisible(shown > 0);
  setFixedHeight(room);
  sheet->move(0, room - sheet->height());
  setOpacity(*sheet, shown);
}

void InlineColorPicker::showTexts() {
  sbSquare->setAccessibleName(localized(QStringLiteral("editor.pen.saturationAndBrightness")));
  hueBar->setAccessibleName(localized(QStringLiteral("editor.pen.hue")));
}

}  // namespace sorrel
