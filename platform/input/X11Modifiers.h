#pragma once

#include "platform/input/HotKeyService.h"

#include <bitset>
#include <vector>
#include <xcb/xproto.h>

namespace platform {

/// Which bits of an X key event's state stand for which modifier, by the server's modifier map.
class X11Modifiers {
 public:
  /// No modifier but Shift, Control and CapsLock, whose bits are fixed.
  X11Modifiers() = default;
  /// Asks the server; one round trip.
  static X11Modifiers read(xcb_connection_t* connection);

  /// nullopt if the keyboard lacks one of the modifiers.
  [[nodiscard]] std::optional<uint16_t> mask(HotKeyModifiers wanted) const;
  /// The modifiers that are down by an event's `state`, whatever is locked; nullopt if one of them has no
  /// counterpart.
  [[nodiscard]] std::optional<HotKeyModifiers> down(uint16_t state) const;
  /// Every combination of the lock modifiers CapsLock, NumLock and ScrollLock, none included.
  [[nodiscard]] std::vector<uint16_t> lockCombinations() const;
  [[nodiscard]] bool isModifierKey(xcb_keycode_t keycode) const { return keys[keycode]; }

  bool operator==(const X11Modifiers&) const = default;

 private:
  uint16_t option = 0;
  uint16_t command = 0;
  uint16_t numLock = 0;
  uint16_t scrollLock = 0;
  std::bitset<256> keys;
};

}  // namespace platform
