#include "platform/desktop/wayland/FreeArea.h"

#include "platform/desktop/wayland/LayerShell.h"
#include "platform/wayland/WaylandConnection.h"

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

}  // namespace platform
