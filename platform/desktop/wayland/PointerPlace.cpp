#include "platform/desktop/wayland/PointerPlace.h"

#include "platform/desktop/wayland/Panes.h"
#include "platform/wayland/WaylandConnection.h"

#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QScreen>

#include <memory>
#include <poll.h>

namespace platform {

namespace {

// The pointer comes with the compositor's next frame, and where the tray tells of a click at its press only
// once the button is up.
constexpr int patience = 1500;  // milliseconds

/// Handles what comes for the queue until the deadline, at least once; false where nothing more comes.
bool handleEvents(wl_event_queue* queue, const QDeadlineTimer& deadline) {
  wl_display* const display = waylandDisplay();
  while (wl_display_prepare_read_queue(display, queue) != 0)
    if (wl_display_dispatch_queue_pending(display, queue) < 0)
      return false;
  wl_display_flush(display);
  pollfd waited{wl_display_get_fd(display), POLLIN, 0};
  const bool hasCome = poll(&waited, 1, static_cast<int>(deadline.remainingTime())) > 0;
  if (hasCome)
    wl_display_read_events(display);
  else
    wl_display_cancel_read(display);
  return wl_display_dispatch_queue_pending(display, queue) >= 0 && hasCome;
}

}  // namespace

bool canAskForPointerPlace() {
  return arePanesOffered();
}

std::optional<QPoint> pointerPlace() {
  const WaylandObject<wl_event_queue> queue(wl_display_create_queue(waylandDisplay()),
                                            {wl_event_queue_destroy});
  const PanePointer pointer(queue.get());
  if (!pointer.isThere())
    return std::nullopt;
  // On the topmost layer: among bars of a layer of theirs the older ones would stay above.
  std::vector<std::unique_ptr<Pane>> panes;
  for (const QScreen* const screen : QGuiApplication::screens())
    panes.push_back(std::make_unique<Pane>(*screen, LayerRole::Extent::WholeOutputAboveFullScreen));
  const QDeadlineTimer deadline(patience);
  do {
    for (const auto& pane : panes)
      if (pane->surface() == pointer.surface())
        return (QPointF(pane->place.topLeft()) + pointer.place()).toPoint();
  } while (handleEvents(queue.get(), deadline));
  return std::nullopt;
}

}  // namespace platform
