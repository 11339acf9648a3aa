#pragma once

#include "tools/screencapture/selection/Gestures.h"

#include <cstdint>

namespace screencapture {

/// What a key means to the tool, by the number (of X11's key symbols, which Wayland's keyboards use, too)
/// that it prints without modifiers.
[[nodiscard]] constexpr Key keyOfSymbol(std::uint32_t symbol) {
  switch (symbol) {
    case 0x0020:
      return Key::Space;
    case 0xff1b:
      return Key::Escape;
    case 0xffe1:  // left
    case 0xffe2:  // right
      return Key::Shift;
    case 0xff0d:
    case 0xff8d:  // of the keypad
      return Key::Return;
    case 0xff51:
      return Key::Left;
    case 0xff52:
      return Key::Up;
    case 0xff53:
      return Key::Right;
    case 0xff54:
      return Key::Down;
    default:
      return Key::Other;
  }
}

}  // namespace screencapture
