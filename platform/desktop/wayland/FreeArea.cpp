#include "platform/desktop/wayland/FreeArea.h"

#include "platform/desktop/wayland/LayerShell.h"
#include "platform/system/Descriptor.h"
#include "platform/wayland/WaylandConnection.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <sys/mman.h>
#include <unistd.h>

namespace platform {
namespace {

/// A transparent pixel; null where the system has no memory to give.
WaylandObject<wl_buffer> clearPixel() {
  constexpr int size = 4;
  WaylandObject<wl_buffer> buffer(nullptr, {wl_buffer_destroy});
  const Descriptor memory(memfd_create("pixel", MFD_CLOEXEC));
  if (memory.get() < 0 || ftruncate(memory.get(), size) != 0)
    return buffer;
  const WaylandObject<wl_shm> sharing(waylandGlobals()->bind<wl_shm>(wl_shm_interface, 1), {wl_shm_destroy});
  const WaylandObject<wl_shm_pool> pool(wl_shm_create_pool(sharing.get(), memory.get(), size),
                                        {wl_shm_pool_destroy});
  buffer.reset(wl_shm_pool_create_buffer(pool.get(), 0, 1, 1, size, WL_SHM_FORMAT_ARGB8888));
  return buffer;
}

}  // namespace
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
  // A layer that names no output is put on the one in use, which it learns once it is shown.
  const LayerRole role(*surface, nullptr, LayerRole::Extent::BetweenBars, {});
  const WaylandObject<wl_buffer> pixel = clearPixel();
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
