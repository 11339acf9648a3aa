#pragma once

#include "tools/screencapture/selection/Artwork.h"

#include <algorithm>
#include <cmath>

namespace screencapture {

/// A point or a length in pixels, which may be broken.
struct Vector {
  double x = 0;
  double y = 0;
};

struct Paint {
  double red, green, blue, alpha;  // 0 to 1, straight
  [[nodiscard]] static constexpr Paint of(std::uint32_t rgb, double alpha = 1) {
    const auto channel = [rgb](unsigned shift) { return (rgb >> shift & 0xff) / 255.0; };
    return {channel(16), channel(8), channel(0), alpha};
  }
};

inline constexpr Paint white{1, 1, 1, 1};
inline constexpr Paint ink{0.08, 0.09, 0.08, 1};

/// Lays shapes over one another. A shape is a function from a point, in pixels, to its distance from the
/// shape's edge, negative inside; half a pixel on either side of the edge is blended.
class Painter {
 public:
  explicit Painter(Size size) : artwork{size, {}, {}} { artwork.pixels.resize(size.count()); }

  template <typename Distance>
  void fill(const Rectangle& within, const Paint& paint, Distance distance) {
    const Rectangle part = within.intersected({0, 0, artwork.size.width, artwork.size.height});
    for (int y = part.y; y < part.bottom(); ++y) {
      for (int x = part.x; x < part.right(); ++x) {
        const double coverage = std::clamp(0.5 - distance(Vector{x + 0.5, y + 0.5}), 0.0, 1.0);
        if (coverage > 0)
          blend({x, y}, paint, coverage);
      }
    }
  }

  template <typename Distance>
  void fill(const Paint& paint, Distance distance) {
    fill({0, 0, artwork.size.width, artwork.size.height}, paint, distance);
  }

  void set(Point at, std::uint32_t rgb) { pixelAt(at) = 0xff000000 | rgb; }
  void blend(Point at, const Paint& paint, double coverage);
  void fill(const Rectangle& area, const Paint& paint);
  void fill(const Coverage& mask, Point at, const Paint& paint);
  /// The dark ground with round corners that texts stand on.
  void fillBox(const Rectangle& area, const Metrics& metrics);
  /// Multiplies all by `opacity`, of 255.
  void fade(int opacity);

  Artwork artwork;

 private:
  std::uint32_t& pixelAt(Point at) { return artwork.pixels[artwork.size.indexOf(at)]; }
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

inline RoundedBox grown(RoundedBox box, double by) {
  return {box.center, {box.half.x + by, box.half.y + by}, box.radius > 0 ? box.radius + by : 0};
}

struct Circle {
  Vector center;
  double radius;

  double operator()(Vector point) const {
    return std::hypot(point.x - center.x, point.y - center.y) - radius;
  }
};

}  // namespace screencapture
