#pragma once

#include <span>
#include <vector>

namespace screencapture {

struct Vector {
  double x = 0;
  double y = 0;
};

/// A straight piece of a stroke's middle line.
struct Segment {
  Vector from;
  Vector to;
};

/// Digits and the multiplication sign as middle lines of strokes. A digit is 6 units wide and 10 high, from
/// the top left; all have the same advance, so that a changing number does not jitter.
inline constexpr double glyphWidth = 6;
inline constexpr double glyphHeight = 10;

/// '0' to '9' and 'x'; nothing for any other character.
[[nodiscard]] std::span<const Segment> glyphStrokes(char character);

/// How far `point` is from the nearest of the segments.
[[nodiscard]] double distanceTo(std::span<const Segment> segments, Vector point);

}  // namespace screencapture
