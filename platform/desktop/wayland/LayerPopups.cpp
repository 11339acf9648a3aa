#include "platform/desktop/wayland/LayerPopups.h"

#include "platform/wayland/WaylandConnection.h"

#include <QGuiApplication>
#include <QPlatformSurfaceEvent>
#include <QWindow>

#include <wlr-layer-shell-unstable-v1.h>
#include <xdg-shell.h>

namespace platform {
namespace {

/// Bound at the first use, and never ended: the toolkit's connection is gone before static objects are.
xdg_wm_base* windowManager() {
  static auto* const manager = [] {
    static constexpr xdg_wm_base_listener listener{
        [](void*, xdg_wm_base* asked, std::uint32_t serial) { xdg_wm_base_pong(asked, serial); }};
    constexpr std::uint32_t version = 1;
    auto* const bound =
        static_cast<xdg_wm_base*>(waylandGlobals()->bind<xdg_wm_base>(xdg_wm_base_interface, version));
    xdg_wm_base_add_listener(bound, &listener, nullptr);
    return bound;
  }();
  return manager;
}

/// What makes a popup's window one. A child of that window, until this is hidden.
class PopupRole : public QObject {
 public:
  PopupRole(QWindow& popup, const QPoint& place, zwlr_layer_surface_v1& layer)
      : QObject(&popup),
        queue(wl_display_create_queue(waylandDisplay()), {wl_event_queue_destroy}),
        surface(nullptr, {xdg_surface_destroy}),
        role(nullptr, {xdg_popup_destroy}) {
    wl_surface* const shown = waylandSurface(popup);
    const WaylandObject<void> manager(wl_proxy_create_wrapper(windowManager()), {wl_proxy_wrapper_destroy});
    wl_proxy_set_queue(static_cast<wl_proxy*>(manager.get()), queue.get());
    auto* const maker = static_cast<xdg_wm_base*>(manager.get());
    surface.reset(xdg_wm_base_get_xdg_surface(maker, shown));
    static constexpr xdg_surface_listener surfaceListener{
        [](void* self, xdg_surface* configured, std::uint32_t serial) {
          xdg_surface_ack_configure(configured, serial);
          static_cast<PopupRole*>(self)->isConfigured = true;
        }};
    xdg_surface_add_listener(surface.get(), &surfaceListener, this);

    // Where the toolkit has put it: it keeps its popups on the output itself.
    const WaylandObject<xdg_positioner> positioner(xdg_wm_base_create_positioner(maker),
                                                   {xdg_positioner_destroy});
    xdg_positioner_set_size(positioner.get(), popup.width(), popup.height());
    xdg_positioner_set_anchor_rect(positioner.get(), place.x(), place.y(), 1, 1);
    xdg_positioner_set_anchor(positioner.get(), XDG_POSITIONER_ANCHOR_TOP_LEFT);
    xdg_positioner_set_gravity(positioner.get(), XDG_POSITIONER_GRAVITY_BOTTOM_RIGHT);
    role.reset(xdg_surface_get_popup(surface.get(), nullptr, positioner.get()));
    static constexpr xdg_popup_listener roleListener{
        [](void*, xdg_popup*, std::int32_t, std::int32_t, std::int32_t, std::int32_t) {},
        [](void* self, xdg_popup*) {
          // The toolkit's own way of closing it, from its own event loop.
          QMetaObject::invokeMethod(static_cast<PopupRole*>(self)->parent(), "close", Qt::QueuedConnection);
        },
        nullptr};
    xdg_popup_add_listener(role.get(), &roleListener, this);
    zwlr_layer_surface_v1_get_popup(&layer, role.get());
    wl_surface_commit(shown);
    constexpr int patience = 100;
    for (int asked = 0; !isConfigured && asked < patience; ++asked)
      if (wl_display_roundtrip_queue(waylandDisplay(), queue.get()) < 0)
        break;
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(surface.get()), nullptr);
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(role.get()), nullptr);
  }

 private:
  const WaylandObject<wl_event_queue> queue;
  WaylandObject<xdg_surface> surface;
  WaylandObject<xdg_popup> role;  // goes before the surface
  bool isConfigured = false;
};

}  // namespace

LayerPopups::LayerPopups(QWindow& layerWindow, zwlr_layer_surface_v1& layerSurface)
    : window(layerWindow), layer(layerSurface) {
  qGuiApp->installEventFilter(this);
}

bool LayerPopups::isOurs(const QWindow& popup) const {
  // A dragged picture is a popup to the toolkit, too, and has a role of its own.
  if ((popup.type() != Qt::Popup && popup.type() != Qt::ToolTip) || popup.inherits("QShapedPixmapWindow"))
    return false;
  for (const QWindow* parent = popup.transientParent(); parent; parent = parent->transientParent())
    if (parent == &window)
      return true;
  return false;
}

bool LayerPopups::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if ((type != QEvent::PlatformSurface && type != QEvent::Show && type != QEvent::Hide) ||
      !watched->isWindowType())
    return false;
  auto* const popup = static_cast<QWindow*>(watched);
  if (!isOurs(*popup))
    return false;
  if (type == QEvent::Show) {
    adopt(*popup);
  } else if (type == QEvent::Hide) {
    delete popup->findChild<PopupRole*>();
  } else {
    using Change = QPlatformSurfaceEvent::SurfaceEventType;
    if (static_cast<QPlatformSurfaceEvent*>(event)->surfaceEventType() == Change::SurfaceCreated)
      popup->setFlag(Qt::BypassWindowManagerHint);  // the toolkit is to give it no role
    else
      delete popup->findChild<PopupRole*>();
  }
  return false;
}

void LayerPopups::adopt(QWindow& popup) {
  if (waylandSurface(popup))
    new PopupRole(popup, popup.position() - window.position(), layer);
}

}  // namespace platform
