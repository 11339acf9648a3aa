#pragma once

#include <cstdlib>
#include <memory>
#include <string_view>
#include <type_traits>
#include <xcb/xcb.h>

namespace platform {

struct FreeReply {
  void operator()(void* reply) const { std::free(reply); }
};
/// A reply, an event or an error as xcb hands it over.
template <class Type>
using XcbPointer = std::unique_ptr<Type, FreeReply>;

struct Disconnect {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
/// A connection of one's own to an X server.
using XcbConnection = std::unique_ptr<xcb_connection_t, Disconnect>;

/// Waits for the answer to a request that was sent before, for example
/// `xcbReply(connection, xcb_get_geometry_reply, cookie)`; null where the request failed.
template <typename Type, typename Cookie>
[[nodiscard]] XcbPointer<Type> xcbReply(xcb_connection_t* connection,
                                        Type* (*wait)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                                        Cookie cookie) {
  xcb_generic_error_t* error = nullptr;
  XcbPointer<Type> answer(wait(connection, cookie, &error));
  std::free(error);
  return answer;
}

/// Sends a request and waits for its answer, for example
/// `xcbAsk(connection, xcb_get_geometry, xcb_get_geometry_reply, window)`; null where the request failed.
template <typename Type, typename Cookie, typename... Arguments>
[[nodiscard]] XcbPointer<Type> xcbAsk(xcb_connection_t* connection,
                                      Cookie (*request)(xcb_connection_t*, Arguments...),
                                      Type* (*wait)(xcb_connection_t*, Cookie, xcb_generic_error_t**),
                                      std::type_identity_t<Arguments>... arguments) {
  return xcbReply(connection, wait, request(connection, arguments...));
}

/// The number that the server knows a name by: first ask, then wait for it; none on failure.
[[nodiscard]] xcb_intern_atom_cookie_t askForAtom(xcb_connection_t* connection, std::string_view name);
[[nodiscard]] xcb_atom_t atomFrom(xcb_connection_t* connection, xcb_intern_atom_cookie_t asked);
/// Both at once.
[[nodiscard]] xcb_atom_t x11Atom(xcb_connection_t* connection, std::string_view name);

/// An X keycode is the evdev code plus this, and has eight bits.
inline constexpr int x11KeycodeOffset = 8;
inline constexpr int x11MaximumKeycode = 255;

}  // namespace platform
