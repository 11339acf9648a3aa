#include "platform/input/X11KeyboardLayout.h"

#include "platform/input/KeyCodes.h"
#include "platform/input/XcbXkb.h"
#include "platform/x11/X11Connection.h"

#include <algorithm>
#include <array>
#include <span>
#include <vector>
#include <xkbcommon/xkbcommon.h>

namespace platform {
namespace {

constexpr int noSuchKey = 1;
constexpr int noText = 2;

/// The keysyms without modifiers of each key, one a group.
class Keymap {
 public:
  explicit Keymap(const xcb_xkb_get_map_reply_t* reply) : firstKeycode(reply->firstKeySym) {
    xcb_xkb_get_map_map_t map;
    xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(reply), reply->nTypes, reply->nKeySyms, reply->nKeyActions,
                               reply->totalActions, reply->totalKeyBehaviors, reply->virtualMods,
                               reply->totalKeyExplicit, reply->totalModMapKeys, reply->totalVModMapKeys,
                               reply->present, &map);
    for (auto key = xcb_xkb_get_map_map_syms_rtrn_iterator(reply, &map); key.rem > 0;
         xcb_xkb_key_sym_map_next(&key)) {
      const std::span symbols(xcb_xkb_key_sym_map_syms(key.data),
                              static_cast<size_t>(xcb_xkb_key_sym_map_syms_length(key.data)));
      Key& entry = keys.emplace_back(Key{key.data->groupInfo, {}});
      const int groups = key.data->groupInfo & 0x0F;
      for (int group = 0; group < groups; ++group)
        entry.symbols.push_back(symbols[static_cast<size_t>(group * key.data->width)]);
    }
  }

  /// A key with fewer groups than the keymap says itself which of them stands in for the others.
  xcb_keysym_t symbol(int keycode, int group) const {
    const int index = keycode - firstKeycode;
    if (index < 0 || index >= static_cast<int>(keys.size()))
      return XKB_KEY_NoSymbol;
    const Key& key = keys[static_cast<size_t>(index)];
    const int groups = static_cast<int>(key.symbols.size());
    if (groups == 0)
      return XKB_KEY_NoSymbol;
    if (group >= groups) {
      const int redirected = (key.groupInfo >> 4) & 3;
      switch (key.groupInfo & 0xC0) {
        case XCB_XKB_GROUPS_WRAP_CLAMP_INTO_RANGE:
          group = groups - 1;
          break;
        case XCB_XKB_GROUPS_WRAP_REDIRECT_INTO_RANGE:
          group = redirected < groups ? redirected : 0;
          break;
        default:
          group %= groups;
      }
    }
    return key.symbols[static_cast<size_t>(group)];
  }

  int groups() const {
    size_t most = 0;
    for (const Key& key : keys)
      most = std::max(most, key.symbols.size());
    return static_cast<int>(most);
  }

  bool hasLatinLetters(int group) const {
    for (int code = 0; code <= KeyCode::m; ++code) {  // the codes of all letters lie in this range
      const int keycode = evdevCode(code).value_or(0) + x11KeycodeOffset;
      if (const auto letter = symbol(keycode, group); letter >= XKB_KEY_a && letter <= XKB_KEY_z)
        return true;
    }
    return false;
  }

 private:
  struct Key {
    uint8_t groupInfo;
    std::vector<xcb_keysym_t> symbols;
  };
  int firstKeycode;
  std::vector<Key> keys;
};

/// The accent of a dead key as a character that stands on its own; 0 for any other keysym.
char32_t accent(xcb_keysym_t symbol) {
  struct Accent {
    xcb_keysym_t symbol;
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

}  // namespace

X11KeyboardLayout::X11KeyboardLayout(xcb_connection_t* connection) : connection(connection) {
  xcb_discard_reply(connection,
                    xcb_xkb_use_extension(connection, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION).sequence);
}

std::optional<KeyboardLayout::Translation> X11KeyboardLayout::translate(quint16 keyCode) const {
  const auto* const extension = xcb_get_extension_data(connection, &xcb_xkb_id);
  if (!extension || !extension->present)
    return std::nullopt;
  const xcb_setup_t* const setup = xcb_get_setup(connection);
  const auto keys = static_cast<uint8_t>(setup->max_keycode - setup->min_keycode + 1);
  const auto stateCookie = xcb_xkb_get_state(connection, XCB_XKB_ID_USE_CORE_KBD);
  const auto mapCookie = xcb_xkb_get_map(connection, XCB_XKB_ID_USE_CORE_KBD, 0, XCB_XKB_MAP_PART_KEY_SYMS, 0,
                                         0, setup->min_keycode, keys, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
  const XcbPointer<xcb_xkb_get_state_reply_t> state(
      xcb_xkb_get_state_reply(connection, stateCookie, nullptr));
  const XcbPointer<xcb_xkb_get_map_reply_t> map(xcb_xkb_get_map_reply(connection, mapCookie, nullptr));
  if (!state || !map)
    return std::nullopt;

  const std::optional<int> position = evdevCode(keyCode);
  if (!position)
    return Translation{noSuchKey, {}};
  const Keymap keymap(map.get());
  int group = state->group;
  for (int other = 0; !keymap.hasLatinLetters(group) && other < keymap.groups(); ++other)
    if (keymap.hasLatinLetters(other))
      group = other;
  const xcb_keysym_t symbol = keymap.symbol(*position + x11KeycodeOffset, group);
  const char32_t spacing = accent(symbol);
  const char32_t character = spacing ? spacing : xkb_keysym_to_utf32(symbol);
  if (character == 0)
    return Translation{noText, {}};
  return Translation{0, QString::fromUcs4(&character, 1)};
}

}  // namespace platform
