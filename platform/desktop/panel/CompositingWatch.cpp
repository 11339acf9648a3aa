#include "platform/desktop/panel/CompositingWatch.h"

#include "platform/x11/X11Connection.h"

#include <QGuiApplication>

#include <xcb/xfixes.h>

namespace platform {

CompositingWatch::CompositingWatch(std::function<void()> handler) : onChange(std::move(handler)) {
  xcb_connection_t* const connection = x11Connection();
  const auto* const extension = connection ? xcb_get_extension_data(connection, &xcb_xfixes_id) : nullptr;
  if (!extension || !extension->present)
    return;
  firstEvent = extension->first_event;
  manager = x11Atom(connection, "_NET_WM_CM_S0");
  const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  window = xcb_generate_id(connection);
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  xcb_xfixes_select_selection_input(connection, window, manager,
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  qGuiApp->installNativeEventFilter(this);
}

CompositingWatch::~CompositingWatch() {
  if (!window)
    return;
  qGuiApp->removeNativeEventFilter(this);
  if (xcb_connection_t* const connection = x11Connection())
    xcb_destroy_window(connection, window);
}

bool CompositingWatch::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
  if (eventType != "xcb_generic_event_t")
    return false;
  const auto* const event = static_cast<const xcb_xfixes_selection_notify_event_t*>(message);
  if ((event->response_type & 0x7f) == firstEvent + XCB_XFIXES_SELECTION_NOTIFY && event->window == window)
    onChange();
  return false;
}

}  // namespace platform
