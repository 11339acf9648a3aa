#pragma once

#include "platform/input/KeyboardLayout.h"
#include "platform/input/XkbKeymap.h"

namespace platform {

/// What the keys print, and which of the layouts they are switched to.
struct Keyboard {
  XkbKeymap keymap;  // null where nobody could tell
  xkb_layout_index_t layout = 0;
};

/// That of the display that the application is connected to, as it is now.
[[nodiscard]] Keyboard readKeyboard();
/// The same, or an American one where nobody can tell.
[[nodiscard]] Keyboard readKeyboardOrStandard();

// Both of a keyboard that has a keymap, in its layout or, if that has no Latin letters, in the first that
// has.

/// What a virtual key code prints without modifiers; XKB_KEY_NoSymbol where there is no such key.
[[nodiscard]] xkb_keysym_t latinSymbol(const Keyboard& keyboard, int keyCode);
/// The same as KeyboardLayout has it.
[[nodiscard]] KeyboardLayout::Translation translationOf(const Keyboard& keyboard, int keyCode);

}  // namespace platform
