#pragma once

#include <cstdlib>
#include <memory>
#include <string_view>
#include <xcb/xproto.h>

namespace platform {

/// The application's own connection to its X server; nullptr if it has none.
xcb_connection_t* x11Connection();

struct FreeReply {
  void operator()(void* reply) const { std::free(reply); }
};
/// A reply or an error as xcb hands it over.
template <class Type>
using XcbPointer = std::unique_ptr<Type, FreeReply>;

/// The number that the server knows a name by.
xcb_atom_t x11Atom(xcb_connection_t* connection, std::string_view name);
/// Whether some program owns the selection of that name; false without an X server.
[[nodiscard]] bool isX11SelectionOwned(std::string_view name);

/// An X keycode is the evdev code plus this, and has eight bits.
inline constexpr int x11KeycodeOffset = 8;
inline constexpr int x11MaximumKeycode = 255;

}  // namespace platform
