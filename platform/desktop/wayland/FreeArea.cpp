#include "platform/desktop/wayland/FreeArea.h"

#include "platform/desktop/wayland/LayerShell.h"
#include "platform/wayland/ClearPixel.h"
#include "platform/wayland/WaylandConnection.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace platform {

std::optional<QSize> freeSizeOf(const QScreen& screen) {
  wl_output* const output = waylandOutput(screen);
  if (!output || !isLayerShellOffered())
    return std::nullopt;
  // A layer between the bars would get that size. It is asked for and never shown.
  const WaylandObject<wl_surface> surface(wl_compositor_create_surface(waylandCompositor()),
                                          {wl_surface_destroy});
  const LayerRole role(*surface, output, LayerRole::Extent::BetweenBars, {});
  return role.size();
}

QScreen* screenInUse() {
  if (!isLayerShellOffered())
    return nullptr;
  const WaylandObject<wl_event_queue> queue(wl_display_create_queue(waylandDisplay()),
                                            {wl_event_queue_destroy});
  const WaylandObject<void> maker(wl_proxy_create_wrapper(waylandCompositor()), {wl_proxy_wrapper_destroy});
  wl_proxy_set_queue(static_cast<wl_proxy*>(maker.get()), queue.get());
  const WaylandObject<wl_surface> surface(
      wl_compositor_create_surface(static_cast<wl_compositor*>(maker.get())), {wl_surface_destroy});
  wl_output* entered = nullptr;
  static constexpr wl_surface_listener listener{
      [](void* place, wl_surface*, wl_output* output) { *static_cast<wl_output**>(place) = output; },
      [](void*, wl_surface*, wl_output*) {}};
  wl_surface_add_listener(surface.get(), &listener, &entered);
  const WaylandObject<wl_region> nothing(
      wl_compositor_create_region(static_cast<wl_compositor*>(maker.get())), {wl_region_destroy});
  wl_surface_set_input_region(surface.get(), nothing.get());
  // A layer that names no output is put on the one in use, which it learns once it is shown.
  const LayerRole role(*surface, nullptr, LayerRole::Extent::BetweenBars, {});
  const WaylandObject<wl_buffer> pixel = clearPixel(*waylandGlobals());
  if (!role.size() || !pixel)
    return nullptr;
  wl_surface_attach(surface.get(), pixel.get(), 0, 0);
  wl_surface_commit(surface.get());
  constexpr int patience = 20;
  for (int asked = 0; !entered && asked < patience; ++asked)
    if (wl_display_roundtrip_queue(waylandDisplay(), queue.get()) < 0)
      break;
  const auto all = QGuiApplication::screens();
  const auto found = std::find_if(all.begin(), all.end(), [&](const QScreen* screen) {
    return entered && waylandOutput(*screen) == entered;
  });
  return found == all.end() ? nullptr : *found;
}

}  // namespace platform
