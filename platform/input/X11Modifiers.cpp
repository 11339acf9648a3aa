#include "platform/input/X11Modifiers.h"

#include "platform/x11/X11Connection.h"

#include <algorithm>
#include <initializer_list>
#include <span>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace platform {
namespace {

constexpr uint16_t allModifiers = 0xFF;

}  // namespace

X11Modifiers X11Modifiers::read(xcb_connection_t* connection) {
  const xcb_setup_t* const setup = xcb_get_setup(connection);
  const auto count = static_cast<uint8_t>(setup->max_keycode - setup->min_keycode + 1);
  const auto modifierCookie = xcb_get_modifier_mapping(connection);
  const auto symbolCookie = xcb_get_keyboard_mapping(connection, setup->min_keycode, count);
  const XcbPointer<xcb_get_modifier_mapping_reply_t> modifierMap(
      xcb_get_modifier_mapping_reply(connection, modifierCookie, nullptr));
  const XcbPointer<xcb_get_keyboard_mapping_reply_t> symbolMap(
      xcb_get_keyboard_mapping_reply(connection, symbolCookie, nullptr));
  X11Modifiers result;
  if (!modifierMap || !symbolMap)
    return result;

  const std::span symbols(xcb_get_keyboard_mapping_keysyms(symbolMap.get()),
                          static_cast<size_t>(count) * symbolMap->keysyms_per_keycode);
  const std::span keycodes(xcb_get_modifier_mapping_keycodes(modifierMap.get()),
                           size_t{8} * modifierMap->keycodes_per_modifier);
  for (size_t index = 0; index < keycodes.size(); ++index) {
    const xcb_keycode_t keycode = keycodes[index];
    if (keycode < setup->min_keycode)
      continue;  // 0 fills the rows up
    result.keys.set(keycode);
    const auto bit = static_cast<uint16_t>(1U << (index / modifierMap->keycodes_per_modifier));
    const auto own =
        symbols.subspan(static_cast<size_t>(keycode - setup->min_keycode) * symbolMap->keysyms_per_keycode,
                        symbolMap->keysyms_per_keycode);
    const auto assign = [&](uint16_t& modifier, std::initializer_list<xcb_keysym_t> wanted) {
      const bool isFixed = bit <= XCB_MOD_MASK_CONTROL;
      if (modifier == 0 && !isFixed &&
          std::ranges::find_first_of(own, std::span(wanted.begin(), wanted.size())) != own.end())
        modifier = bit;
    };
    assign(result.option, {XKB_KEY_Alt_L, XKB_KEY_Alt_R});
    assign(result.command, {XKB_KEY_Super_L, XKB_KEY_Super_R});
    assign(result.numLock, {XKB_KEY_Num_Lock});
    assign(result.scrollLock, {XKB_KEY_Scroll_Lock});
  }
  return result;
}

std::optional<uint16_t> X11Modifiers::mask(HotKeyModifiers wanted) const {
  uint16_t bits = 0;
  bool isComplete = !wanted.testFlag(HotKeyModifier::Function);  // the keyboard keeps that key to itself
  const auto add = [&](HotKeyModifier modifier, uint16_t bit) {
    if (!wanted.testFlag(modifier))
      return;
    bits = static_cast<uint16_t>(bits | bit);
    isComplete = isComplete && bit != 0;
  };
  add(HotKeyModifier::Shift, XCB_MOD_MASK_SHIFT);
  add(HotKeyModifier::Control, XCB_MOD_MASK_CONTROL);
  add(HotKeyModifier::Option, option);
  add(HotKeyModifier::Command, command);
  return isComplete ? std::optional(bits) : std::nullopt;
}

std::optional<HotKeyModifiers> X11Modifiers::down(uint16_t state) const {
  const auto locks = static_cast<uint16_t>(XCB_MOD_MASK_LOCK | numLock | scrollLock);
  const auto held = static_cast<uint16_t>(state & allModifiers & ~locks);
  HotKeyModifiers found;
  found.setFlag(HotKeyModifier::Shift, held & XCB_MOD_MASK_SHIFT);
  found.setFlag(HotKeyModifier::Control, held & XCB_MOD_MASK_CONTROL);
  found.setFlag(HotKeyModifier::Option, held & option);
  found.setFlag(HotKeyModifier::Command, held & command);
  return mask(found) == held ? std::optional(found) : std::nullopt;
}

std::vector<uint16_t> X11Modifiers::lockCombinations() const {
  std::vector<uint16_t> combinations{0};
  for (const uint16_t lock : {uint16_t{XCB_MOD_MASK_LOCK}, numLock, scrollLock}) {
    if (lock == 0)
      continue;
    const size_t count = combinations.size();
    for (size_t index = 0; index < count; ++index)
      combinations.push_back(static_cast<uint16_t>(combinations[index] | lock));
  }
  return combinations;
}

}  // namespace platform
