#include "tools/screencapture/selection/Geometry.h"

#include <algorithm>
#include <cstdlib>

namespace screencapture {

bool Rectangle::contains(Point point) const {
  return point.x >= x && point.x < right() && point.y >= y && point.y < bottom();
}

Point Rectangle::nearestTo(Point point) const {
  return {std::clamp(point.x, x, right() - 1), std::clamp(point.y, y, bottom() - 1)};
}

Rectangle Rectangle::grown(int margin) const {
  return {x - margin, y - margin, width + 2 * margin, height + 2 * margin};
}

Rectangle Rectangle::intersected(const Rectangle& other) const {
  const int left = std::max(x, other.x);
  const int top = std::max(y, other.y);
  const Rectangle common{left, top, std::min(right(), other.right()) - left,
                         std::min(bottom(), other.bottom()) - top};
  return common.isEmpty() ? Rectangle{} : common;
}

Rectangle Rectangle::spanning(Point one, Point other) {
  return {std::min(one.x, other.x), std::min(one.y, other.y), std::abs(one.x - other.x) + 1,
          std::abs(one.y - other.y) + 1};
}

const Rectangle& nearest(std::span<const Rectangle> areas, Point point) {
  return *std::ranges::min_element(areas, {}, [point](const Rectangle& area) {
    const Point closest = area.nearestTo(point);
    return std::abs(closest.x - point.x) + std::abs(closest.y - point.y);
  });
}

Rectangle placeBeside(Point point, Size size, const Rectangle& within, int distance) {
  const auto beside = [distance](int at, int length, int begin, int end) {
    const int after = at + distance;
    const int place = after + length <= end ? after : at - distance - length;
    return std::clamp(place, begin, std::max(begin, end - length));
  };
  return {beside(point.x, size.width, within.x, within.right()),
          beside(point.y, size.height, within.y, within.bottom()), size.width, size.height};
}

std::vector<Rectangle> subtract(const Rectangle& whole, const Rectangle& part) {
  const Rectangle hole = whole.intersected(part);
  if (hole.isEmpty())
    return whole.isEmpty() ? std::vector<Rectangle>{} : std::vector{whole};
  const Rectangle sides[] = {
      {whole.x, whole.y, whole.width, hole.y - whole.y},
      {whole.x, hole.bottom(), whole.width, whole.bottom() - hole.bottom()},
      {whole.x, hole.y, hole.x - whole.x, hole.height},
      {hole.right(), hole.y, whole.right() - hole.right(), hole.height},
  };
  std::vector<Rectangle> rest;
  std::ranges::copy_if(sides, std::back_inserter(rest),
                       [](const Rectangle& side) { return !side.isEmpty(); });
  return rest;
}

}  // namespace screencapture
