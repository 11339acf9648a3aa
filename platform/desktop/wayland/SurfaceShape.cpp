#include "platform/desktop/wayland/SurfaceShape.h"

#include "platform/wayland/WaylandConnection.h"

#include <QWidget>
#include <QWindow>

#include <blur.h>

namespace platform {
namespace {

/// nullptr where there is none.
wl_surface* surfaceOf(const QWidget& window) {
  const QWindow* const handle = window.windowHandle();
  return handle && handle->handle() ? waylandSurface(*handle) : nullptr;
}

WaylandObject<wl_region> regionOf(const std::vector<QRect>& area) {
  WaylandObject<wl_region> region(wl_compositor_create_region(waylandCompositor()), {wl_region_destroy});
  for (const QRect& part : area)
    wl_region_add(region.get(), part.x(), part.y(), part.width(), part.height());
  return region;
}

}  // namespace

bool isSurface(const QWidget& window) {
  return surfaceOf(window);
}

void setInputArea(const QWidget& window, const std::vector<QRect>& area) {
  wl_surface* const surface = surfaceOf(window);
  wl_surface_set_input_region(surface, regionOf(area).get());
  wl_surface_commit(surface);
}

bool canBlurBehindSurfaces() {
  const WaylandGlobals* const globals = waylandGlobals();
  return globals && globals->version(org_kde_kwin_blur_manager_interface) > 0;
}

void blurBehindSurface(const QWidget& window, const std::vector<QRect>& area) {
  // Bound at the first use, and never ended: the toolkit's connection is gone before static objects are.
  static auto* const manager =
      waylandGlobals()->bind<org_kde_kwin_blur_manager>(org_kde_kwin_blur_manager_interface, 1);
  wl_surface* const surface = surfaceOf(window);
  // The surface keeps what it was given.
  const WaylandObject<org_kde_kwin_blur> blur(org_kde_kwin_blur_manager_create(manager, surface),
                                              {org_kde_kwin_blur_release});
  org_kde_kwin_blur_set_region(blur.get(), regionOf(area).get());
  org_kde_kwin_blur_commit(blur.get());
  wl_surface_commit(surface);
}

}  // namespace platform
