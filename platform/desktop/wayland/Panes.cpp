#include "platform/desktop/wayland/Panes.h"

#include "platform/wayland/ClearPixel.h"
#include "platform/wayland/WaylandConnection.h"

#include <QScreen>

#include <viewporter.h>

namespace platform {

namespace {

WaylandObject<wp_viewport> viewportOf(wl_surface& surface) {
  const WaylandObject<wp_viewporter> viewporter(
      waylandGlobals()->bind<wp_viewporter>(wp_viewporter_interface, 1), {wp_viewporter_destroy});
  return {wp_viewporter_get_viewport(viewporter.get(), &surface), {wp_viewport_destroy}};
}

}  // namespace

bool arePanesOffered() {
  const WaylandGlobals* const globals = waylandGlobals();
  return isLayerShellOffered() && globals->version(wp_viewporter_interface) > 0 &&
         globals->version(wl_seat_interface) >= WL_SEAT_RELEASE_SINCE_VERSION;
}

Pane::Pane(const QScreen& screen, LayerRole::Extent extent)
    : place(screen.geometry()),
      pane(wl_compositor_create_surface(waylandCompositor()), {wl_surface_destroy}),
      role(*pane, waylandOutput(screen), extent, {}),
      viewport(viewportOf(*pane)),
      pixel(clearPixel(*waylandGlobals())) {
  if (!role.size() || !pixel)
    return;
  wp_viewport_set_destination(viewport.get(), role.size()->width(), role.size()->height());
  wl_surface_attach(pane.get(), pixel.get(), 0, 0);
  wl_surface_commit(pane.get());
}

struct PanePointer::Listeners {
  static void enter(void* self, wl_pointer*, std::uint32_t, wl_surface* surface, wl_fixed_t x, wl_fixed_t y) {
    auto& own = *static_cast<PanePointer*>(self);
    own.entered = surface;
    own.enteredAt = QPointF(wl_fixed_to_double(x), wl_fixed_to_double(y));
  }
  static void button(void* self, wl_pointer*, std::uint32_t, std::uint32_t, std::uint32_t,
                     std::uint32_t state) {
    const auto onPress = static_cast<PanePointer*>(self)->onPress;  // outlives the pointer
    if (onPress && state == WL_POINTER_BUTTON_STATE_PRESSED)
      onPress();
  }

  static constexpr wl_pointer_listener pointer{
      enter,
      [](void*, wl_pointer*, std::uint32_t, wl_surface*) {},
      [](void*, wl_pointer*, std::uint32_t, wl_fixed_t, wl_fixed_t) {},
      button,
      [](void*, wl_pointer*, std::uint32_t, std::uint32_t, wl_fixed_t) {},
      [](void*, wl_pointer*) {},
      [](void*, wl_pointer*, std::uint32_t) {},
      [](void*, wl_pointer*, std::uint32_t, std::uint32_t) {},
      [](void*, wl_pointer*, std::uint32_t, std::int32_t) {},
      [](void*, wl_pointer*, std::uint32_t, std::int32_t) {},
  };
};

PanePointer::PanePointer(wl_event_queue* queue, std::function<void()> pressed)
    : onPress(std::move(pressed)), seat(nullptr, {wl_seat_release}), pointer(nullptr, {wl_pointer_release}) {
  if (!(waylandSeatCapabilities() & WL_SEAT_CAPABILITY_POINTER))
    return;
  seat.reset(waylandGlobals()->bind<wl_seat>(wl_seat_interface, WL_SEAT_RELEASE_SINCE_VERSION, queue));
  pointer.reset(wl_seat_get_pointer(seat.get()));
  wl_pointer_add_listener(pointer.get(), &Listeners::pointer, this);
}

}  // namespace platform
