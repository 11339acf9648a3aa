#pragma once

#include "platform/system/Descriptor.h"

#include <optional>

namespace screencapture::wayland {

/// The right to freeze the session's screen, until it is closed or the program ends; absent while another
/// process has it. Where there is no place for a lock everybody has it: two selections are better than none.
/// On X11 a hot key can't come while the screen is frozen. Here it can, and the second selection would show
/// the first one as the screen.
[[nodiscard]] std::optional<platform::Descriptor> takeTurn();

}  // namespace screencapture::wayland
