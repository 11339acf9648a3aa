#include "app/history/PanelGeometry.h"

#include <algorithm>

namespace sorrel::PanelGeometry {

namespace {

/// The right and upper edges belong to the neighbours.
bool holds(const QRectF& frame, const QPointF& point) {
  return point.x() >= frame.left() && point.x() < frame.right() && point.y() >= frame.top() &&
         point.y() < frame.bottom();
}

}  // namespace

QRectF targetFrame(const std::optional<QRectF>& anchor, const std::vector<platform::Screen>& screens) {
  // In a QRectF of screen coordinates top() is the smaller y: the lower edge.
  const QRectF mainVisible = screens.empty() ? QRectF() : screens.front().visibleFrame;
  const QPointF half(size.width() / 2.0, size.height() / 2.0);
  if (!anchor) {
    const QPointF lift(0, mainVisible.height() * 0.1);
    return QRectF(mainVisible.center() - half + lift, size);
  }
  const auto holder = std::find_if(screens.begin(), screens.end(), [&](const platform::Screen& screen) {
    return holds(screen.frame, anchor->topLeft());
  });
  const QRectF visible = holder == screens.end() ? mainVisible : holder->visibleFrame;
  // On a screen too narrow for both margins the right one counts.
  const qreal x = std::min(std::max(anchor->center().x() - half.x(), visible.left() + sideMargin),
                           visible.right() - size.width() - sideMargin);
  return QRectF(QPointF(x, anchor->top() - gap - size.height()), size);
}

}  // namespace sorrel::PanelGeometry
