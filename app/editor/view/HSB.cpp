#include "app/editor/view/HSB.h"

#include <algorithm>
#include <cmath>

namespace sorrel {

HSB rgbToHSB(const RGB& color) {
  const auto [red, green, blue] = color;
  const double greatest = std::max({red, green, blue});
  const double delta = greatest - std::min({red, green, blue});
  double sixths = 0;
  if (delta > 0) {
    if (greatest == red)
      sixths = std::fmod((green - blue) / delta, 6);
    else if (greatest == green)
      sixths = (blue - red) / delta + 2;
    else
      sixths = (red - green) / delta + 4;
  }
  const double hue = sixths / 6;
  return {hue < 0 ? hue + 1 : hue, greatest > 0 ? delta / greatest : 0, greatest};
}

RGB hsbToRGB(const HSB& color) {
  const double value = color.brightness;
  if (color.saturation <= 0)
    return {value, value, value};
  const double sixths = (color.hue - std::floor(color.hue)) * 6;
  const double part = sixths - std::floor(sixths);
  const double low = value * (1 - color.saturation);
  const double falling = value * (1 - color.saturation * part);
  const double rising = value * (1 - color.saturation * (1 - part));
  switch (static_cast<int>(sixths)) {
    case 0:
      return {value, rising, low};
    case 1:
      return {falling, value, low};
    case 2:
      return {low, value, rising};
    case 3:
      return {low, falling, value};
    case 4:
      return {rising, low, value};
    default:
      return {value, low, falling};
  }
}

quint32 hsbToHex(const HSB& color) {
  const RGB rgb = hsbToRGB(color);
  const auto byte = [](double component) { return static_cast<quint32>(std::lround(component * 255)); };
  return byte(rgb.red) << 16 | byte(rgb.green) << 8 | byte(rgb.blue);
}

void PickerPosition::seed(quint32 hex) {
  const auto component = [hex](int shift) { return (hex >> shift & 0xff) / 255.0; };
  const HSB next = rgbToHSB({component(16), component(8), component(0)});
  constexpr double leastColored = 0.001;
  if (next.saturation > leastColored)
    hue = next.hue;
  saturation = next.saturation;
  brightness = next.brightness;
}

}  // namespace sorrel
