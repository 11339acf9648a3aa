#include "app/editor/view/PopoverGeometry.h"

#include <algorithm>

namespace sorrel::PopoverGeometry {
namespace {

constexpr int leading = 55;
constexpr int firstTop = 65;
constexpr int pitch = 48;  // of the rail's tools
constexpr int bottomMargin = 12;
constexpr int minimumHeight = 180;

}  // namespace

QRect popover(int toolIndex, int availableHeight, int contentHeight) {
  const int top = toolIndex * pitch + firstTop;
  int height = std::max(availableHeight - top - bottomMargin, minimumHeight);
  if (contentHeight > 0)
    height = std::min(height, contentHeight);
  return {leading, top, arrowSize.width() + panelWidth, height};
}

}  // namespace sorrel::PopoverGeometry
