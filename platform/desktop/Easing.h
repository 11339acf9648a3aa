#pragma once

#include <QEasingCurve>
#include <QPointF>

namespace platform {

/// The curves of the program's motions, as cubic Béziers from (0, 0) to (1, 1).
namespace Easing {

/// Starts at full speed and comes to rest.
[[nodiscard]] inline QEasingCurve out() {
  QEasingCurve curve(QEasingCurve::BezierSpline);
  curve.addCubicBezierSegment({0, 0}, {0.58, 1}, {1, 1});
  return curve;
}
/// Starts and ends at rest.
[[nodiscard]] inline QEasingCurve inOut() {
  QEasingCurve curve(QEasingCurve::BezierSpline);
  curve.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
  return curve;
}

}  // namespace Easing
}  // namespace platform
