#include "platform/x11/X11Connection.h"

#include <QGuiApplication>

namespace platform {

xcb_connection_t* x11Connection() {
  const auto* const application = qGuiApp;
  const auto* const x11 =
      application ? application->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
  return x11 ? x11->connection() : nullptr;
}

xcb_atom_t x11Atom(xcb_connection_t* connection, std::string_view name) {
  const auto cookie = xcb_intern_atom(connection, false, static_cast<uint16_t>(name.size()), name.data());
  const XcbPointer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

bool isX11SelectionOwned(std::string_view name) {
  xcb_connection_t* const connection = x11Connection();
  if (!connection)
    return false;
  const auto cookie = xcb_get_selection_owner(connection, x11Atom(connection, name));
  const XcbPointer<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(connection, cookie, nullptr));
  return reply && reply->owner != XCB_WINDOW_NONE;
}

}  // namespace platform
