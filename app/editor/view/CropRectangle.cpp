#include "app/editor/view/CropRectangle.h"

#include <algorithm>
#include <cmath>

namespace sorrel {
namespace {

constexpr double reachOnScreen = 18;
constexpr double smallestScale = 0.05;
constexpr double shortestSide = 24;
constexpr double tolerance = 0.5;

/// The edges that a handle holds.
struct HeldEdges {
  bool left;
  bool right;
  bool top;
  bool bottom;
};

HeldEdges heldBy(CropHandle handle) {
  using enum CropHandle;
  return {.left = handle == topLeft || handle == bottomLeft || handle == left,
          .right = handle == topRight || handle == bottomRight || handle == right,
          .top = handle == topLeft || handle == topRight || handle == top,
          .bottom = handle == bottomLeft || handle == bottomRight || handle == bottom};
}

QRectF moved(const QRectF& start, const QPointF& translation, const QSizeF& displaySize) {
  const QPointF to = start.topLeft() + translation;
  return {QPointF(std::min(std::max(to.x(), 0.0), displaySize.width() - start.width()),
                  std::min(std::max(to.y(), 0.0), displaySize.height() - start.height())),
          start.size()};
}

/// One direction of the rectangle, dragged at its low or its high edge.
void drag(double& low, double& high, bool holdsLow, bool holdsHigh, double by, double extent) {
  low = std::max(low + (holdsLow ? by : 0), 0.0);
  high = std::min(high + (holdsHigh ? by : 0), extent);
  if (high - low >= shortestSide)
    return;
  if (holdsLow)
    low = high - shortestSide;
  else
    high = low + shortestSide;
}

}  // namespace

std::optional<CropHandle> cropHandle(const QPointF& point, const QRectF& rectangle, double canvasScale) {
  const double reach = reachOnScreen / std::max(canvasScale, smallestScale);
  const auto isNear = [reach](double a, double b) { return std::abs(a - b) <= reach; };
  const bool nearLeft = isNear(point.x(), rectangle.left());
  const bool nearRight = isNear(point.x(), rectangle.right());
  const bool nearTop = isNear(point.y(), rectangle.top());
  const bool nearBottom = isNear(point.y(), rectangle.bottom());
  const bool inX = point.x() >= rectangle.left() - reach && point.x() <= rectangle.right() + reach;
  const bool inY = point.y() >= rectangle.top() - reach && point.y() <= rectangle.bottom() + reach;

  using enum CropHandle;
  const struct {
    bool holds;
    CropHandle handle;
  } order[] = {{nearLeft && nearTop, topLeft},
               {nearRight && nearTop, topRight},
               {nearLeft && nearBottom, bottomLeft},
               {nearRight && nearBottom, bottomRight},
               {nearTop && inX, top},
               {nearBottom && inX, bottom},
               {nearLeft && inY, left},
               {nearRight && inY, right},
               {rectangle.contains(point), move}};
  const auto* const found = std::ranges::find_if(order, [](const auto& one) { return one.holds; });
  return found == std::end(order) ? std::nullopt : std::optional(found->handle);
}

QRectF applyCropDrag(CropHandle handle, const QRectF& start, const QPointF& translation,
                     const QSizeF& displaySize) {
  if (handle == CropHandle::move)
    return moved(start, translation, displaySize);
  const HeldEdges held = heldBy(handle);
  double minX = start.left();
  double maxX = start.right();
  double minY = start.top();
  double maxY = start.bottom();
  drag(minX, maxX, held.left, held.right, translation.x(), displaySize.width());
  drag(minY, maxY, held.top, held.bottom, translation.y(), displaySize.height());
  return {QPointF(minX, minY), QPointF(maxX, maxY)};
}

bool isCropModified(const QRectF& rectangle, const QSizeF& displaySize) {
  return rectangle.left() > tolerance || rectangle.top() > tolerance ||
         rectangle.width() < displaySize.width() - tolerance ||
         rectangle.height() < displaySize.height() - tolerance;
}

}  // namespace sorrel
