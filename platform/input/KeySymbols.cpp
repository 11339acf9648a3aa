#include "platform/input/KeySymbols.h"

#include "platform/input/KeyCodes.h"
#include "platform/system/Xcb.h"

#include <algorithm>
#include <array>
#include <span>
#include <xkbcommon/xkbcommon.h>

namespace platform {
namespace {

struct Level {
  xkb_keycode_t keycode;
  xkb_layout_index_t layout;
  xkb_level_index_t level;
};

/// Whether holding these modifiers alone gives the level, whether NumLock is on or off.
bool isReachedBy(xkb_keymap* keymap, const Level& level, xkb_mod_mask_t held) {
  std::array<xkb_mod_mask_t, 16> masks{};
  const size_t count = xkb_keymap_key_get_mods_for_level(keymap, level.keycode, level.layout, level.level,
                                                         masks.data(), masks.size());
  const xkb_mod_index_t numLock = xkb_keymap_mod_get_index(keymap, XKB_MOD_NAME_NUM);
  const xkb_mod_mask_t ignored = numLock == XKB_MOD_INVALID ? 0 : 1U << numLock;
  return std::ranges::any_of(std::span(masks).first(count),
                             [&](xkb_mod_mask_t mask) { return (mask & ~ignored) == held; });
}

/// Calls `use(level, symbol)` for all of a keymap that prints just one symbol, layout by layout.
template <typename Use>
void forEachSymbol(xkb_keymap* keymap, Use use) {
  const xkb_keycode_t last = xkb_keymap_max_keycode(keymap);
  for (xkb_layout_index_t layout = 0; layout < xkb_keymap_num_layouts(keymap); ++layout)
    for (xkb_keycode_t keycode = xkb_keymap_min_keycode(keymap); keycode <= last; ++keycode) {
      const xkb_level_index_t levels = xkb_keymap_num_levels_for_key(keymap, keycode, layout);
      for (xkb_level_index_t level = 0; level < levels; ++level) {
        const xkb_keysym_t* symbols = nullptr;
        if (xkb_keymap_key_get_syms_by_level(keymap, keycode, layout, level, &symbols) == 1)
          use(Level{keycode, layout, level}, *symbols);
      }
    }
}

}  // namespace

KeySymbols::KeySymbols(xkb_keymap* keymap) {
  struct Way {
    xkb_mod_mask_t mask;
    HotKeyModifiers modifiers;
  };
  const xkb_mod_index_t shift = xkb_keymap_mod_get_index(keymap, XKB_MOD_NAME_SHIFT);
  const std::array ways{Way{0, {}}, Way{shift == XKB_MOD_INVALID ? 0 : 1U << shift, HotKeyModifier::Shift}};
  for (const Way& way : ways)
    forEachSymbol(keymap, [&](const Level& level, xkb_keysym_t symbol) {
      const std::optional<int> code = keyCode(static_cast<int>(level.keycode) - x11KeycodeOffset);
      if (code && !places.contains(symbol) && isReachedBy(keymap, level, way.mask))
        places.insert(symbol, {*code, way.modifiers});
    });
}

std::optional<KeySymbols::Place> KeySymbols::place(quint32 symbol) const {
  const auto found = places.constFind(xkb_keysym_to_lower(symbol));
  return found == places.constEnd() ? std::nullopt : std::optional(*found);
}

}  // namespace platform
