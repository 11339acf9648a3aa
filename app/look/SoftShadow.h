#pragma once

#include <QRectF>

class QPainter;

namespace sorrel {

/// A shadow around a rounded rectangle, in points.
struct SoftShadow {
  qreal reach;    // how far it falls beyond the rectangle
  qreal drop;     // how far down it lies
  qreal opacity;  // just below the rectangle's edge

  /// The room that it takes on each side of the rectangle.
  [[nodiscard]] constexpr qreal room() const { return reach + drop; }
};

/// Paints the shadow that is seen around the rectangle `area` with corners of `radius`; below the rectangle
/// it paints too.
void paintSoftShadow(QPainter& painter, const QRectF& area, qreal radius, const SoftShadow& shadow);

}  // namespace sorrel
