#include "platform/input/LatinKeys.h"

#include "platform/input/KeyCodes.h"
#include "platform/input/wayland/WaylandKeyboard.h"
#include "platform/x11/X11Connection.h"

#include <algorithm>
#include <array>

namespace platform {
namespace {

constexpr int noSuchKey = 1;
constexpr int noText = 2;

/// What the key prints in a layout without modifiers; a key with fewer layouts says itself which of them
/// stands in for the others.
xkb_keysym_t symbolOf(xkb_keymap* keymap, int keyCode, xkb_layout_index_t layout) {
  const auto keycode = static_cast<xkb_keycode_t>(evdevCode(keyCode).value_or(0) + x11KeycodeOffset);
  const xkb_keysym_t* symbols = nullptr;
  const int count = xkb_keymap_key_get_syms_by_level(keymap, keycode, layout, 0, &symbols);
  return count == 1 ? *symbols : XKB_KEY_NoSymbol;
}

bool hasLatinLetters(xkb_keymap* keymap, xkb_layout_index_t layout) {
  for (int code = 0; code <= KeyCode::m; ++code)  // the codes of all letters lie in this range
    if (const auto letter = symbolOf(keymap, code, layout); letter >= XKB_KEY_a && letter <= XKB_KEY_z)
      return true;
  return false;
}

/// The accent of a dead key as a character that stands on its own; 0 for any other keysym.
char32_t accent(xkb_keysym_t symbol) {
  struct Accent {
    xkb_keysym_t symbol;
    char32_t character;
  };
  static constexpr std::array accents{
      Accent{XKB_KEY_dead_grave, U'`'},          Accent{XKB_KEY_dead_acute, U'\u00B4'},
      Accent{XKB_KEY_dead_circumflex, U'^'},     Accent{XKB_KEY_dead_tilde, U'~'},
      Accent{XKB_KEY_dead_macron, U'\u00AF'},    Accent{XKB_KEY_dead_breve, U'\u02D8'},
      Accent{XKB_KEY_dead_abovedot, U'\u02D9'},  Accent{XKB_KEY_dead_diaeresis, U'\u00A8'},
      Accent{XKB_KEY_dead_abovering, U'\u02DA'}, Accent{XKB_KEY_dead_doubleacute, U'\u02DD'},
      Accent{XKB_KEY_dead_caron, U'\u02C7'},     Accent{XKB_KEY_dead_cedilla, U'\u00B8'},
      Accent{XKB_KEY_dead_ogonek, U'\u02DB'},    Accent{XKB_KEY_dead_iota, U'\u037A'},
      Accent{XKB_KEY_dead_belowdot, U'.'},       Accent{XKB_KEY_dead_stroke, U'/'},
      Accent{XKB_KEY_dead_greek, U'\u00B5'},     Accent{XKB_KEY_dead_currency, U'\u00A4'},
  };
  const auto found = std::ranges::find(accents, symbol, &Accent::symbol);
  return found == accents.end() ? 0 : found->character;
}

XkbKeymap standardKeymap() {
  const XkbContext context(xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES));
  const xkb_rule_names names{"evdev", "pc105", "us", "", ""};
  return XkbKeymap(context ? xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS)
                           : nullptr);
}

}  // namespace

Keyboard readKeyboard() {
  if (xcb_connection_t* const connection = x11Connection()) {
    Keyboard keyboard{readX11Keymap(connection)};
    if (keyboard.keymap)
      keyboard.layout = currentX11Layout(connection, keyboard.keymap.get());
    return keyboard;
  }
  WaylandKeyboard* const keyboard = WaylandKeyboard::current();
  return keyboard ? keyboard->read() : Keyboard();
}

Keyboard readKeyboardOrStandard() {
  Keyboard keyboard = readKeyboard();
  return keyboard.keymap ? std::move(keyboard) : Keyboard{standardKeymap()};
}

xkb_keysym_t latinSymbol(const Keyboard& keyboard, int keyCode) {
  xkb_keymap* const keymap = keyboard.keymap.get();
  xkb_layout_index_t layout = keyboard.layout;
  for (xkb_layout_index_t other = 0;
       !hasLatinLetters(keymap, layout) && other < xkb_keymap_num_layouts(keymap); ++other)
    if (hasLatinLetters(keymap, other))
      layout = other;
  return symbolOf(keymap, keyCode, layout);
}

KeyboardLayout::Translation translationOf(const Keyboard& keyboard, int keyCode) {
  if (!evdevCode(keyCode))
    return {noSuchKey, {}};
  const xkb_keysym_t symbol = latinSymbol(keyboard, keyCode);
  const char32_t spacing = accent(symbol);
  const char32_t character = spacing ? spacing : xkb_keysym_to_utf32(symbol);
  if (character == 0)
    return {noText, {}};
  return {0, QString::fromUcs4(&character, 1)};
}

}  // namespace platform
