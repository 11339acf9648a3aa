#include "platform/desktop/wayland/OutputLayer.h"

#include "platform/wayland/WaylandConnection.h"

#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <wlr-layer-shell-unstable-v1.h>

namespace platform {
namespace {

/// Bound at the first use, and never ended: the toolkit's connection is gone before static objects are.
zwlr_layer_shell_v1* layerShell() {
  constexpr std::uint32_t newestVersion = 4;
  static auto* const shell =
      waylandGlobals()->bind<zwlr_layer_shell_v1>(zwlr_layer_shell_v1_interface, newestVersion);
  return shell;
}

/// The protocol's newer versions have a third answer, a keyboard that goes to who is clicked. But there are
/// compositors that give it to such a surface for good.
std::uint32_t protocolValue(OutputLayer::Keyboard keyboard) {
  return keyboard == OutputLayer::Keyboard::Here ? ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_EXCLUSIVE
                                                 : ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE;
}

}  // namespace

bool OutputLayer::isOffered() {
  const WaylandGlobals* const globals = waylandGlobals();
  return globals && globals->version(zwlr_layer_shell_v1_interface) > 0;
}

Qt::WindowFlags OutputLayer::windowFlags() {
  // The toolkit leaves such windows without a role, once it is told to heed the flag.
  qputenv("QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT", "1");
  return Qt::BypassWindowManagerHint;
}

OutputLayer::OutputLayer(QWidget& widget, QScreen& screen, Keyboard first, Handlers all)
    : window(widget),
      handlers(std::move(all)),
      keyboard(first),
      layer(nullptr, {zwlr_layer_surface_v1_destroy}) {
  window.setGeometry(screen.geometry());
  window.winId();  // makes it
  window.windowHandle()->setScreen(&screen);
  makeRole(screen);
}

void OutputLayer::makeRole(QScreen& screen) {
  wl_surface* const surface = waylandSurface(*window.windowHandle());
  // Asked on a queue of its own, so that no other events are handled meanwhile.
  wl_display* const display = waylandDisplay();
  const WaylandObject<wl_event_queue> queue(wl_display_create_queue(display), {wl_event_queue_destroy});
  const WaylandObject<void> shell(wl_proxy_create_wrapper(layerShell()), {wl_proxy_wrapper_destroy});
  wl_proxy_set_queue(static_cast<wl_proxy*>(shell.get()), queue.get());
  layer.reset(zwlr_layer_shell_v1_get_layer_surface(static_cast<zwlr_layer_shell_v1*>(shell.get()), surface,
                                                    waylandOutput(screen), ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY,
                                                    "panel"));
  constexpr std::uint32_t allEdges = ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
                                     ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;
  zwlr_layer_surface_v1_set_anchor(layer.get(), allEdges);
  zwlr_layer_surface_v1_set_exclusive_zone(layer.get(), -1);  // over the bars, too
  zwlr_layer_surface_v1_set_keyboard_interactivity(layer.get(), protocolValue(keyboard));
  static constexpr zwlr_layer_surface_v1_listener listener{
      [](void* self, zwlr_layer_surface_v1*, std::uint32_t serial, std::uint32_t width,
         std::uint32_t height) {
        static_cast<OutputLayer*>(self)->configured(serial,
                                                    QSize(static_cast<int>(width), static_cast<int>(height)));
      },
      [](void* self, zwlr_layer_surface_v1*) {
        const auto closed = static_cast<OutputLayer*>(self)->handlers.closed;  // outlives the layer
        closed();
      }};
  zwlr_layer_surface_v1_add_listener(layer.get(), &listener, this);
  wl_surface_commit(surface);
  // No picture may come before the answer. It comes within a turn of the compositor's event loop or two.
  constexpr int patience = 100;
  for (int asked = 0; !size && asked < patience && wl_display_roundtrip_queue(display, queue.get()) >= 0;)
    ++asked;
  wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(layer.get()), nullptr);
  if (size)
    popups.emplace(*window.windowHandle(), *layer);
}

void OutputLayer::configured(std::uint32_t serial, const QSize& given) {
  zwlr_layer_surface_v1_ack_configure(layer.get(), serial);
  const bool isFirst = !size;
  if (std::exchange(size, given) == given)
    return;
  window.resize(given);
  if (!isFirst)
    handlers.resized(given);
}

void OutputLayer::setKeyboard(Keyboard wanted) {
  if (std::exchange(keyboard, wanted) == wanted || !layer)
    return;
  zwlr_layer_surface_v1_set_keyboard_interactivity(layer.get(), protocolValue(keyboard));
  wl_surface_commit(waylandSurface(*window.windowHandle()));
}

}  // namespace platform
