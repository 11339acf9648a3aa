#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace screencapture {

/// All points and sizes are physical pixels of the whole screen, from its top left corner, over all monitors.
struct Point {
  int x = 0;
  int y = 0;
  bool operator==(const Point&) const = default;
};

struct Size {
  int width = 0;
  int height = 0;
  bool operator==(const Size&) const = default;

  /// Of its pixels.
  [[nodiscard]] constexpr std::size_t count() const { return indexOf({0, height}); }
  /// Of a pixel, row by row.
  [[nodiscard]] constexpr std::size_t indexOf(Point at) const {
    return static_cast<std::size_t>(at.y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(at.x);
  }
};

struct Rectangle {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  bool operator==(const Rectangle&) const = default;

  [[nodiscard]] int right() const { return x + width; }    // the first column that is not inside any more
  [[nodiscard]] int bottom() const { return y + height; }  // the first row that is not inside any more
  [[nodiscard]] bool isEmpty() const { return width <= 0 || height <= 0; }
  [[nodiscard]] bool contains(Point point) const;
  /// The point of it that is nearest to this one; not for an empty rectangle.
  [[nodiscard]] Point nearestTo(Point point) const;
  /// Larger by `margin` on every side.
  [[nodiscard]] Rectangle grown(int margin) const;
  /// Both rectangles' common part; empty where they have none.
  [[nodiscard]] Rectangle intersected(const Rectangle& other) const;
  /// The smallest rectangle that holds both points' pixels.
  [[nodiscard]] static Rectangle spanning(Point one, Point other);
};

/// The one of `areas`, of which there are some, that holds the point, or else comes nearest to it.
[[nodiscard]] const Rectangle& nearest(std::span<const Rectangle> areas, Point point);

/// Where to show something of this size: right of and below a point, at this distance from it, and on the
/// other side where `within` ends there; inside of it in any case.
[[nodiscard]] Rectangle placeBeside(Point point, Size size, const Rectangle& within, int distance);

/// What is left of `whole` without `part`, as up to four rectangles that don't overlap.
[[nodiscard]] std::vector<Rectangle> subtract(const Rectangle& whole, const Rectangle& part);

}  // namespace screencapture
