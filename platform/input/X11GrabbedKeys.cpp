#include "platform/input/X11GrabbedKeys.h"

#include "platform/input/KeyCodes.h"
#include "platform/system/Xcb.h"

#include <algorithm>
#include <xcb/xinput.h>

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
  uint32_t mask = 0;
  HotKeyModifiers modifiers;
};

/// The two ways to grab a key, which know nothing of each other. Each grab is given back at once, so that the
/// server has no longer list of them to search.
struct CoreGrabs {
  using Cookie = xcb_void_cookie_t;
  static constexpr uint32_t anyModifier = XCB_MOD_MASK_ANY;

  static Cookie begin(xcb_connection_t* connection, xcb_window_t root, xcb_keycode_t key, uint32_t mask) {
    const auto modifiers = static_cast<uint16_t>(mask);
    const Cookie cookie =
        xcb_grab_key_checked(connection, 0, root, modifiers, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_ungrab_key(connection, key, root, modifiers);
    return cookie;
  }
  static bool isRefused(xcb_connection_t* connection, Cookie cookie) {
    return XcbPointer<xcb_generic_error_t>(xcb_request_check(connection, cookie)) != nullptr;
  }
};
struct XinputGrabs {
  using Cookie = xcb_input_xi_passive_grab_device_cookie_t;
  static constexpr uint32_t anyModifier = XCB_INPUT_MODIFIER_MASK_ANY;

  static Cookie begin(xcb_connection_t* connection, xcb_window_t root, xcb_keycode_t key, uint32_t mask) {
    const uint32_t events = XCB_INPUT_XI_EVENT_MASK_KEY_PRESS;
    const Cookie cookie = xcb_input_xi_passive_grab_device(
        connection, XCB_CURRENT_TIME, root, XCB_CURSOR_NONE, key, XCB_INPUT_DEVICE_ALL_MASTER, 1, 1,
        XCB_INPUT_GRAB_TYPE_KEYCODE, XCB_INPUT_GRAB_MODE_22_ASYNC, XCB_GRAB_MODE_ASYNC,
        XCB_INPUT_GRAB_OWNER_NO_OWNER, &events, &mask);
    xcb_input_xi_passive_ungrab_device(connection, root, key, XCB_INPUT_DEVICE_ALL_MASTER, 1,
                                       XCB_INPUT_GRAB_TYPE_KEYCODE, &mask);
    return cookie;
  }
  /// The answer lists what was refused.
  static bool isRefused(xcb_connection_t* connection, Cookie cookie) {
    const auto answer = xcbReply(connection, xcb_input_xi_passive_grab_device_reply, cookie);
    return answer && answer->num_modifiers > 0;
  }
};

/// Tries keys out on an X server.
template <typename Grabs>
class Trials {
 public:
  Trials(xcb_connection_t* connection, std::span<const xcb_window_t> roots)
      : connection(connection), roots(roots) {}

  /// Those that the server refuses because others have the key. All requests go out before the first answer
  /// is waited for.
  std::vector<Trial> refused(const std::vector<Trial>& trials) const {
    std::vector<typename Grabs::Cookie> cookies;
    cookies.reserve(trials.size() * roots.size());
    for (const Trial& trial : trials)
      for (const xcb_window_t root : roots) {
        const auto key = static_cast<xcb_keycode_t>(*evdevCode(trial.keyCode) + x11KeycodeOffset);
        cookies.push_back(Grabs::begin(connection, root, key, trial.mask));
      }
    std::vector<Trial> found;
    auto cookie = cookies.begin();
    for (const Trial& trial : trials) {
      int refusals = 0;
      for (size_t root = 0; root < roots.size(); ++root)
        refusals += Grabs::isRefused(connection, *cookie++);
      if (refusals > 0)
        found.push_back(trial);
    }
    return found;
  }

  /// All that others have. With any modifiers first: most keys are free, and a trial takes as long as the
  /// server's list of grabs. One of these would take away what we have on the key ourselves.
  template <typename IsOurs>
  std::vector<Trial> allRefused(const X11Modifiers& modifiers, IsOurs isOurs) const {
    const std::vector<HotKeyModifiers> all = combinations(modifiers);
    std::vector<Trial> wholeKeys;
    std::vector<int> toLookInto;
    for (const int code : ordinaryKeys(modifiers)) {
      if (std::ranges::any_of(all, [&](HotKeyModifiers held) { return isOurs(code, held); }))
        toLookInto.push_back(code);
      else
        wholeKeys.push_back({code, Grabs::anyModifier, {}});
    }
    for (const Trial& trial : refused(wholeKeys))
      toLookInto.push_back(trial.keyCode);
    std::vector<Trial> chords;
    for (const int code : toLookInto)
      for (const HotKeyModifiers held : all)
        if (!isOurs(code, held))
          chords.push_back({code, *modifiers.mask(held), held});
    return refused(chords);
  }

 private:
  xcb_connection_t* const connection;
  const std::span<const xcb_window_t> roots;
};

void add(const std::vector<Trial>& trials, std::vector<SymbolicHotKey>& grabbed) {
  for (const Trial& trial : trials) {
    const SymbolicHotKey hotKey{true, trial.keyCode, trial.modifiers.toInt()};
    if (std::ranges::find(grabbed, hotKey) == grabbed.end())
      grabbed.push_back(hotKey);
  }
}

}  // namespace

std::vector<SymbolicHotKey> keysGrabbedByOthers(xcb_connection_t* connection,
                                                std::span<const xcb_window_t> roots,
                                                const X11Modifiers& modifiers,
                                                const std::function<bool(int, HotKeyModifiers)>& isOurs) {
  std::vector<SymbolicHotKey> grabbed;
  add(Trials<CoreGrabs>(connection, roots).allRefused(modifiers, isOurs), grabbed);
  if (const auto* const xinput = xcb_get_extension_data(connection, &xcb_input_id);
      xinput && xinput->present) {
    const auto none = [](int, HotKeyModifiers) { return false; };  // of ours are of that kind
    add(Trials<XinputGrabs>(connection, roots).allRefused(modifiers, none), grabbed);
  }
  return grabbed;
}

}  // namespace platform
