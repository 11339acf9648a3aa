#pragma once

#include <QImage>
#include <QRect>

class QPainter;

namespace sorrel {

/// What the picture lies on: a checkerboard, and the picture's shadow on it. The painter's unit is a device
/// pixel, its origin the canvas's corner; `ratio` of them are a point.
class CanvasBackdrop {
 public:
  /// Of the picture, in points.
  static constexpr double cornerRadius = 6;

  /// Paints what of it is seen in `exposed`, below the picture too.
  void paint(QPainter& painter, const QRect& exposed, const QRect& picture, double ratio);
  /// Paints it over what of the painted picture lies outside of its rounded corners.
  void paintAroundCorners(QPainter& painter, const QRect& exposed, const QRect& picture, double ratio);

 private:
  void paintShadow(QPainter& painter, const QRect& picture, double ratio);
  /// Of a rectangle that is just large enough for its sides to be drawn out to any length.
  [[nodiscard]] const QImage& shadowAt(double ratio);

  QImage shadow;
  double shadowRatio = 0;
};

}  // namespace sorrel
