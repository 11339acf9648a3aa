#pragma once

#include "tools/screencapture/selection/Gestures.h"
#include "tools/screencapture/selection/HeldKeys.h"
#include "tools/screencapture/x11/Display.h"

#include <array>
#include <optional>

namespace screencapture {

/// Takes the keyboard and the pointer from all other programs, and turns their events into gestures. Released
/// when the connection ends, at the latest.
///
/// Another program may hold either at the start: the one whose hot key started us keeps the keyboard until
/// the key comes up. So each is asked for again until it is granted, and the pointer works before the
/// keyboard.
class Input {
 public:
  explicit Input(const Display& display);

  /// Sends, without waiting, what has to be asked before the first request(); needs the XKB extension's
  /// answer.
  void prepare();
  /// Asks for what is not granted yet, without waiting.
  void request();
  /// Waits for the answers to request(); true once all is granted.
  bool settle();
  void release();

  /// The pointer's look from now on.
  void setCursor(xcb_cursor_t cursor);

  /// Feeds them with an event, and puts the pointer where they want it; what the hand does until the server
  /// has done so counts as done there. Ignores the events that are not input.
  void deliver(const xcb_generic_event_t& event, Gestures& to);

 private:
  struct Warp {
    unsigned sequence;  // of the request
    Point target;
  };
  void feed(const xcb_generic_event_t& event, Gestures& to);
  void warpPointer(Point to);
  [[nodiscard]] Key keyOf(xcb_keycode_t code);
  [[nodiscard]] Point pointOf(const xcb_generic_event_t& event);

  const Display& display;
  HeldKeys heldKeys;
  bool hasPointer = false;
  bool hasKeyboard = false;
  xcb_cursor_t cursor = XCB_CURSOR_NONE;
  std::optional<xcb_grab_pointer_cookie_t> pointerRequest;
  std::optional<xcb_grab_keyboard_cookie_t> keyboardRequest;
  xcb_query_keymap_cookie_t keysRequest{};
  std::optional<xcb_get_keyboard_mapping_cookie_t> mappingRequest;
  std::array<Key, 256> meanings{};
  std::optional<Warp> warp;
};

}  // namespace screencapture
