#include "app/editor/view/Guide.h"

#include "app/shell/AppColors.h"

#include <QPainter>
#include <QPen>

#include <cmath>

namespace sorrel {
namespace {

constexpr double dash = 6, gap = 4;  // in display units

/// Straight parts one by one, for which the painter has a quick way; the dashes go on from part to part.
void strokeDashes(QPainter& painter, const QPainterPath& path, QColor color, double opacity, double width) {
  color.setAlphaF(float(opacity));
  QPen pen(color, width, Qt::CustomDashLine, Qt::FlatCap, Qt::MiterJoin);
  pen.setDashPattern({dash / width, gap / width});
  pen.setMiterLimit(10);
  QPointF from;
  double done = 0;
  for (int i = 0; i < path.elementCount(); ++i) {
    const auto element = path.elementAt(i);
    if (element.type == QPainterPath::MoveToElement) {
      from = element;
      continue;
    }
    pen.setDashOffset(done / width);
    painter.setPen(pen);
    if (element.type == QPainterPath::LineToElement) {
      painter.drawLine(QLineF(from, element));
      done += QLineF(from, element).length();
      from = element;
      continue;
    }
    QPainterPath curve(from);
    curve.cubicTo(element, path.elementAt(i + 1), path.elementAt(i + 2));
    painter.strokePath(curve, pen);
    done += curve.length();
    from = path.elementAt(i += 2);
  }
}

}  // namespace

/// Dark below light, so that it is seen on any picture.
void strokeGuide(QPainter& painter, const QPainterPath& path, Emphasis emphasis) {
  painter.save();
  const QColor accent = AppColors::accent.resolved(platform::Appearance::Dark);
  const bool isEmphasized = emphasis == Emphasis::Emphasized;
  strokeDashes(painter, path, Qt::black, isEmphasized ? 0.55 : 0.35, isEmphasized ? 2.5 : 2);
  strokeDashes(painter, path, accent, isEmphasized ? 1 : 0.75, isEmphasized ? 1.5 : 1);
  painter.restore();
}

void GuideCircle::paint(QPainter& painter, const QPointF& center, double diameter) {
  constexpr int largestKept = 512;  // a larger one would hold much memory for a thin line
  const QTransform toDevice = painter.deviceTransform();
  const double scale = toDevice.m11();
  const int middle = int(std::ceil((diameter / 2 + guideReach) * scale));
  const int side = 2 * middle;
  QPainterPath circle;
  circle.addEllipse(center, diameter / 2, diameter / 2);
  if (side > largestKept)
    return strokeGuide(painter, circle, Emphasis::Emphasized);
  if (diameter != pictureDiameter || scale != pictureScale) {
    pictureDiameter = diameter;
    pictureScale = scale;
    picture = QImage(side, side, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter once(&picture);
    once.setRenderHint(QPainter::Antialiasing);
    once.translate(middle, middle);
    once.scale(scale, scale);
    strokeGuide(once, circle.translated(-center), Emphasis::Emphasized);
  }
  const QPointF corner = toDevice.map(center) - QPointF(middle, middle);
  painter.save();
  painter.setTransform(QTransform::fromTranslate(std::round(corner.x()), std::round(corner.y())) *
                       toDevice.inverted() * painter.transform());
  painter.drawImage(0, 0, picture);
  painter.restore();
}

}  // namespace sorrel
