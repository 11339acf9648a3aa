#include "platform/input/X11GrabbedKeys.h"

#include "platform/input/KeyCodes.h"
#include "platform/system/Xcb.h"

#include <algorithm>
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

/// The virtual codes of the keys that the server can grab, without the modifiers.
std::vector<int> ordinaryKeys(const X11Modifiers& modifiers) {
  std::vector<int> codes{
#define PLATFORM_KEY_CODE(name, virtualCode, evdevCode) virtualCode,
      PLATFORM_NAMED_KEYS(PLATFORM_KEY_CODE)
#undef PLATFORM_KEY_CODE
  };
  std::erase_if(codes, [&](int code) {
    const int keycode = evdevCode(code).value_or(x11MaximumKeycode) + x11KeycodeOffset;
    return keycode > x11MaximumKeycode || modifiers.isModifierKey(static_cast<xcb_keycode_t>(keycode));
  });
  return codes;
}

struct Trial {
  int keyCode = 0;  // virtual
  uint16_t mask = 0;
  HotKeyModifiers modifiers;
};

/// Those that the server refuses because others have the key. All requests go out before the first answer is
/// waited for. Each grab is given back at once, so that the server has no longer list of them to search.
std::vector<Trial> refused(xcb_connection_t* connection, std::span<const xcb_window_t> roots,
                           const std::vector<Trial>& trials) {
  struct Request {
    const Trial& trial;
    xcb_void_cookie_t cookie;
  };
  std::vector<Request> requests;
  requests.reserve(trials.size() * roots.size());
  for (const Trial& trial : trials)
    for (const xcb_window_t root : roots) {
      const auto key = static_cast<xcb_keycode_t>(*evdevCode(trial.keyCode) + x11KeycodeOffset);
      requests.push_back({trial, xcb_grab_key_checked(connection, 0, root, trial.mask, key,
                                                      XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)});
      xcb_ungrab_key(connection, key, root, trial.mask);
    }
  std::vector<Trial> found;
  const Trial* last = nullptr;
  for (const Request& request : requests) {
    const XcbPointer<xcb_generic_error_t> error{xcb_request_check(connection, request.cookie)};
    if (error && last != &request.trial)  // refused on two roots, it counts once
      found.push_back(request.trial);
    if (error)
      last = &request.trial;
  }
  return found;
}

}  // namespace

std::vector<SymbolicHotKey> keysGrabbedByOthers(xcb_connection_t* connection,
                                                std::span<const xcb_window_t> roots,
                                                const X11Modifiers& modifiers,
                                                const std::function<bool(int, HotKeyModifiers)>& isOurs) {
  const std::vector<HotKeyModifiers> all = combinations(modifiers);
  // With any modifiers first: most keys are free, and a trial takes as long as the server's list of grabs.
  // One of these would take away what we have on the key ourselves.
  std::vector<Trial> wholeKeys;
  std::vector<int> toLookInto;
  for (const int code : ordinaryKeys(modifiers)) {
    if (std::ranges::any_of(all, [&](HotKeyModifiers held) { return isOurs(code, held); }))
      toLookInto.push_back(code);
    else
      wholeKeys.push_back({code, XCB_MOD_MASK_ANY, {}});
  }
  for (const Trial& trial : refused(connection, roots, wholeKeys))
    toLookInto.push_back(trial.keyCode);

  std::vector<Trial> chords;
  for (const int code : toLookInto)
    for (const HotKeyModifiers held : all)
      if (!isOurs(code, held))
        chords.push_back({code, *modifiers.mask(held), held});
  std::vector<SymbolicHotKey> grabbed;
  for (const Trial& trial : refused(connection, roots, chords))
    grabbed.push_back({true, trial.keyCode, trial.modifiers.toInt()});
  return grabbed;
}

}  // namespace platform
