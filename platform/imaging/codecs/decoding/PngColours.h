#pragma once

#include <QByteArray>

#include <array>

namespace platform::decoding {

/// A PNG file's chunks for gamma and primaries.
struct PngColours {
  using Point = std::array<double, 2>;  // of the CIE's xy diagram; zeros where it isn't told

  double gamma = 0;  // the exponent that made the samples of light, such as 0.45455; 0 if it isn't told
  std::array<Point, 4> xy{};  // white, red, green, blue
};

/// The same as an ICC profile; empty where they mean sRGB, are senseless, or tell no gamma. A gamma within a
/// twentieth of 1/2.2 means sRGB, as all programs write it.
[[nodiscard]] QByteArray profileOf(const PngColours& colours);

}  // namespace platform::decoding
