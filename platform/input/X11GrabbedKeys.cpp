#include "platform/input/X11GrabbedKeys.h"

#include "platform/input/KeyCodes.h"
#include "platform/system/Xcb.h"

#include <array>

namespace platform {
namespace {

/// Every combination of the modifiers that this keyboard has.
std::vector<HotKeyModifiers> combinations(const X11Modifiers& modifiers) {
  std::vector<HotKeyModifiers> all{{}};
  for (const HotKeyModifier modifier :
       {HotKeyModifier::Shift, HotKeyModifier::Control, HotKeyModifier::Option, HotKeyModifier::Command}) {
    if (!modifiers.mask(modifier))
      continue;
    const size_t count = all.size();
    for (size_t index = 0; index < count; ++index)
      all.push_back(all[index] | modifier);
  }
  return all;
}

struct Trial {
  xcb_void_cookie_t request;
  SymbolicHotKey hotKey;
};

}  // namespace

std::vector<SymbolicHotKey> keysGrabbedByOthers(xcb_connection_t* connection,
                                                std::span<const xcb_window_t> roots,
                                                const X11Modifiers& modifiers,
                                                const std::function<bool(int, HotKeyModifiers)>& isOurs) {
  static constexpr std::array codes{
#define PLATFORM_KEY_CODE(name, virtualCode, evdevCode) virtualCode,
      PLATFORM_NAMED_KEYS(PLATFORM_KEY_CODE)
#undef PLATFORM_KEY_CODE
  };
  // All requests go out before the first answer is waited for. Each grab is given back at once, so that the
  // server never has a long list of them to search.
  std::vector<Trial> trials;
  for (const HotKeyModifiers combination : combinations(modifiers))
    for (const int code : codes) {
      const int keycode = evdevCode(code).value_or(x11MaximumKeycode) + x11KeycodeOffset;
      if (keycode > x11MaximumKeycode || modifiers.isModifierKey(static_cast<xcb_keycode_t>(keycode)) ||
          isOurs(code, combination))
        continue;
      const uint16_t mask = *modifiers.mask(combination);
      const auto key = static_cast<xcb_keycode_t>(keycode);
      for (const xcb_window_t root : roots) {
        trials.push_back(
            {xcb_grab_key_checked(connection, 0, root, mask, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
             {true, code, combination.toInt()}});
        xcb_ungrab_key(connection, key, root, mask);
      }
    }
  std::vector<SymbolicHotKey> grabbed;
  for (const Trial& trial : trials)
    if (const XcbPointer<xcb_generic_error_t> error{xcb_request_check(connection, trial.request)})
      grabbed.push_back(trial.hotKey);
  return grabbed;
}

}  // namespace platform
