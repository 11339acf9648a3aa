#pragma once

#include "platform/input/SymbolicHotKeys.h"
#include "platform/input/X11Modifiers.h"

#include <functional>
#include <span>

namespace platform {

/// The keys with a name, with whatever modifiers, that other programs have grabbed on one of these root
/// windows, found by trying. `isOurs` tells the keys that this connection has grabbed itself, which stay so.
/// A press that comes in between may begin a grab of this connection's, to be dealt with like those of its
/// own keys.
[[nodiscard]] std::vector<SymbolicHotKey> keysGrabbedByOthers(
    xcb_connection_t* connection, std::span<const xcb_window_t> roots, const X11Modifiers& modifiers,
    const std::function<bool(int keyCode, HotKeyModifiers modifiers)>& isOurs);

}  // namespace platform
