#include "platform/input/wayland/WaylandKeyboardLayout.h"

#include "platform/input/LatinKeys.h"

namespace platform {

std::optional<KeyboardLayout::Translation> WaylandKeyboardLayout::translate(quint16 keyCode) const {
  const Keyboard keyboard = readKeyboardOrStandard();  // a session may have no keyboard yet
  return keyboard.keymap ? std::optional(translationOf(keyboard, keyCode)) : std::nullopt;
}

}  // namespace platform
