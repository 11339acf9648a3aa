#include "tools/screencapture/selection/Artwork.h"

#include <algorithm>
#include <cmath>

namespace screencapture {

namespace {

struct Vector {
  double x = 0;
  double y = 0;
};

struct Paint {
  double red, green, blue, alpha;  // 0 to 1, straight
};

constexpr Paint white{1, 1, 1, 1};
constexpr Paint ink{0.08, 0.09, 0.08, 1};
constexpr Paint boxGround{0.10, 0.11, 0.10, 0.94};
constexpr Paint boxEdge{1, 1, 1, 0.30};

// Lengths at the scale 1.
constexpr double boxPadding = 10;
constexpr double boxMargin = 4;  // above and below the text's own height
constexpr double boxRadius = 7;

/// A line of digits, "x" for the multiplication sign, and spaces of half a digit's width.
Coverage lineOf(std::string_view text, const Coverage& digits) {
  const int cell = digits.size.width / digitCells;
  const auto advance = [cell](char character) { return character == ' ' ? cell / 2 : cell; };
  Coverage line{{0, digits.size.height}, {}};
  for (const char character : text)
    line.size.width += advance(character);
  line.values.resize(static_cast<std::size_t>(line.size.width * line.size.height));
  int x = 0;
  for (const char character : text) {
    const int index = character == 'x' ? digitCells - 1 : character - '0';
    for (int y = 0; character != ' ' && y < line.size.height; ++y)
      std::copy_n(digits.values.begin() + y * digits.size.width + index * cell, cell,
                  line.values.begin() + y * line.size.width + x);
    x += advance(character);
  }
  return line;
}

/// Lays shapes over one another. A shape is a function from a point, in pixels, to its distance from the
/// shape's edge, negative inside; half a pixel on either side of the edge is blended.
class Painter {
 public:
  explicit Painter(Size size) : artwork{size, {}, {}} {
    artwork.pixels.resize(static_cast<std::size_t>(size.width * size.height));
  }

  template <typename Distance>
  void fill(const Rectangle& within, const Paint& paint, Distance distance) {
    const Rectangle part = within.intersected({0, 0, artwork.size.width, artwork.size.height});
    for (int y = part.y; y < part.bottom(); ++y) {
      for (int x = part.x; x < part.right(); ++x) {
        const double coverage = std::clamp(0.5 - distance(Vector{x + 0.5, y + 0.5}), 0.0, 1.0);
        if (coverage > 0)
          blend(artwork.pixels[static_cast<std::size_t>(y * artwork.size.width + x)], paint,
                paint.alpha * coverage);
      }
    }
  }

  template <typename Distance>
  void fill(const Paint& paint, Distance distance) {
    fill({0, 0, artwork.size.width, artwork.size.height}, paint, distance);
  }

  void fill(const Coverage& mask, Point at, const Paint& paint) {
    for (int y = 0; y < mask.size.height; ++y) {
      for (int x = 0; x < mask.size.width; ++x) {
        const double coverage = mask.values[static_cast<std::size_t>(y * mask.size.width + x)] / 255.0;
        blend(artwork.pixels[static_cast<std::size_t>((at.y + y) * artwork.size.width + at.x + x)], paint,
              paint.alpha * coverage);
      }
    }
  }

  void fade(int opacity) {
    for (std::uint32_t& pixel : artwork.pixels) {
      std::uint32_t faded = 0;
      for (int shift = 0; shift < 32; shift += 8)
        faded |= ((pixel >> shift & 0xff) * static_cast<std::uint32_t>(opacity) / 255) << shift;
      pixel = faded;
    }
  }

  Artwork artwork;

 private:
  static void blend(std::uint32_t& pixel, const Paint& paint, double alpha) {
    const double channels[] = {1, paint.red, paint.green, paint.blue};
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
  Vector center;
  Vector half;
  double radius;

  double operator()(Vector point) const {
    const double x = std::abs(point.x - center.x) - half.x + radius;
    const double y = std::abs(point.y - center.y) - half.y + radius;
    return std::hypot(std::max(x, 0.0), std::max(y, 0.0)) + std::min(std::max(x, y), 0.0) - radius;
  }
};

RoundedBox grown(RoundedBox box, double by) {
  return {box.center, {box.half.x + by, box.half.y + by}, box.radius > 0 ? box.radius + by : 0};
}

struct Circle {
  Vector center;
  double radius;

  double operator()(Vector point) const {
    return std::hypot(point.x - center.x, point.y - center.y) - radius;
  }
};

}  // namespace

Size boxSize(Size text, const Metrics& metrics) {
  return {text.width + 2 * metrics.pixels(boxPadding), text.height + 2 * metrics.pixels(boxMargin)};
}

Artwork drawBox(const Coverage& text, const Metrics& metrics, int opacity) {
  Painter painter(boxSize(text.size, metrics));
  const Size size = painter.artwork.size;
  const RoundedBox box{{size.width / 2.0, size.height / 2.0},
                       {size.width / 2.0, size.height / 2.0},
                       boxRadius * metrics.scale};
  painter.fill(boxEdge, box);
  painter.fill(boxGround, grown(box, -metrics.line));
  painter.fill(text, {metrics.pixels(boxPadding), metrics.pixels(boxMargin)}, white);
  if (opacity < 255)
    painter.fade(opacity);
  return std::move(painter.artwork);
}

Size labelSize(std::string_view text, const Metrics& metrics) {
  return boxSize(lineOf(text, coverageOf(Text::Digits, metrics.scale)).size, metrics);
}

Artwork drawLabel(std::string_view text, const Metrics& metrics) {
  return drawBox(lineOf(text, coverageOf(Text::Digits, metrics.scale)), metrics);
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
