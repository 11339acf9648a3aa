#include "platform/desktop/Screens.h"

#include "platform/desktop/wayland/FreeArea.h"
#include "platform/wayland/WaylandConnection.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace platform {
namespace {

/// The toolkit scales each screen about its own upper left corner.
QRect inDevicePixels(const QScreen& screen) {
  return QRect(screen.geometry().topLeft(),
               (QSizeF(screen.geometry().size()) * screen.devicePixelRatio()).toSize());
}

QRectF fromDevicePixels(const QRectF& place, const QScreen& screen) {
  const QPointF origin = screen.geometry().topLeft();
  return QRectF(origin + (place.topLeft() - origin) / screen.devicePixelRatio(),
                place.size() / screen.devicePixelRatio());
}

QPoint pointerInDevicePixels() {
  const QPoint pointer = QCursor::pos();
  const QScreen* const screen = QGuiApplication::screenAt(pointer);
  if (!screen)
    return pointer;
  const QPoint origin = screen->geometry().topLeft();
  return origin + (QPointF(pointer - origin) * screen->devicePixelRatio()).toPoint();
}

}  // namespace

size_t screenWithKeyboard(const std::vector<QRect>& all, const std::optional<QRect>& active,
                          const QPoint& pointer) {
  const auto covered = [&](const QRect& screen) { return active->contains(screen); };
  const bool isActiveOnOne = active && std::count_if(all.begin(), all.end(), covered) < 2;
  const QPoint place = isActiveOnOne ? active->center() : pointer;
  const auto holder =
      std::find_if(all.begin(), all.end(), [&](const QRect& screen) { return screen.contains(place); });
  return holder == all.end() ? 0 : static_cast<size_t>(holder - all.begin());
}

QRect visiblePart(const QRect& screen, const QSize& root, const std::vector<X11Bar>& bars) {
  QRect free = screen;
  for (const X11Bar& bar : bars) {
    // A strip reaches in from the root window's edge, over the screens between as well; the bar doesn't.
    if (!bar.frame.intersects(screen))
      continue;
    if (bar.strut.left())
      free.setLeft(std::max(free.left(), bar.strut.left()));
    if (bar.strut.top())
      free.setTop(std::max(free.top(), bar.strut.top()));
    if (bar.strut.right())
      free.setRight(std::min(free.right(), root.width() - bar.strut.right() - 1));
    if (bar.strut.bottom())
      free.setBottom(std::min(free.bottom(), root.height() - bar.strut.bottom() - 1));
  }
  return free.isValid() ? free : screen;
}

QRectF visiblePart(const QRectF& screen, const QSizeF& freeSize, const std::optional<QPointF>& onBar) {
  QRectF free(screen.topLeft(), freeSize.boundedTo(screen.size()));
  const QPointF known = onBar && screen.contains(*onBar) ? *onBar - screen.topLeft() : QPointF(0, 0);
  if (known.x() <= screen.width() / 2)
    free.moveRight(screen.right());
  if (known.y() <= screen.height() / 2)
    free.moveBottom(screen.bottom());
  return free;
}

QRectF fromDevicePixels(const QRect& place) {
  const QList<QScreen*> all = QGuiApplication::screens();
  const auto holder = std::find_if(all.begin(), all.end(), [&](const QScreen* screen) {
    return inDevicePixels(*screen).contains(place.center());
  });
  return holder == all.end() ? QRectF(place) : fromDevicePixels(QRectF(place), **holder);
}

std::vector<Screen> screens(const std::optional<QPointF>& onBar) {
  std::vector<Screen> result;
  std::vector<QRect> frames;
  const std::vector<X11Bar> bars = x11Bars();
  const QSize root = x11RootSize();
  for (const QScreen* screen : QGuiApplication::screens()) {
    frames.push_back(inDevicePixels(*screen));
    // With several screens the toolkit says that all of each is free.
    QRectF free = fromDevicePixels(QRectF(visiblePart(frames.back(), root, bars)), *screen);
    if (const auto size = freeSizeOf(*screen))
      free = visiblePart(QRectF(screen->geometry()), QSizeF(*size), onBar);
    result.push_back({screen->geometry(), free & QRectF(screen->availableGeometry())});
  }
  if (waylandDisplay()) {
    const qsizetype inUse = result.size() > 1 ? QGuiApplication::screens().indexOf(screenInUse()) : 0;
    if (inUse > 0)
      std::swap(result.front(), result[static_cast<size_t>(inUse)]);
  } else if (!result.empty()) {
    const size_t main = screenWithKeyboard(frames, x11ActiveWindow(), pointerInDevicePixels());
    std::swap(result.front(), result[main]);
  }
  return result;
}

}  // namespace platform
