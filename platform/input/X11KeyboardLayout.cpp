#include "platform/input/X11KeyboardLayout.h"

#include "platform/input/LatinKeys.h"

namespace platform {

X11KeyboardLayout::X11KeyboardLayout(xcb_connection_t* connection) : connection(connection) {
}

std::optional<KeyboardLayout::Translation> X11KeyboardLayout::translate(quint16 keyCode) const {
  Keyboard keyboard{readX11Keymap(connection)};
  if (!keyboard.keymap)
    return std::nullopt;
  keyboard.layout = currentX11Layout(connection, keyboard.keymap.get());
  return translationOf(keyboard, keyCode);
}

}  // namespace platform
