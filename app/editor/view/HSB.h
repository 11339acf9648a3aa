#pragma once

#include <QtGlobal>

namespace sorrel {

/// A colour's hue, saturation and brightness, each from 0 to 1; a hue of 1 is that of 0.
struct HSB {
  double hue = 0;
  double saturation = 0;
  double brightness = 0;
};

/// Red, green and blue, each from 0 to 1.
struct RGB {
  double red = 0;
  double green = 0;
  double blue = 0;
};

/// The hexcone model, and its inverse. A grey has the hue 0.
[[nodiscard]] HSB rgbToHSB(const RGB& color);
[[nodiscard]] RGB hsbToRGB(const HSB& color);
/// As 0xRRGGBB.
[[nodiscard]] quint32 hsbToHex(const HSB& color);

/// Where a picker stands. A colour alone can't tell it: with black and grey the hue is lost.
struct PickerPosition : HSB {
  /// Goes to the colour 0xRRGGBB; for a grey the hue stays.
  void seed(quint32 hex);
};

}  // namespace sorrel
