#include "platform/x11/X11Connection.h"

#include <QGuiApplication>

namespace platform {

xcb_connection_t* x11Connection() {
  // Some programs have an application without a display.
  const auto* const application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
  const auto* const x11 =
      application ? application->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
  return x11 ? x11->connection() : nullptr;
}

bool isX11SelectionOwned(std::string_view name) {
  xcb_connection_t* const connection = x11Connection();
  if (!connection)
    return false;
  const auto reply =
      xcbAsk(connection, xcb_get_selection_owner, xcb_get_selection_owner_reply, x11Atom(connection, name));
  return reply && reply->owner != XCB_WINDOW_NONE;
}

}  // namespace platform
