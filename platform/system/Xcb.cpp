#include "platform/system/Xcb.h"

namespace platform {

xcb_intern_atom_cookie_t askForAtom(xcb_connection_t* connection, std::string_view name) {
  return xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
}

xcb_atom_t atomFrom(xcb_connection_t* connection, xcb_intern_atom_cookie_t asked) {
  const auto answer = xcbReply(connection, xcb_intern_atom_reply, asked);
  return answer ? answer->atom : xcb_atom_t{XCB_ATOM_NONE};
}

xcb_atom_t x11Atom(xcb_connection_t* connection, std::string_view name) {
  return atomFrom(connection, askForAtom(connection, name));
}

}  // namespace platform
