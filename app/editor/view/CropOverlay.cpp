#include "app/editor/view/CropOverlay.h"

#include <QPainter>
#include <QPainterPath>
#include <QRectF>

#include <algorithm>

namespace sorrel {
namespace {

// On the screen, in points.
constexpr double cornerBar = 16;
constexpr double edgeBar = 22;
constexpr double barThickness = 3;
constexpr double frameWidth = 1;
constexpr double thirdsWidth = 0.5;

double usable(double canvasScale) {
  return std::max(canvasScale, 0.05);
}

void drawThirds(QPainter& painter, const QRectF& rectangle, double scale) {
  painter.setPen(QPen(QColor::fromRgbF(1, 1, 1, 0.3F), thirdsWidth / scale, Qt::SolidLine, Qt::FlatCap));
  for (const double part : {1.0 / 3, 2.0 / 3}) {
    const double x = rectangle.left() + rectangle.width() * part;
    const double y = rectangle.top() + rectangle.height() * part;
    painter.drawLine(QLineF(x, rectangle.top(), x, rectangle.bottom()));
    painter.drawLine(QLineF(rectangle.left(), y, rectangle.right(), y));
  }
}

/// Brackets around the corners and a bar on the middle of each edge.
void drawCropHandles(QPainter& painter, const QRectF& rectangle, double scale) {
  const double length = cornerBar / scale;
  const double mid = edgeBar / scale;
  const double thick = barThickness / scale;
  const double half = thick / 2;
  const auto bar = [&](double x, double y, double width, double height) {
    painter.fillRect(QRectF(x, y, width, height), Qt::white);
  };
  for (const bool isRight : {false, true})
    for (const bool isBottom : {false, true}) {
      const double x = isRight ? rectangle.right() : rectangle.left();
      const double y = isBottom ? rectangle.bottom() : rectangle.top();
      bar(isRight ? x + half - length : x - half, y - half, length, thick);
      bar(x - half, isBottom ? y + half - length : y - half, thick, length);
    }
  for (const double y : {rectangle.top(), rectangle.bottom()})
    bar(rectangle.center().x() - mid / 2, y - half, mid, thick);
  for (const double x : {rectangle.left(), rectangle.right()})
    bar(x - half, rectangle.center().y() - mid / 2, thick, mid);
}

}  // namespace

void drawCropOverlay(QPainter& painter, const QRectF& cropRect, const QSizeF& displaySize,
                     double canvasScale) {
  if (cropRect.width() <= 1 || cropRect.height() <= 1)
    return;
  const double scale = usable(canvasScale);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);

  QPainterPath around;  // the odd-even rule leaves what lies in both clear
  around.addRect(QRectF(QPointF(), displaySize));
  around.addRect(cropRect);
  painter.fillPath(around, QColor::fromRgbF(0, 0, 0, 0.5F));

  drawThirds(painter, cropRect, scale);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(
      QPen(QColor::fromRgbF(1, 1, 1, 0.9F), frameWidth / scale, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
  painter.drawRect(cropRect);
  drawCropHandles(painter, cropRect, scale);
  painter.restore();
}

double cropOverlayReach(double canvasScale) {
  return barThickness / 2 / usable(canvasScale);
}

}  // namespace sorrel
