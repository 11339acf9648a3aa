#include "tools/screencapture/wayland/Display.h"

#include <cerrno>
#include <cstdio>
#include <poll.h>
#include <viewporter.h>
#include <wlr-layer-shell-unstable-v1.h>
#include <wlr-screencopy-unstable-v1.h>
#include <xdg-output-unstable-v1.h>
#include <xdg-shell.h>

namespace screencapture::wayland {

namespace {

Output& outputOf(void* self) {
  return *static_cast<Output*>(self);
}

constexpr wl_output_listener outputListener{
    .geometry = [](void* self, wl_output*, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                   std::int32_t, const char*, const char*,
                   std::int32_t transform) { outputOf(self).transform = Transform::of(transform); },
    .mode =
        [](void* self, wl_output*, std::uint32_t flags, std::int32_t width, std::int32_t height,
           std::int32_t) {
          if (flags & WL_OUTPUT_MODE_CURRENT)
            outputOf(self).mode = {width, height};
        },
    .done = [](void*, wl_output*) {},
    .scale = [](void* self, wl_output*, std::int32_t scale) { outputOf(self).wholeScale = scale; },
    .name = [](void* self, wl_output*, const char* name) { outputOf(self).name = name; },
    .description = [](void*, wl_output*, const char*) {}};

constexpr zxdg_output_v1_listener extraListener{
    .logical_position =
        [](void* self, zxdg_output_v1*, std::int32_t x, std::int32_t y) {
          outputOf(self).logical.x = x;
          outputOf(self).logical.y = y;
        },
    .logical_size =
        [](void* self, zxdg_output_v1*, std::int32_t width, std::int32_t height) {
          outputOf(self).logical.width = width;
          outputOf(self).logical.height = height;
        },
    .done = [](void*, zxdg_output_v1*) {},
    .name = [](void* self, zxdg_output_v1*, const char* name) { outputOf(self).name = name; },
    .description = [](void*, zxdg_output_v1*, const char*) {}};

constexpr xdg_wm_base_listener shellListener{
    [](void*, xdg_wm_base* shell, std::uint32_t serial) { xdg_wm_base_pong(shell, serial); }};

}  // namespace

Size Output::uprightPixels() const {
  return transform.swapsSides() ? Size{mode.height, mode.width} : mode;
}

std::unique_ptr<Display> Display::open() {
  wl_display* const connection = wl_display_connect(nullptr);
  if (!connection) {
    std::fputs("screencapture: there is no display\n", stderr);
    return nullptr;
  }
  std::unique_ptr<Display> display(new Display(connection));
  const char* lacking = nullptr;
  if (!display->compositor || !display->shm || display->globals.version(wl_seat_interface) == 0 ||
      !display->shell)
    lacking = "a desktop's interfaces";
  else if (!display->viewporter)
    lacking = "wp_viewporter";
  else if (display->globals.version(wl_output_interface) == 0)
    lacking = "an output";
  if (lacking) {
    std::fprintf(stderr, "screencapture: the compositor lacks %s\n", lacking);
    return nullptr;
  }
  xdg_wm_base_add_listener(display->shell.get(), &shellListener, nullptr);
  display->askForOutputs();
  return display;
}

template <typename T>
platform::WaylandObject<T> Display::bound(const wl_interface& interface, std::uint32_t newest,
                                          void (*end)(T*)) const {
  return {globals.bind<T>(interface, newest), {end}};
}

Display::Display(wl_display* connection)
    : server(connection, {wl_display_disconnect}),
      globals(connection),
      compositor(bound(wl_compositor_interface, 4, wl_compositor_destroy)),
      shm(bound(wl_shm_interface, 1, wl_shm_destroy)),
      viewporter(bound(wp_viewporter_interface, 1, wp_viewporter_destroy)),
      shell(bound(xdg_wm_base_interface, 1, xdg_wm_base_destroy)),
      layerShell(bound(zwlr_layer_shell_v1_interface, 3, zwlr_layer_shell_v1_destroy)),
      screencopy(bound(zwlr_screencopy_manager_v1_interface, 3, zwlr_screencopy_manager_v1_destroy)) {
}

Display::~Display() = default;

void Display::askForOutputs() {
  const auto extras = bound(zxdg_output_manager_v1_interface, 2, zxdg_output_manager_v1_destroy);
  for (const platform::WaylandGlobals::Global& global : globals.all()) {
    if (global.interface != wl_output_interface.name)
      continue;
    Output& output = *outputs.emplace_back(std::make_unique<Output>());
    output.proxy = {globals.bind<wl_output>(global, wl_output_interface, 4), {wl_output_destroy}};
    wl_output_add_listener(output.proxy.get(), &outputListener, &output);
    if (!extras)
      continue;
    output.extra = {zxdg_output_manager_v1_get_xdg_output(extras.get(), output.proxy.get()),
                    {zxdg_output_v1_destroy}};
    zxdg_output_v1_add_listener(output.extra.get(), &extraListener, &output);
  }
}

bool Display::handleEvents(std::optional<std::chrono::milliseconds> patience, int other) {
  while (wl_display_prepare_read(connection()) != 0)
    if (wl_display_dispatch_pending(connection()) != 0)
      return !isLost();
  wl_display_flush(connection());
  pollfd waiting[] = {{wl_display_get_fd(connection()), POLLIN, 0}, {other, POLLIN, 0}};
  (void)poll(waiting, std::size(waiting), patience ? static_cast<int>(patience->count()) : -1);
  if (waiting[0].revents != 0)
    wl_display_read_events(connection());
  else
    wl_display_cancel_read(connection());
  wl_display_dispatch_pending(connection());
  return !isLost();
}

void Display::roundTrip() {
  wl_display_roundtrip(connection());
}

}  // namespace screencapture::wayland
