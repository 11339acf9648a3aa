#pragma once

#include "tools/screencapture/selection/Geometry.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace screencapture {

/// The languages that the program speaks.
enum class Language { English, Korean };

/// The texts that the tool can show. It has no fonts at hand, so they are drawn when the program is built.
enum class Text {
  // Of these each character has a cell of its own, all of the same width.
  Digits,     // '0' to '9' and the multiplication sign
  HexDigits,  // '0' to '9', 'A' to 'F' and '#'
  EnglishHint,
  KoreanHint,
  EnglishEscapeHint,
  KoreanEscapeHint,
};

/// How many cells the text has; it is one of them if it isn't cut into characters.
[[nodiscard]] constexpr int cellsOf(Text text) {
  return text == Text::Digits ? 11 : text == Text::HexDigits ? 17 : 1;
}

/// How much of each pixel a text covers, from 0 to 255, rows without gaps.
struct Coverage {
  Size size;
  std::vector<std::uint8_t> values;
};

/// A text for a scale between 1 and 4. It is sharpest at the scales at which it was drawn, among them the
/// usual 1, 1.25, 1.5 and 2; between these it is made smaller from the next larger one.
[[nodiscard]] Coverage coverageOf(Text text, double scale);

/// A line of the characters of Digits ("x" standing for the multiplication sign) or HexDigits, and of spaces
/// of half a character's width.
[[nodiscard]] Coverage lineOf(std::string_view text, Text characters, double scale);

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
