#include "app/editor/view/Snapping.h"

#include <algorithm>
#include <cmath>

namespace sorrel {
namespace {

constexpr double margin = 24;
constexpr double reach = 12;

struct Candidate {
  double center;
  double guide;
};

/// In one direction: the centre, and the line if it keeps to one.
std::pair<double, std::optional<double>> snapped(double proposed, double size, double extent) {
  const Candidate candidates[] = {
      {size / 2 + margin, margin}, {extent / 2, extent / 2}, {extent - margin - size / 2, extent - margin}};
  const auto distance = [proposed](const Candidate& one) { return std::abs(one.center - proposed); };
  const Candidate nearest = *std::ranges::min_element(candidates, {}, distance);  // the first of equals
  if (distance(nearest) > reach)
    return {proposed, std::nullopt};
  return {nearest.center, nearest.guide};
}

}  // namespace

Snap applySnap(const QPointF& proposed, const QSizeF& size, const QSizeF& displaySize) {
  const auto [x, guideV] = snapped(proposed.x(), size.width(), displaySize.width());
  const auto [y, guideH] = snapped(proposed.y(), size.height(), displaySize.height());
  return {.center = {x, y}, .guideV = guideV, .guideH = guideH};
}

}  // namespace sorrel
