#pragma once

#include "platform/imaging/png/PngEncoder.h"
#include "tools/screencapture/selection/Hint.h"
#include "tools/screencapture/wayland/Display.h"

#include <cstdint>
#include <optional>

namespace screencapture::wayland {

/// Lets the user select a part of the screen: freezes it, shows it, follows the gestures to their end. Gives
/// the part as a PNG file; empty where the user cancelled, and also where something failed, which is then
/// said on standard error. The hint is in `language`.
[[nodiscard]] std::optional<platform::PngFile> captureInteractively(Display& display, Language language);

/// Lets the user pick the color of one pixel, 0xRRGGBB; empty as above.
[[nodiscard]] std::optional<std::uint32_t> pickColor(Display& display);

}  // namespace screencapture::wayland
