#include "platform/input/KeyboardGrab.h"

#include "platform/x11/X11Connection.h"

namespace platform {

KeyboardGrab::KeyboardGrab(quintptr window) {
  xcb_connection_t* const connection = x11Connection();
  if (!connection)
    return;
  constexpr uint8_t onlyToTheWindow = 0;
  const auto answer =
      xcbAsk(connection, xcb_grab_keyboard, xcb_grab_keyboard_reply, onlyToTheWindow,
             static_cast<xcb_window_t>(window), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  isHeld = answer && answer->status == XCB_GRAB_STATUS_SUCCESS;
}

KeyboardGrab::~KeyboardGrab() {
  xcb_connection_t* const connection = isHeld ? x11Connection() : nullptr;
  if (!connection)
    return;
  xcb_ungrab_keyboard(connection, XCB_CURRENT_TIME);
  xcb_flush(connection);
}

}  // namespace platform
