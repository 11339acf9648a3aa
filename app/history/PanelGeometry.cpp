#include "app/history/PanelGeometry.h"

#include <algorithm>

namespace sorrel::PanelGeometry {

namespace {

constexpr qreal width = size.width();
constexpr qreal height = size.height();

/// The left and lower edges belong to a screen, the right and upper ones to its neighbours.
bool holds(const QRectF& frame, const QPointF& point) {
  return point.x() >= frame.left() && point.x() < frame.right() && point.y() > frame.top() &&
         point.y() <= frame.bottom();
}

/// The place for a length within a span, as near to `start` as possible. Where the span is too short, the end
/// that isn't at `kept` runs over.
enum class Kept { Start, End };
qreal clamped(qreal start, qreal length, qreal from, qreal to, Kept kept) {
  return kept == Kept::Start ? std::max(std::min(start, to - length), from)
                             : std::min(std::max(start, from), to - length);
}

/// The upper edge: the rule first, then the other side, then whatever is in sight.
qreal topBeside(const QRectF& anchor, const QRectF& visible) {
  const qreal below = std::max(anchor.bottom(), visible.top()) + gap;
  if (below + height <= visible.bottom())
    return below;
  const qreal above = std::min(anchor.top(), visible.bottom()) - gap - height;
  if (above >= visible.top())
    return above;
  return clamped(below, height, visible.top(), visible.bottom() - gap, Kept::Start);
}

/// A panel that would cover its own icon steps aside, where there is room.
void stepAside(QRectF& panel, const QRectF& anchor, const QRectF& visible) {
  if (!panel.intersects(anchor))
    return;
  if (const qreal left = anchor.left() - gap - width; left >= visible.left())
    panel.moveLeft(left);
  else if (const qreal right = anchor.right() + gap; right + width <= visible.right())
    panel.moveLeft(right);
}

}  // namespace

QRectF targetFrame(const std::optional<QRectF>& anchor, const std::vector<platform::Screen>& screens) {
  const QRectF mainVisible = screens.empty() ? QRectF() : screens.front().visibleFrame;
  if (!anchor) {
    const QPointF middle = mainVisible.center() - QPointF(width / 2, height / 2 + mainVisible.height() * 0.1);
    return QRectF(clamped(middle.x(), width, mainVisible.left(), mainVisible.right(), Kept::End),
                  clamped(middle.y(), height, mainVisible.top(), mainVisible.bottom(), Kept::Start), width,
                  height);
  }
  const auto holder = std::find_if(screens.begin(), screens.end(), [&](const platform::Screen& screen) {
    return holds(screen.frame, anchor->bottomLeft());
  });
  const QRectF visible = holder == screens.end() ? mainVisible : holder->visibleFrame;
  // On a screen too narrow for both margins the right one counts, if the panel stays in sight.
  const qreal left = clamped(anchor->center().x() - width / 2, width, visible.left() + sideMargin,
                             visible.right() - sideMargin, Kept::End);
  const bool isWideEnough = visible.width() >= width;
  QRectF panel(isWideEnough ? std::max(left, visible.left()) : left, topBeside(*anchor, visible), width,
               height);
  stepAside(panel, *anchor, visible);
  return panel;
}

}  // namespace sorrel::PanelGeometry
