#include "platform/desktop/panel/PanelFrame.h"

#include "platform/imaging/filters/GaussianBlur.h"

#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace platform {
namespace {

constexpr int shadowDrop = 6;
constexpr double shadowSigma = 10;
constexpr QColor shadowColor(0, 0, 0, 90);

QImage shadowOf(const QSize& window, const QRect& area, int radius, qreal scale) {
  QImage image((QSizeF(window) * scale).toSize(), QImage::Format_RGBA8888_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(scale, scale);
  painter.setPen(Qt::NoPen);
  painter.setBrush(shadowColor);
  painter.drawRoundedRect(area.translated(0, shadowDrop), radius, radius);
  painter.end();
  image = gaussianBlur(std::move(image), shadowSigma * scale);
  // None below the panel, which may let something through.
  painter.begin(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(scale, scale);
  painter.setCompositionMode(QPainter::CompositionMode_Clear);
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::black);
  painter.drawRoundedRect(area, radius, radius);
  painter.end();
  image.setDevicePixelRatio(scale);
  return image;
}

}  // namespace

PanelFrame::PanelFrame(QWidget* sheet, int cornerRadius, const Color& line)
    : QWidget(sheet), radius(cornerRadius), outline(line) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
}

void PanelFrame::fit(const QRect& panel, bool isSeenThrough) {
  area = panel;
  isTranslucent = isSeenThrough;
  shadow = {};
  setGeometry(parentWidget()->rect());
  raise();
  update();
}

void PanelFrame::setOpacity(double part) {
  if (std::exchange(opacity, part) != part)
    update();
}

void PanelFrame::paintEvent(QPaintEvent* event) {
  paintEdge(*event);
  if (opacity < 1) {
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.fillRect(event->rect(), QColor::fromRgbF(0, 0, 0, static_cast<float>(opacity)));
  }
}

void PanelFrame::paintEdge(const QPaintEvent& event) {
  // Most of what is painted anew is inside, where there is nothing to do.
  if (area.adjusted(radius, 2, -radius, -2).contains(event.rect()) ||
      area.adjusted(2, radius, -2, -radius).contains(event.rect()))
    return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  if (isTranslucent)
    paintOutside(painter);
  // As many whole pixels as a point has, so that the line is even all around.
  const qreal width = std::max(std::floor(devicePixelRatioF()), 1.0) / devicePixelRatioF();
  painter.setPen(QPen(outline.resolved(), width));
  const QRectF line = QRectF(area).adjusted(width / 2, width / 2, -width / 2, -width / 2);
  painter.drawRoundedRect(line, radius - width / 2, radius - width / 2);
}

void PanelFrame::paintOutside(QPainter& painter) {
  QPainterPath corners;
  corners.addRect(area);
  corners.addRoundedRect(area, radius, radius);
  painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
  painter.fillPath(corners, Qt::black);
  if (area != rect()) {
    if (shadow.isNull() || shadow.devicePixelRatio() != devicePixelRatioF())
      shadow = shadowOf(size(), area, radius, devicePixelRatioF());
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
    painter.drawImage(0, 0, shadow);
  }
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

}  // namespace platform
