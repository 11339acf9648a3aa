#include "tools/clipboardkeeper/wayland/FocusOwner.h"

#include "platform/wayland/ClearPixel.h"
#include "platform/wayland/KeyboardArrival.h"

#include <xdg-shell.h>

namespace clipboardkeeper {

namespace {

using platform::WaylandObject;

constexpr std::chrono::milliseconds longestWay{1000};  // of the keyboard, to a new window

constexpr xdg_wm_base_listener shellListener{
    .ping = [](void*, xdg_wm_base* shell, std::uint32_t serial) { xdg_wm_base_pong(shell, serial); }};
constexpr xdg_toplevel_listener windowListener{.configure = [](void*, auto*, auto, auto, auto*) {},
                                               .close = [](void*, auto*) {},
                                               .configure_bounds = [](void*, auto*, auto, auto) {},
                                               .wm_capabilities = [](void*, auto*, auto*) {}};
// What others copied before, or drag over us, is none of our business.
constexpr wl_data_device_listener deviceListener{.data_offer = [](void*, auto*, auto*) {},
                                                 .enter = [](void*, auto*, auto, auto*, auto, auto, auto*) {},
                                                 .leave = [](void*, auto*) {},
                                                 .motion = [](void*, auto*, auto, auto, auto) {},
                                                 .drop = [](void*, auto*) {},
                                                 .selection =
                                                     [](void*, auto*, wl_data_offer* offer) {
                                                       if (offer)
                                                         wl_data_offer_destroy(offer);
                                                     }};

/// A window of one clear pixel, as long as it lives.
struct PixelWindow {
  PixelWindow(wl_compositor* compositor, xdg_wm_base* shell, const platform::WaylandGlobals& globals)
      : pixel(platform::clearPixel(globals)),
        surface(wl_compositor_create_surface(compositor), {wl_surface_destroy}),
        role(xdg_wm_base_get_xdg_surface(shell, surface.get()), {xdg_surface_destroy}),
        window(xdg_surface_get_toplevel(role.get()), {xdg_toplevel_destroy}) {
    static constexpr xdg_surface_listener listener{
        .configure = [](void* self, xdg_surface* role, std::uint32_t serial) {
          auto* const window = static_cast<PixelWindow*>(self);
          xdg_surface_ack_configure(role, serial);
          wl_surface_attach(window->surface.get(), window->pixel.get(), 0, 0);
          wl_surface_commit(window->surface.get());
        }};
    xdg_surface_add_listener(role.get(), &listener, this);
    xdg_toplevel_add_listener(window.get(), &windowListener, nullptr);
    xdg_toplevel_set_app_id(window.get(), "org.sorrel.Sorrel");
    wl_surface_commit(surface.get());
  }

  const WaylandObject<wl_buffer> pixel;
  const WaylandObject<wl_surface> surface;
  const WaylandObject<xdg_surface> role;
  const WaylandObject<xdg_toplevel> window;
};

/// Reads what the compositor has to say until then; false when that time has come, or the compositor is gone.
bool readEvents(wl_display* display, std::chrono::steady_clock::time_point limit) {
  while (wl_display_prepare_read(display) != 0)
    wl_display_dispatch_pending(display);
  wl_display_flush(display);
  const auto left =
      std::chrono::ceil<std::chrono::milliseconds>(limit - std::chrono::steady_clock::now()).count();
  pollfd watched{wl_display_get_fd(display), POLLIN, 0};
  if (left > 0 && poll(&watched, 1, static_cast<int>(left)) > 0)
    return wl_display_read_events(display) >= 0 && wl_display_dispatch_pending(display) >= 0;
  wl_display_cancel_read(display);
  return false;
}

}  // namespace

std::unique_ptr<ClipboardOwner> FocusOwner::take(const std::vector<platform::ClipboardForm>& contents) {
  wl_display* const display = connect();
  if (!display)
    return nullptr;
  std::unique_ptr<FocusOwner> owner(new FocusOwner(display, contents));
  return owner->own() ? std::move(owner) : nullptr;
}

FocusOwner::FocusOwner(wl_display* connected, const std::vector<platform::ClipboardForm>& contents)
    : WaylandOwner(connected, contents),
      manager(globals.bind<wl_data_device_manager>(wl_data_device_manager_interface, 1),
              {wl_data_device_manager_destroy}),
      device(nullptr, {wl_data_device_destroy}),
      source(nullptr, {wl_data_source_destroy}),
      compositor(globals.bind<wl_compositor>(wl_compositor_interface, 1), {wl_compositor_destroy}),
      shell(globals.bind<xdg_wm_base>(xdg_wm_base_interface, 1), {xdg_wm_base_destroy}) {
}

bool FocusOwner::own() {
  if (!seat || !manager || !compositor || !shell || globals.version(wl_shm_interface) == 0)
    return false;
  xdg_wm_base_add_listener(shell.get(), &shellListener, nullptr);
  device.reset(wl_data_device_manager_get_data_device(manager.get(), seat.get()));
  wl_data_device_add_listener(device.get(), &deviceListener, nullptr);
  const PixelWindow window(compositor.get(), shell.get(), globals);
  const std::uint32_t serial = waitForKeyboard();
  if (serial == 0)
    return false;
  offer(serial);
  isOwner = true;
  return wl_display_roundtrip(display.get()) >= 0 && isOwner;
}

std::uint32_t FocusOwner::waitForKeyboard() {
  const platform::KeyboardArrival keyboard(seat.get());
  const auto limit = std::chrono::steady_clock::now() + longestWay;
  while (keyboard.serial() == 0 && readEvents(display.get(), limit)) {
  }
  return keyboard.serial();
}

void FocusOwner::offer(std::uint32_t serial) {
  static constexpr wl_data_source_listener sourceListener{
      .target = [](void*, auto*, auto*) {},
      .send =
          [](void* owner, auto*, const char* target, int pipe) {
            static_cast<FocusOwner*>(owner)->startTransfer(target, platform::Descriptor(pipe));
          },
      .cancelled = [](void* owner, auto*) { static_cast<FocusOwner*>(owner)->isOwner = false; },
      .dnd_drop_performed = [](void*, auto*) {},
      .dnd_finished = [](void*, auto*) {},
      .action = [](void*, auto*, auto) {}};
  source.reset(wl_data_device_manager_create_data_source(manager.get()));
  wl_data_source_add_listener(source.get(), &sourceListener, this);
  for (const platform::ClipboardForm& form : forms)
    wl_data_source_offer(source.get(), std::string(form.target).c_str());
  wl_data_device_set_selection(device.get(), source.get(), serial);
}

}  // namespace clipboardkeeper
