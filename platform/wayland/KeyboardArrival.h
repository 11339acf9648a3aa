#pragma once

#include "platform/wayland/WaylandGlobals.h"

namespace platform {

/// Hears whether the keyboard comes to one of the connection's surfaces. Its events come on the seat's queue.
/// The seat must have a keyboard.
class KeyboardArrival {
 public:
  explicit KeyboardArrival(wl_seat* seat);
  KeyboardArrival(const KeyboardArrival&) = delete;
  KeyboardArrival& operator=(const KeyboardArrival&) = delete;

  /// Of the event by which it came; 0 as long as it hasn't.
  [[nodiscard]] std::uint32_t serial() const { return arrived; }

 private:
  const WaylandObject<wl_keyboard> keyboard;
  std::uint32_t arrived = 0;
};

}  // namespace platform
