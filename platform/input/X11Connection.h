#pragma once

#include <cstdlib>
#include <memory>

struct xcb_connection_t;

namespace platform {

/// The application's own connection to its X server; nullptr if it has none.
xcb_connection_t* x11Connection();

struct FreeReply {
  void operator()(void* reply) const { std::free(reply); }
};
/// A reply or an error as xcb hands it over.
template <class Type>
using XcbPointer = std::unique_ptr<Type, FreeReply>;

/// An X keycode is the evdev code plus this, and has eight bits.
inline constexpr int x11KeycodeOffset = 8;
inline constexpr int x11MaximumKeycode = 255;

}  // namespace platform
