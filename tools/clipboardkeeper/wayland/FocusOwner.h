#pragma once

#include "tools/clipboardkeeper/wayland/WaylandOwner.h"

struct xdg_wm_base;

namespace clipboardkeeper {

/// Offers contents on a Wayland clipboard as any program may that has the keyboard: by a window of one clear
/// pixel, which is there until it has been given the keyboard, and which gives it back by going away.
class FocusOwner : public WaylandOwner {
 public:
  /// Takes the clipboard; null where there is no compositor, or it doesn't give us the keyboard. The bytes of
  /// the forms must outlive this.
  [[nodiscard]] static std::unique_ptr<ClipboardOwner> take(
      const std::vector<platform::ClipboardForm>& contents);

 private:
  FocusOwner(wl_display* connected, const std::vector<platform::ClipboardForm>& contents);
  [[nodiscard]] bool own();
  /// The serial of the event by which the keyboard came to a window; 0 where it doesn't come.
  [[nodiscard]] std::uint32_t waitForKeyboard();
  void offer(std::uint32_t serial);

  platform::WaylandObject<wl_data_device_manager> manager;
  platform::WaylandObject<wl_data_device> device;
  platform::WaylandObject<wl_data_source> source;
  platform::WaylandObject<wl_compositor> compositor;
  platform::WaylandObject<xdg_wm_base> shell;
};

}  // namespace clipboardkeeper
