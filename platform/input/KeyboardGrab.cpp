#include "platform/input/KeyboardGrab.h"

#include "platform/input/wayland/ShortcutsInhibitor.h"
#include "platform/wayland/WaylandConnection.h"
#include "platform/x11/X11Connection.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

namespace platform {
namespace {

/// nullptr where no window of this program that is on the screen has that number.
const QWindow* windowOf(quintptr number) {
  const QWindowList windows = QGuiApplication::allWindows();
  const auto found = std::ranges::find_if(
      windows, [number](const QWindow* window) { return window->handle() && window->winId() == number; });
  return found == windows.end() ? nullptr : *found;
}

}  // namespace

KeyboardGrab::KeyboardGrab(quintptr window) {
  if (waylandDisplay()) {
    if (const QWindow* const found = windowOf(window))
      inhibitor = std::make_unique<ShortcutsInhibitor>(*found);
    return;
  }
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
