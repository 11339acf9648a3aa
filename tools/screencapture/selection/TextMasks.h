#pragma once

#include "tools/screencapture/selection/Geometry.h"

#include <cstdint>
#include <span>
#include <vector>

namespace screencapture {

/// The languages that the program speaks.
enum class Language { English, Korean };

/// The texts that the tool can show. It has no fonts at hand, so they are drawn when the program is built.
enum class Text {
  Digits,  // '0' to '9' and the multiplication sign, each in a cell of the same width
  EnglishHint,
  KoreanHint,
};
inline constexpr int digitCells = 11;

/// How much of each pixel a text covers, from 0 to 255, rows without gaps.
struct Coverage {
  Size size;
  std::vector<std::uint8_t> values;
};

/// A text for a scale between 1 and 4. It is sharpest at the scales at which it was drawn, among them the
/// usual 1, 1.25, 1.5 and 2; between these it is made smaller from the next larger one.
[[nodiscard]] Coverage coverageOf(Text text, double scale);

/// A text as the build has drawn it.
struct BakedText {
  Text text;
  double scale;
  Size size;
  /// The coverage row by row; a 0 stands for as many clear pixels as the byte after it says.
  std::span<const std::uint8_t> packed;
};
/// By text, then by scale.
extern const std::span<const BakedText> bakedTexts;

}  // namespace screencapture
