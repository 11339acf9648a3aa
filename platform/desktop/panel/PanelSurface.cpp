#include "platform/desktop/panel/PanelSurface.h"

#include "platform/desktop/panel/X11PanelSurface.h"
#include "platform/desktop/wayland/LayerPanelSurface.h"
#include "platform/desktop/wayland/MaximizedPanelSurface.h"
#include "platform/wayland/WaylandConnection.h"

namespace platform {

std::unique_ptr<PanelSurface> PanelSurface::make(QWidget& window, PanelSheet& sheet, Handlers handlers) {
  if (OutputLayer::isOffered())
    return std::make_unique<LayerPanelSurface>(window, sheet, std::move(handlers));
  if (waylandDisplay())
    return std::make_unique<MaximizedPanelSurface>(window, sheet, std::move(handlers));
  return std::make_unique<X11PanelSurface>(window, sheet, std::move(handlers));
}

}  // namespace platform
