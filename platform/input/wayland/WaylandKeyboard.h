#pragma once

#include "platform/base/Subscription.h"
#include "platform/input/LatinKeys.h"
#include "platform/wayland/WaylandGlobals.h"

#include <wayland-client.h>

namespace platform {

/// The keyboard of a Wayland session. Its keymap is known at once; which layout it is switched to, the
/// compositor tells only while a window of this program has the keyboard. Main thread only.
class WaylandKeyboard {
 public:
  /// The environment's own, made at its first use; nullptr where the application is on no Wayland session.
  static WaylandKeyboard* current();

  explicit WaylandKeyboard(wl_display* display, const WaylandGlobals& globals);
  ~WaylandKeyboard();
  WaylandKeyboard(const WaylandKeyboard&) = delete;
  WaylandKeyboard& operator=(const WaylandKeyboard&) = delete;

  /// Without a keymap where there is no keyboard.
  [[nodiscard]] Keyboard read() const;
  /// `block` is called after the keymap has changed.
  [[nodiscard]] Subscription observe(std::function<void()> block) { return observers.add(std::move(block)); }

 private:
  static const wl_seat_listener seatListener;
  static const wl_keyboard_listener keyboardListener;
  void setCapabilities(uint32_t capabilities);
  void setKeymap(uint32_t format, int file, uint32_t size);

  WaylandObject<wl_seat> seat;
  WaylandObject<wl_keyboard> keyboard;
  QByteArray keymapText;
  mutable XkbKeymap keymap;  // of the text, once it was asked for
  xkb_layout_index_t layout = 0;
  Listeners<> observers;
};

}  // namespace platform
