#pragma once

namespace screencapture {

/// Connects to the Wayland compositor that the environment names, and leaves the connection to the program
/// that takes this one's place, in the variable that Wayland's library looks at. False where there is none.
[[nodiscard]] bool handOverWaylandSocket();

}  // namespace screencapture
