#pragma once

#include "tools/screencapture/x11/Display.h"

#include <cstdint>
#include <optional>

namespace screencapture {

/// Lets the user pick a pixel of the screen: freezes it, shows a magnifier beside the pointer, follows the
/// gestures to their end. Gives the pixel's color as 0xRRGGBB; empty where the user cancelled, and also where
/// something failed, which is then said on standard error.
[[nodiscard]] std::optional<std::uint32_t> pickColor(const Display& display);

}  // namespace screencapture
