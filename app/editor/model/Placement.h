#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace sorrel {

/// Where display space lies on a surface. Both have their origin at the top left, and y grows downwards.
struct Placement {
  double scale = 1;  // the surface's pixels for a display point, on both axes
  QPointF origin;    // of display space, on the surface
  QSizeF displaySize;
  /// Where the picture ends on the surface. One scale for both axes can leave rows below the display; what
  /// reaches the display's lower edge reaches them too, since who covers everything means everything.
  double lowerEdge = 0;

  [[nodiscard]] QPointF point(const QPointF& display) const { return scale * display + origin; }

  [[nodiscard]] QRectF rectangle(const QRectF& display) const {
    QRectF placed(point(display.topLeft()), scale * display.size());
    if (display.top() < displaySize.height() && display.bottom() >= displaySize.height() - tolerance)
      placed.setBottom(lowerEdge);
    return placed;
  }

  /// The first row that lies below the display, wholly or in part; the picture's end if there is none.
  [[nodiscard]] double firstRowBelow() const {
    const double end = scale * displaySize.height() + origin.y();
    return end < lowerEdge - tolerance ? double(qint64(end + tolerance)) : lowerEdge;
  }

 private:
  static constexpr double tolerance = 1e-6;
};

}  // namespace sorrel
