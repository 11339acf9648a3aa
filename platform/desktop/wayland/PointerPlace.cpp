#include "platform/desktop/wayland/PointerPlace.h"

#include "platform/desktop/wayland/Panes.h"
#include "platform/wayland/WaylandConnection.h"

#include <QGuiApplication>
#include <QScreen>

#include <memory>

namespace platform {

std::optional<QPoint> pointerPlace() {
  if (!arePanesOffered())
    return std::nullopt;
  const WaylandObject<wl_event_queue> queue(wl_display_create_queue(waylandDisplay()),
                                            {wl_event_queue_destroy});
  const PanePointer pointer(queue.get());
  std::vector<std::unique_ptr<Pane>> panes;
  for (const QScreen* const screen : QGuiApplication::screens())
    panes.push_back(std::make_unique<Pane>(*screen));
  constexpr int patience = 20;
  for (int asked = 0; asked < patience; ++asked) {
    if (wl_display_roundtrip_queue(waylandDisplay(), queue.get()) < 0)
      break;
    for (const auto& pane : panes)
      if (pane->surface() == pointer.surface())
        return (QPointF(pane->place.topLeft()) + pointer.place()).toPoint();
  }
  return std::nullopt;
}

}  // namespace platform
