#include "platform/desktop/panel/PanelHints.h"

#include "platform/desktop/Screens.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Desktop.h"

#include <QWidget>

namespace platform {
namespace {

xcb_window_t idOf(const QWidget& window) {
  return static_cast<xcb_window_t>(window.internalWinId());
}

}  // namespace

void tellWindowManager(const QWidget& window, int margin) {
  xcb_connection_t* const connection = x11Connection();
  if (!connection)
    return;
  // The toolkit adds its own to these when it shows the window.
  const xcb_atom_t states[] = {x11Atom(connection, "_NET_WM_STATE_SKIP_TASKBAR"),
                               x11Atom(connection, "_NET_WM_STATE_SKIP_PAGER")};
  if (!window.isVisible())
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, idOf(window), x11Atom(connection, "_NET_WM_STATE"),
                        XCB_ATOM_ATOM, 32, 2, states);
  const auto side = static_cast<quint32>(qRound(margin * window.devicePixelRatioF()));
  const quint32 extents[] = {side, side, side, side};
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, idOf(window),
                      x11Atom(connection, "_GTK_FRAME_EXTENTS"), XCB_ATOM_CARDINAL, 32, 4, extents);
}

std::optional<QPointF> placeOf(const QWidget& window) {
  const auto frame = x11FrameOf(idOf(window));
  return frame ? std::optional(fromDevicePixels(*frame).topLeft()) : std::nullopt;
}

bool hasKeyboard(const QWidget& window) {
  xcb_connection_t* const connection = x11Connection();
  if (!connection)
    return false;
  const auto focus = xcbAsk(connection, xcb_get_input_focus, xcb_get_input_focus_reply);
  return focus && focus->focus == idOf(window);
}

KeyboardNews keyboardNews(const void* message) {
  const auto* const event = static_cast<const xcb_focus_in_event_t*>(message);
  const int type = event->response_type & 0x7f;
  if ((type != XCB_FOCUS_IN && type != XCB_FOCUS_OUT) || event->detail == XCB_NOTIFY_DETAIL_POINTER)
    return KeyboardNews::None;
  if (type == XCB_FOCUS_IN)
    return event->mode == XCB_NOTIFY_MODE_UNGRAB ? KeyboardNews::GivenBack : KeyboardNews::None;
  switch (event->mode) {
    case XCB_NOTIFY_MODE_GRAB:
      return KeyboardNews::Held;
    case XCB_NOTIFY_MODE_WHILE_GRABBED:
      return KeyboardNews::Lost;
    default:
      return KeyboardNews::None;
  }
}

}  // namespace platform
