#pragma once

#include "platform/system/Descriptor.h"

namespace screencapture::wayland {

/// The right to freeze the session's screen, until it is closed or the program ends; not open while another
/// process has it. On X11 a hot key can't come while the screen is frozen. Here it can, and the second
/// selection would show the first one as the screen.
[[nodiscard]] platform::Descriptor takeTurn();

}  // namespace screencapture::wayland
