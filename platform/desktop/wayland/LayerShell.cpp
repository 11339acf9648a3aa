#include "platform/desktop/wayland/LayerShell.h"

#include "platform/wayland/WaylandConnection.h"

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

}  // namespace

bool isLayerShellOffered() {
  const WaylandGlobals* const globals = waylandGlobals();
  return globals && globals->version(zwlr_layer_shell_v1_interface) > 0;
}

LayerRole::LayerRole(wl_surface& shown, wl_output* output, Extent extent, Handlers all)
    : surface(shown), handlers(std::move(all)), layer(nullptr, {zwlr_layer_surface_v1_destroy}) {
  // Asked on a queue of its own, so that no other events are handled meanwhile.
  wl_display* const display = waylandDisplay();
  const WaylandObject<wl_event_queue> queue(wl_display_create_queue(display), {wl_event_queue_destroy});
  const WaylandObject<void> shell(wl_proxy_create_wrapper(layerShell()), {wl_proxy_wrapper_destroy});
  wl_proxy_set_queue(static_cast<wl_proxy*>(shell.get()), queue.get());
  const auto level = extent == Extent::WholeOutputAboveFullScreen ? ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY
                                                                  : ZWLR_LAYER_SHELL_V1_LAYER_TOP;
  layer.reset(zwlr_layer_shell_v1_get_layer_surface(static_cast<zwlr_layer_shell_v1*>(shell.get()), &surface,
                                                    output, level, "sorrel"));
  constexpr std::uint32_t allEdges = ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
                                     ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;
  zwlr_layer_surface_v1_set_anchor(layer.get(), allEdges);
  zwlr_layer_surface_v1_set_exclusive_zone(layer.get(), extent == Extent::BetweenBars ? 0 : -1);
  static constexpr zwlr_layer_surface_v1_listener listener{
      [](void* self, zwlr_layer_surface_v1*, std::uint32_t serial, std::uint32_t width,
         std::uint32_t height) {
        static_cast<LayerRole*>(self)->configure(serial,
                                                 QSize(static_cast<int>(width), static_cast<int>(height)));
      },
      [](void* self, zwlr_layer_surface_v1*) {
        if (const auto closed = static_cast<LayerRole*>(self)->handlers.closed)  // outlives the role
          closed();
      }};
  zwlr_layer_surface_v1_add_listener(layer.get(), &listener, this);
  wl_surface_commit(&surface);
  // The answer comes within a turn of the compositor's event loop or two.
  constexpr int patience = 100;
  for (int asked = 0; !given && asked < patience && wl_display_roundtrip_queue(display, queue.get()) >= 0;)
    ++asked;
  wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(layer.get()), nullptr);
}

void LayerRole::configure(std::uint32_t serial, const QSize& size) {
  zwlr_layer_surface_v1_ack_configure(layer.get(), serial);
  const bool isFirst = !given;
  if (std::exchange(given, size) != size && !isFirst && handlers.resized)
    handlers.resized(size);
}

void LayerRole::setAboveFullScreen(bool isAbove) {
  if (zwlr_layer_surface_v1_get_version(layer.get()) < ZWLR_LAYER_SURFACE_V1_SET_LAYER_SINCE_VERSION)
    return;
  zwlr_layer_surface_v1_set_layer(
      layer.get(), isAbove ? ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY : ZWLR_LAYER_SHELL_V1_LAYER_TOP);
  wl_surface_commit(&surface);
}

void LayerRole::setTakesKeyboard(bool takesKeyboard) {
  // The protocol's newer versions have a third answer, a keyboard that goes to who is clicked. But there are
  // compositors that give it to such a surface for good.
  zwlr_layer_surface_v1_set_keyboard_interactivity(
      layer.get(), takesKeyboard ? ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_EXCLUSIVE
                                 : ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE);
  wl_surface_commit(&surface);
}

}  // namespace platform
