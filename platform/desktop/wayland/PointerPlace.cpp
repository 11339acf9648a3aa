#include "platform/desktop/wayland/PointerPlace.h"

#include "platform/desktop/wayland/LayerShell.h"
#include "platform/wayland/ClearPixel.h"
#include "platform/wayland/WaylandConnection.h"

#include <QGuiApplication>
#include <QScreen>

#include <memory>
#include <viewporter.h>

namespace platform {
namespace {

/// Over an output, transparent, and there for the pointer.
class Pane {
 public:
  Pane(const QScreen& screen, wp_viewporter* viewporter)
      : place(screen.geometry()),
        pane(wl_compositor_create_surface(waylandCompositor()), {wl_surface_destroy}),
        role(*pane, waylandOutput(screen), LayerRole::Extent::WholeOutput, {}),
        viewport(wp_viewporter_get_viewport(viewporter, pane.get()), {wp_viewport_destroy}),
        pixel(clearPixel(*waylandGlobals())) {
    if (!role.size() || !pixel)
      return;
    wp_viewport_set_destination(viewport.get(), role.size()->width(), role.size()->height());
    wl_surface_attach(pane.get(), pixel.get(), 0, 0);
    wl_surface_commit(pane.get());
  }
  Pane(const Pane&) = delete;
  Pane& operator=(const Pane&) = delete;

  [[nodiscard]] const wl_surface* surface() const { return pane.get(); }

  const QRect place;

 private:
  const WaylandObject<wl_surface> pane;
  const LayerRole role;
  const WaylandObject<wp_viewport> viewport;
  const WaylandObject<wl_buffer> pixel;
};

struct Entered {
  const wl_surface* surface = nullptr;
  QPointF place;
};

void enter(void* entered, wl_pointer*, std::uint32_t, wl_surface* surface, wl_fixed_t x, wl_fixed_t y) {
  *static_cast<Entered*>(entered) = {surface, QPointF(wl_fixed_to_double(x), wl_fixed_to_double(y))};
}

constexpr wl_pointer_listener listener{
    enter,
    [](void*, wl_pointer*, std::uint32_t, wl_surface*) {},
    [](void*, wl_pointer*, std::uint32_t, wl_fixed_t, wl_fixed_t) {},
    [](void*, wl_pointer*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) {},
    [](void*, wl_pointer*, std::uint32_t, std::uint32_t, wl_fixed_t) {},
    [](void*, wl_pointer*) {},
    [](void*, wl_pointer*, std::uint32_t) {},
    [](void*, wl_pointer*, std::uint32_t, std::uint32_t) {},
    [](void*, wl_pointer*, std::uint32_t, std::int32_t) {},
    [](void*, wl_pointer*, std::uint32_t, std::int32_t) {},
};

/// The program's own seat says nothing of what it has been told already.
class Seat {
 public:
  explicit Seat(wl_event_queue* queue)
      : seat(waylandGlobals()->bind<wl_seat>(wl_seat_interface, version), {wl_seat_release}) {
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(seat.get()), queue);
    static constexpr wl_seat_listener capabilities{[](void* self, wl_seat*, std::uint32_t told) {
                                                     static_cast<Seat*>(self)->hasPointer =
                                                         told & WL_SEAT_CAPABILITY_POINTER;
                                                   },
                                                   [](void*, wl_seat*, const char*) {}};
    wl_seat_add_listener(seat.get(), &capabilities, this);
    wl_display_roundtrip_queue(waylandDisplay(), queue);
    if (!hasPointer)
      return;
    pointer.reset(wl_seat_get_pointer(seat.get()));
    wl_pointer_add_listener(pointer.get(), &listener, &found);
  }
  Seat(const Seat&) = delete;
  Seat& operator=(const Seat&) = delete;

  [[nodiscard]] const Entered& entered() const { return found; }

 private:
  static constexpr std::uint32_t version = 5;

  const WaylandObject<wl_seat> seat;
  WaylandObject<wl_pointer> pointer{nullptr, {wl_pointer_release}};
  bool hasPointer = false;
  Entered found;
};

}  // namespace

std::optional<QPoint> pointerPlace() {
  const WaylandGlobals* const globals = waylandGlobals();
  if (!isLayerShellOffered() || !globals->version(wp_viewporter_interface) ||
      globals->version(wl_seat_interface) < WL_SEAT_RELEASE_SINCE_VERSION)
    return std::nullopt;
  const WaylandObject<wl_event_queue> queue(wl_display_create_queue(waylandDisplay()),
                                            {wl_event_queue_destroy});
  const Seat seat(queue.get());
  const WaylandObject<wp_viewporter> viewporter(globals->bind<wp_viewporter>(wp_viewporter_interface, 1),
                                                {wp_viewporter_destroy});
  std::vector<std::unique_ptr<Pane>> panes;
  for (const QScreen* const screen : QGuiApplication::screens())
    panes.push_back(std::make_unique<Pane>(*screen, viewporter.get()));
  constexpr int patience = 20;
  for (int asked = 0; asked < patience; ++asked) {
    if (wl_display_roundtrip_queue(waylandDisplay(), queue.get()) < 0)
      break;
    for (const auto& pane : panes)
      if (pane->surface() == seat.entered().surface)
        return (QPointF(pane->place.topLeft()) + seat.entered().place).toPoint();
  }
  return std::nullopt;
}

}  // namespace platform
