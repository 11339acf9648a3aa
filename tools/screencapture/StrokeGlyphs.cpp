#include "tools/screencapture/StrokeGlyphs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace screencapture {

namespace {

constexpr int curvePieces = 14;

/// Draws with a pen: each call goes on from or starts a stroke and adds straight pieces.
class Pen {
 public:
  Pen& line(Vector from, Vector to) {
    segments.push_back({from, to});
    return *this;
  }

  /// Part of an ellipse; angles in degrees, clockwise from the right since y runs down.
  Pen& arc(Vector centre, Vector radius, double begin, double end) {
    const auto at = [&](int piece) {
      const double angle = (begin + (end - begin) * piece / curvePieces) * std::numbers::pi / 180;
      return Vector{centre.x + radius.x * std::cos(angle), centre.y + radius.y * std::sin(angle)};
    };
    for (int piece = 0; piece < curvePieces; ++piece)
      line(at(piece), at(piece + 1));
    return *this;
  }

  /// A parabola's arc from one point to another, drawn towards `pull`.
  Pen& curve(Vector from, Vector pull, Vector to) {
    const auto at = [&](int piece) {
      const double t = static_cast<double>(piece) / curvePieces;
      const double a = (1 - t) * (1 - t), b = 2 * t * (1 - t), c = t * t;
      return Vector{a * from.x + b * pull.x + c * to.x, a * from.y + b * pull.y + c * to.y};
    };
    for (int piece = 0; piece < curvePieces; ++piece)
      line(at(piece), at(piece + 1));
    return *this;
  }

  std::vector<Segment> segments;
};

std::vector<Segment> turnedAround(std::vector<Segment> glyph) {
  const auto turned = [](Vector point) { return Vector{glyphWidth - point.x, glyphHeight - point.y}; };
  for (Segment& segment : glyph)
    segment = {turned(segment.from), turned(segment.to)};
  return glyph;
}

using Glyphs = std::array<std::vector<Segment>, 11>;
constexpr std::size_t timesSign = 10;

Glyphs drawGlyphs() {
  Glyphs glyphs;
  glyphs[0] = Pen()
                  .arc({3, 3}, {3, 3}, 180, 360)
                  .line({6, 3}, {6, 7})
                  .arc({3, 7}, {3, 3}, 0, 180)
                  .line({0, 7}, {0, 3})
                  .segments;
  glyphs[1] = Pen().line({1, 2}, {3.5, 0}).line({3.5, 0}, {3.5, 10}).segments;
  glyphs[2] = Pen()
                  .arc({3, 2.9}, {2.8, 2.9}, 190, 400)
                  .line({5.15, 4.76}, {0.2, 10})
                  .line({0.2, 10}, {6, 10})
                  .segments;
  glyphs[3] = Pen().arc({2.9, 2.4}, {2.6, 2.4}, 200, 450).arc({2.9, 7.4}, {3, 2.6}, 270, 520).segments;
  glyphs[4] = Pen().line({4.5, 10}, {4.5, 0}).line({4.5, 0}, {0, 7}).line({0, 7}, {6.3, 7}).segments;
  glyphs[5] =
      Pen().line({5.5, 0}, {1, 0}).line({1, 0}, {0.6, 4.5}).arc({2.9, 6.7}, {3.1, 3.3}, 222, 510).segments;
  glyphs[6] = Pen().curve({4.8, 0}, {0.4, 3.2}, {0, 6.9}).arc({3, 6.9}, {3, 3.1}, 0, 360).segments;
  glyphs[7] = Pen().line({0, 0}, {6, 0}).line({6, 0}, {2, 10}).segments;
  glyphs[8] = Pen().arc({3, 2.4}, {2.5, 2.4}, 0, 360).arc({3, 7.4}, {3, 2.6}, 0, 360).segments;
  glyphs[9] = turnedAround(glyphs[6]);
  glyphs[timesSign] = Pen().line({1, 3.5}, {5, 7.5}).line({1, 7.5}, {5, 3.5}).segments;
  return glyphs;
}

double distanceTo(const Segment& segment, Vector point) {
  const Vector along{segment.to.x - segment.from.x, segment.to.y - segment.from.y};
  const Vector towards{point.x - segment.from.x, point.y - segment.from.y};
  const double length = along.x * along.x + along.y * along.y;
  const double share =
      length > 0 ? std::clamp((towards.x * along.x + towards.y * along.y) / length, 0.0, 1.0) : 0;
  return std::hypot(towards.x - share * along.x, towards.y - share * along.y);
}

}  // namespace

std::span<const Segment> glyphStrokes(char character) {
  static const Glyphs glyphs = drawGlyphs();
  if (character >= '0' && character <= '9')
    return glyphs[static_cast<std::size_t>(character - '0')];
  if (character == 'x')
    return glyphs[timesSign];
  return {};
}

double distanceTo(std::span<const Segment> segments, Vector point) {
  double nearest = std::numeric_limits<double>::infinity();
  for (const Segment& segment : segments)
    nearest = std::min(nearest, distanceTo(segment, point));
  return nearest;
}

}  // namespace screencapture
