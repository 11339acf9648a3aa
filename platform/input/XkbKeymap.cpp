#include "platform/input/XkbKeymap.h"

#include <algorithm>
#include <array>
#include <xkbcommon/xkbcommon-x11.h>

namespace platform {
namespace {

/// A modifier, the symbol of its left key, and where a keymap has that key.
struct ModifierKey {
  HotKeyModifier modifier;
  xkb_keysym_t symbol;
  xkb_keycode_t keycode = XKB_KEYCODE_INVALID;
};
using ModifierKeys = std::array<ModifierKey, 4>;

ModifierKeys findModifierKeys(xkb_keymap* keymap) {
  ModifierKeys keys{{{HotKeyModifier::Control, XKB_KEY_Control_L},
                     {HotKeyModifier::Option, XKB_KEY_Alt_L},
                     {HotKeyModifier::Shift, XKB_KEY_Shift_L},
                     {HotKeyModifier::Command, XKB_KEY_Super_L}}};
  const xkb_keycode_t last = xkb_keymap_max_keycode(keymap);
  for (xkb_keycode_t keycode = xkb_keymap_min_keycode(keymap); keycode <= last; ++keycode) {
    const xkb_keysym_t* symbols = nullptr;
    if (xkb_keymap_key_get_syms_by_level(keymap, keycode, 0, 0, &symbols) != 1)
      continue;
    const auto key = std::ranges::find(keys, *symbols, &ModifierKey::symbol);
    if (key != keys.end() && key->keycode == XKB_KEYCODE_INVALID)
      key->keycode = keycode;
  }
  return keys;
}

/// The modifiers that are down once these keys are.
xkb_mod_mask_t pressed(xkb_keymap* keymap, const std::vector<xkb_keycode_t>& keycodes) {
  const XkbState state(xkb_state_new(keymap));
  for (const xkb_keycode_t keycode : keycodes)
    xkb_state_update_key(state.get(), keycode, XKB_KEY_DOWN);
  return xkb_state_serialize_mods(state.get(), XKB_STATE_MODS_EFFECTIVE);
}

/// `keycodes` in ascending order.
bool canBeHeldTogether(xkb_keymap* keymap, std::vector<xkb_keycode_t> keycodes) {
  xkb_mod_mask_t wanted = 0;
  for (const xkb_keycode_t keycode : keycodes)
    wanted |= pressed(keymap, {keycode});
  do {
    if ((pressed(keymap, keycodes) & wanted) == wanted)
      return true;
  } while (std::ranges::next_permutation(keycodes).found);
  return false;
}

}  // namespace

XkbKeymap readX11Keymap(xcb_connection_t* connection) {
  const XkbContext context(xkb_context_new(
      static_cast<xkb_context_flags>(XKB_CONTEXT_NO_DEFAULT_INCLUDES | XKB_CONTEXT_NO_ENVIRONMENT_NAMES)));
  const bool canAsk =
      context &&
      xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                  XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr);
  const int32_t keyboard = canAsk ? xkb_x11_get_core_keyboard_device_id(connection) : -1;
  return XkbKeymap(keyboard < 0 ? nullptr
                                : xkb_x11_keymap_new_from_device(context.get(), connection, keyboard,
                                                                 XKB_KEYMAP_COMPILE_NO_FLAGS));
}

xkb_layout_index_t currentX11Layout(xcb_connection_t* connection, xkb_keymap* keymap) {
  const int32_t keyboard = xkb_x11_get_core_keyboard_device_id(connection);
  const XkbState state(keyboard < 0 ? nullptr : xkb_x11_state_new_from_device(keymap, connection, keyboard));
  return state ? xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE) : 0;
}

std::vector<HotKeyModifiers> modifiersThatSwitchLayout(xkb_keymap* keymap) {
  const ModifierKeys keys = findModifierKeys(keymap);
  std::vector<HotKeyModifiers> found;
  for (unsigned chosen = 0; chosen < 1U << keys.size(); ++chosen) {
    HotKeyModifiers combination;
    std::vector<xkb_keycode_t> keycodes;
    for (size_t index = 0; index < keys.size(); ++index) {
      if (!(chosen & 1U << index))
        continue;
      combination |= keys[index].modifier;
      keycodes.push_back(keys[index].keycode);
    }
    std::ranges::sort(keycodes);
    const bool isWhole = std::ranges::find(keycodes, XKB_KEYCODE_INVALID) == keycodes.end();
    if (isWhole && keycodes.size() > 1 && !canBeHeldTogether(keymap, keycodes))
      found.push_back(combination);
  }
  return found;
}

}  // namespace platform
