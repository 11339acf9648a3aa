#pragma once

#include "app/editor/view/HSB.h"

#include <QColor>
#include <QGradient>

namespace sorrel {

/// The pure colour of a hue.
[[nodiscard]] inline QColor pureHue(double hue) {
  return QColor::fromRgb(0xff000000 | hsbToHex({hue, 1, 1}));
}

/// All hues from the one end to the other, in twelve steps.
[[nodiscard]] inline QGradientStops hueWheel() {
  constexpr int steps = 12;
  QGradientStops stops;
  for (int i = 0; i <= steps; ++i)
    stops.append({double(i) / steps, pureHue(double(i) / steps)});
  return stops;
}

}  // namespace sorrel
