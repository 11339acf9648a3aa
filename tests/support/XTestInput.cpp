#include "tests/support/XTestInput.h"

#include "platform/system/Xcb.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <xcb/xtest.h>

namespace testing_support {

namespace {

constexpr int pointerButtons = 5;
constexpr std::chrono::seconds longestWait(20);

}  // namespace

XTestInput::XTestInput(const std::string& display) : connection(xcb_connect(display.c_str(), nullptr)) {
  const xcb_query_extension_reply_t* extension =
      xcb_connection_has_error(connection) ? nullptr : xcb_get_extension_data(connection, &xcb_test_id);
  if (!extension || !extension->present) {
    xcb_disconnect(connection);
    throw std::runtime_error("no XTEST on display " + display);
  }
}

XTestInput::~XTestInput() {
  releaseAll();
  xcb_disconnect(connection);
}

void XTestInput::pressKey(int evdevCode) {
  send(XCB_KEY_PRESS, evdevCode + platform::x11KeycodeOffset, 0, 0);
}
void XTestInput::releaseKey(int evdevCode) {
  send(XCB_KEY_RELEASE, evdevCode + platform::x11KeycodeOffset, 0, 0);
}
void XTestInput::tapKey(int evdevCode) {
  pressKey(evdevCode);
  releaseKey(evdevCode);
}

/// While a window manager looks at a press, the server puts by what follows, and of many places only the
/// last.
void XTestInput::moveTo(int x, int y) {
  send(XCB_MOTION_NOTIFY, 0, x, y);
  const auto deadline = std::chrono::steady_clock::now() + longestWait;
  while (!isPointerAt(x, y)) {
    if (std::chrono::steady_clock::now() > deadline)
      throw std::runtime_error("waited in vain until the pointer is in its place");
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
}
void XTestInput::pressButton(int button) {
  send(XCB_BUTTON_PRESS, button, 0, 0);
}
void XTestInput::releaseButton(int button) {
  send(XCB_BUTTON_RELEASE, button, 0, 0);
}
void XTestInput::clickButton(int button) {
  pressButton(button);
  releaseButton(button);
}

void XTestInput::doubleClick(int button) {
  for (const int type : {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE, XCB_BUTTON_PRESS})
    xcb_test_fake_input(connection, static_cast<uint8_t>(type), static_cast<uint8_t>(button),
                        XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
  releaseButton(button);
}

void XTestInput::send(int type, int detail, int x, int y) {
  xcb_test_fake_input(connection, static_cast<uint8_t>(type), static_cast<uint8_t>(detail), XCB_CURRENT_TIME,
                      XCB_WINDOW_NONE, static_cast<int16_t>(x), static_cast<int16_t>(y), 0);
  // Any request with a reply is answered only after the input before it was dealt with.
  (void)platform::xcbAsk(connection, xcb_get_input_focus, xcb_get_input_focus_reply);
}

bool XTestInput::isPointerAt(int x, int y) const {
  const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  const auto pointer = platform::xcbAsk(connection, xcb_query_pointer, xcb_query_pointer_reply, screen->root);
  return pointer && pointer->root_x == std::clamp(x, 0, screen->width_in_pixels - 1) &&
         pointer->root_y == std::clamp(y, 0, screen->height_in_pixels - 1);
}

void XTestInput::releaseAll() {
  const auto keys = platform::xcbAsk(connection, xcb_query_keymap, xcb_query_keymap_reply);
  if (!keys)
    return;
  for (int code = platform::x11KeycodeOffset; code < 256; ++code) {
    if (keys->keys[code / 8] & (1 << (code % 8)))
      releaseKey(code - platform::x11KeycodeOffset);
  }
  for (int button = 1; button <= pointerButtons; ++button)
    releaseButton(button);
}

}  // namespace testing_support
