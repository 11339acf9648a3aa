#pragma once

#include "platform/wayland/WaylandGlobals.h"

class QScreen;
class QWindow;

namespace platform {

/// The application's own connection to its compositor; nullptr if it has none.
[[nodiscard]] wl_display* waylandDisplay();

/// What the compositor offered at the first call; nullptr without one.
[[nodiscard]] const WaylandGlobals* waylandGlobals();

/// The toolkit's own objects; nullptr where there is none (yet): a window has a surface only while it is
/// shown or about to be.
[[nodiscard]] wl_surface* waylandSurface(const QWindow& window);
[[nodiscard]] wl_output* waylandOutput(const QScreen& screen);
[[nodiscard]] wl_seat* waylandSeat();
[[nodiscard]] wl_compositor* waylandCompositor();

/// What the compositor's seat has now, by the bits of WL_SEAT_CAPABILITY_…; asks and waits for the answer.
/// Who asks a seat for a keyboard or a pointer that it never had loses the connection.
[[nodiscard]] std::uint32_t waylandSeatCapabilities();

/// Of the last press of a key or button that reached this program.
[[nodiscard]] std::uint32_t waylandInputSerial();

}  // namespace platform
