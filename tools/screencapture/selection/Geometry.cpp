#include "tools/screencapture/selection/Geometry.h"

#include <algorithm>
#include <cstdlib>

namespace screencapture {

bool Rectangle::contains(Point point) const {
  return point.x >= x && point.x < right() && point.y >= y && point.y < bottom();
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
