#include "tools/screencapture/x11/Input.h"

#include "tools/screencapture/selection/KeySymbols.h"

// A field of this C header is named with a word that C++ keeps for itself.
#define explicit explicitField
#include <xcb/xkb.h>
#undef explicit

namespace screencapture {

namespace {

constexpr std::uint16_t pointerEvents =
    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;

Button buttonOf(xcb_button_t button) {
  switch (button) {
    case XCB_BUTTON_INDEX_1:
      return Button::Left;
    case XCB_BUTTON_INDEX_3:
      return Button::Right;
    default:
      return Button::Other;
  }
}

}  // namespace

Input::Input(const Display& used) : display(used) {
  meanings.fill(Key::Other);
}

void Input::prepare() {
  xcb_connection_t* const connection = display.connection();
  if (display.has(xcb_xkb_id)) {
    // A held key then sends presses alone. Without this each repeat would look like a key let go and pressed.
    xcb_discard_reply(connection, xcb_xkb_use_extension(connection, 1, 0).sequence);
    const auto flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    xcb_discard_reply(
        connection,
        xcb_xkb_per_client_flags(connection, XCB_XKB_ID_USE_CORE_KBD, flag, flag, 0, 0, 0).sequence);
  }
  const xcb_keycode_t first = display.setup().min_keycode;
  mappingRequest = xcb_get_keyboard_mapping(
      connection, first, static_cast<std::uint8_t>(display.setup().max_keycode - first + 1));
}

void Input::request() {
  xcb_connection_t* const connection = display.connection();
  if (!hasPointer)
    pointerRequest = xcb_grab_pointer(connection, 0, display.root(), pointerEvents, XCB_GRAB_MODE_ASYNC,
                                      XCB_GRAB_MODE_ASYNC, XCB_WINDOW_NONE, cursor, XCB_CURRENT_TIME);
  if (!hasKeyboard) {
    keyboardRequest = xcb_grab_keyboard(connection, 0, display.root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                                        XCB_GRAB_MODE_ASYNC);
    keysRequest = xcb_query_keymap(connection);
  }
}

bool Input::settle() {
  if (pointerRequest) {
    const auto answer = reply(display, xcb_grab_pointer_reply, *pointerRequest);
    hasPointer = answer && answer->status == XCB_GRAB_STATUS_SUCCESS;
    pointerRequest.reset();
  }
  if (keyboardRequest) {
    const auto answer = reply(display, xcb_grab_keyboard_reply, *keyboardRequest);
    const auto keys = reply(display, xcb_query_keymap_reply, keysRequest);
    hasKeyboard = answer && answer->status == XCB_GRAB_STATUS_SUCCESS;
    if (hasKeyboard && keys)
      heldKeys.startWith(keys->keys);
    keyboardRequest.reset();
  }
  return hasPointer && hasKeyboard;
}

void Input::release() {
  xcb_ungrab_pointer(display.connection(), XCB_CURRENT_TIME);
  xcb_ungrab_keyboard(display.connection(), XCB_CURRENT_TIME);
}

void Input::setCursor(xcb_cursor_t look) {
  cursor = look;
  if (hasPointer)
    xcb_change_active_pointer_grab(display.connection(), cursor, XCB_CURRENT_TIME, pointerEvents);
}

void Input::warpPointer(Point to) {
  const auto asked = xcb_warp_pointer(display.connection(), XCB_NONE, display.root(), 0, 0, 0, 0,
                                      static_cast<std::int16_t>(to.x), static_cast<std::int16_t>(to.y));
  warp = Warp{asked.sequence, to};
}

void Input::deliver(const xcb_generic_event_t& event, Gestures& to) {
  feed(event, to);
  if (const std::optional<Point> jump = to.takeJump())
    warpPointer(*jump);
}

void Input::feed(const xcb_generic_event_t& event, Gestures& to) {
  const auto& input = reinterpret_cast<const xcb_key_press_event_t&>(event);
  switch (event.response_type & 0x7f) {
    case XCB_MOTION_NOTIFY:
      return to.movePointer(pointOf(event));
    case XCB_BUTTON_PRESS:
      return to.pressButton(buttonOf(input.detail), pointOf(event));
    case XCB_BUTTON_RELEASE:
      return to.releaseButton(buttonOf(input.detail), pointOf(event));
    case XCB_KEY_PRESS:
      if (heldKeys.press(input.detail))
        to.pressKey(keyOf(input.detail));
      else if (heldKeys.isHeld(input.detail))
        to.repeatKey(keyOf(input.detail));
      return;
    case XCB_KEY_RELEASE:
      if (heldKeys.release(input.detail))
        to.releaseKey(keyOf(input.detail));
      return;
    default:
      return;
  }
}

Point Input::pointOf(const xcb_generic_event_t& event) {
  // An event bears the number of our last request that the server had done by then; the numbers wrap around.
  if (warp && static_cast<std::int32_t>(event.full_sequence - warp->sequence) < 0)
    return warp->target;
  // The events of keys, buttons and motion have one shape.
  const auto& input = reinterpret_cast<const xcb_key_press_event_t&>(event);
  return {input.root_x, input.root_y};
}

Key Input::keyOf(xcb_keycode_t code) {
  if (mappingRequest) {
    const auto mapping = reply(display, xcb_get_keyboard_mapping_reply, *mappingRequest);
    mappingRequest.reset();
    const int perKey = mapping ? mapping->keysyms_per_keycode : 0;
    auto meaning = meanings.begin() + display.setup().min_keycode;
    for (int at = 0; perKey > 0 && at < xcb_get_keyboard_mapping_keysyms_length(mapping.get()); at += perKey)
      *meaning++ = keyOfSymbol(xcb_get_keyboard_mapping_keysyms(mapping.get())[at]);
  }
  return meanings[code];
}

}  // namespace screencapture
