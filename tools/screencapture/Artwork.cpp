#include "tools/screencapture/Artwork.h"

#include "tools/screencapture/StrokeGlyphs.h"

#include <algorithm>
#include <cmath>

namespace screencapture {

namespace {

struct Colour {
  double red, green, blue, alpha;  // 0 to 1, straight
};

constexpr Colour white{1, 1, 1, 1};
constexpr Colour ink{0.08, 0.09, 0.08, 1};
constexpr Colour labelGround{0.10, 0.11, 0.10, 0.94};
constexpr Colour labelEdge{1, 1, 1, 0.30};

// Lengths at the scale 1.
constexpr double glyphUnit = 0.95;
constexpr double glyphGap = 2.6;    // in glyph units
constexpr double spaceWidth = 1.2;  // in glyph units
constexpr double strokeWidth = 1.45;
constexpr double labelHeight = 24;
constexpr double labelPadding = 9;
constexpr double labelRadius = 6;

double advance(char character) {
  return (character == ' ' ? spaceWidth : glyphWidth) + glyphGap;
}

/// Lays shapes over one another. A shape is a function from a point, in pixels, to its distance from the
/// shape's edge, negative inside; half a pixel on either side of the edge is blended.
class Painter {
 public:
  explicit Painter(Size size) : artwork{size, {}, {}} {
    artwork.pixels.resize(static_cast<std::size_t>(size.width * size.height));
  }

  template <typename Distance>
  void fill(const Rectangle& within, const Colour& colour, Distance distance) {
    const Rectangle part = within.intersected({0, 0, artwork.size.width, artwork.size.height});
    for (int y = part.y; y < part.bottom(); ++y) {
      for (int x = part.x; x < part.right(); ++x) {
        const double coverage = std::clamp(0.5 - distance(Vector{x + 0.5, y + 0.5}), 0.0, 1.0);
        if (coverage > 0)
          blend(artwork.pixels[static_cast<std::size_t>(y * artwork.size.width + x)], colour,
                colour.alpha * coverage);
      }
    }
  }

  template <typename Distance>
  void fill(const Colour& colour, Distance distance) {
    fill({0, 0, artwork.size.width, artwork.size.height}, colour, distance);
  }

  Artwork artwork;

 private:
  static void blend(std::uint32_t& pixel, const Colour& colour, double alpha) {
    const double channels[] = {1, colour.red, colour.green, colour.blue};
    std::uint32_t result = 0;
    for (int i = 0; i < 4; ++i) {
      const int shift = 24 - 8 * i;
      const double below = (pixel >> shift) & 0xff;
      result |= static_cast<std::uint32_t>(std::lround(channels[i] * alpha * 255 + below * (1 - alpha)))
                << shift;
    }
    pixel = result;
  }
};

/// A rectangle with round corners, as a shape.
struct RoundedBox {
  Vector centre;
  Vector half;
  double radius;

  double operator()(Vector point) const {
    const double x = std::abs(point.x - centre.x) - half.x + radius;
    const double y = std::abs(point.y - centre.y) - half.y + radius;
    return std::hypot(std::max(x, 0.0), std::max(y, 0.0)) + std::min(std::max(x, y), 0.0) - radius;
  }
};

RoundedBox grown(RoundedBox box, double by) {
  return {box.centre, {box.half.x + by, box.half.y + by}, box.radius > 0 ? box.radius + by : 0};
}

struct Circle {
  Vector centre;
  double radius;

  double operator()(Vector point) const {
    return std::hypot(point.x - centre.x, point.y - centre.y) - radius;
  }
};

}  // namespace

Size labelSize(std::string_view text, const Metrics& metrics) {
  double units = -glyphGap;
  for (const char character : text)
    units += advance(character);
  return {metrics.pixels(units * glyphUnit + 2 * labelPadding), metrics.pixels(labelHeight)};
}

Artwork drawLabel(std::string_view text, const Metrics& metrics) {
  const double scale = metrics.scale;
  Painter painter(labelSize(text, metrics));
  const Size size = painter.artwork.size;
  const RoundedBox box{
      {size.width / 2.0, size.height / 2.0}, {size.width / 2.0, size.height / 2.0}, labelRadius * scale};
  painter.fill(labelEdge, box);
  painter.fill(labelGround, grown(box, -metrics.line));

  const double unit = glyphUnit * scale;
  const double halfStroke = strokeWidth * scale / 2;
  Vector at{labelPadding * scale, std::floor((size.height - glyphHeight * unit) / 2) + 0.5};
  for (const char character : text) {
    const std::span<const Segment> strokes = glyphStrokes(character);
    const Rectangle cell{static_cast<int>(at.x - 2 * unit), 0, static_cast<int>((glyphWidth + 4) * unit) + 1,
                         size.height};
    if (!strokes.empty())
      painter.fill(cell, white, [&](Vector point) {
        return distanceTo(strokes, {(point.x - at.x) / unit, (point.y - at.y) / unit}) * unit - halfStroke;
      });
    at.x += advance(character) * unit;
  }
  return std::move(painter.artwork);
}

Artwork drawCrosshair(const Metrics& metrics) {
  const int line = metrics.line;
  const int reach = metrics.pixels(12), gap = metrics.pixels(3);
  const int side = 2 * (reach + line) + line;
  Painter painter({side, side});
  const double middle = side / 2.0;
  painter.artwork.hotSpot = {side / 2, side / 2};
  const double half = line / 2.0, length = (reach - gap) / 2.0, distance = half + gap + length;
  const RoundedBox arms[] = {{{middle - distance, middle}, {length, half}, 0},
                             {{middle + distance, middle}, {length, half}, 0},
                             {{middle, middle - distance}, {half, length}, 0},
                             {{middle, middle + distance}, {half, length}, 0}};
  for (const RoundedBox& arm : arms)
    painter.fill(ink, grown(arm, line));
  for (const RoundedBox& arm : arms)
    painter.fill(white, arm);
  return std::move(painter.artwork);
}

Artwork drawCamera(const Metrics& metrics) {
  const double scale = metrics.scale;
  Painter painter({metrics.pixels(28), metrics.pixels(24)});
  painter.artwork.hotSpot = {painter.artwork.size.width / 2, metrics.pixels(13)};
  const auto at = [scale](double x, double y) { return Vector{x * scale, y * scale}; };
  const RoundedBox body{at(14, 13), at(11, 7), 2.5 * scale};
  const RoundedBox finder{at(14, 6), at(4, 3), 1.5 * scale};
  const double edge = scale;
  painter.fill(ink, grown(body, edge));
  painter.fill(ink, grown(finder, edge));
  painter.fill(white, body);
  painter.fill(white, finder);
  painter.fill(ink, Circle{at(14, 13), 4.6 * scale});
  painter.fill(white, Circle{at(14, 13), 2.4 * scale});
  return std::move(painter.artwork);
}

}  // namespace screencapture
