#include "platform/desktop/Screens.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace platform {

QRectF screenRect(const QRectF& rect) {
  const QScreen* const main = QGuiApplication::primaryScreen();
  const qreal bottom = main ? QRectF(main->geometry()).bottom() : 0;
  return QRectF(rect.x(), bottom - rect.bottom(), rect.width(), rect.height());
}

QRectF windowSystemRect(const QRectF& rect) {
  return screenRect(rect);  // the turn about the main screen is its own inverse
}

std::vector<Screen> screens() {
  std::vector<Screen> result;
  for (const QScreen* screen : QGuiApplication::screens())  // the primary one comes first
    result.push_back({screenRect(screen->geometry()), screenRect(screen->availableGeometry())});
  return result;
}

QRectF panelAnchor(const QRectF& itemFrame, const Screen& screen, const PanelMetrics& panel) {
  // In a QRectF of screen coordinates top() is the smaller y: the lower edge.
  const qreal drop = panel.size.height() + panel.gap;
  const QRectF& visible = screen.visibleFrame;
  if (itemFrame.top() - drop >= visible.top())
    return itemFrame;
  const bool isBesideVisible = itemFrame.right() <= visible.left() || itemFrame.left() >= visible.right();
  const qreal floor = isBesideVisible ? visible.top() : std::max(visible.top(), itemFrame.bottom());
  QRectF anchor = itemFrame;
  anchor.moveTop(floor + panel.gap + drop);
  return anchor;
}

}  // namespace platform
