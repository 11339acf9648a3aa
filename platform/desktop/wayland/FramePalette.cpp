#include "platform/desktop/wayland/FramePalette.h"

#include "platform/wayland/WaylandConnection.h"

#include <QWidget>
#include <QWindow>

#include <server-decoration-palette.h>

namespace platform {

void setFramePalette(QWidget& window, const QByteArray& path) {
  const WaylandGlobals* const globals = waylandGlobals();
  if (!globals || !globals->version(org_kde_kwin_server_decoration_palette_manager_interface))
    return;
  window.winId();  // from now on there is a surface to speak of
  // Bound at the first use, and never ended: the toolkit's connection is gone before static objects are.
  static auto* const manager = globals->bind<org_kde_kwin_server_decoration_palette_manager>(
      org_kde_kwin_server_decoration_palette_manager_interface, 1);
  auto* const palette =
      org_kde_kwin_server_decoration_palette_manager_create(manager, waylandSurface(*window.windowHandle()));
  org_kde_kwin_server_decoration_palette_set_palette(palette, path.constData());
  QObject::connect(&window, &QObject::destroyed,
                   [palette] { org_kde_kwin_server_decoration_palette_release(palette); });
}

}  // namespace platform
