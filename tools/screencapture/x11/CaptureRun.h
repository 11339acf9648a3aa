#pragma once

#include "platform/imaging/png/PngEncoder.h"
#include "tools/screencapture/selection/Hint.h"
#include "tools/screencapture/x11/Display.h"

#include <optional>

namespace screencapture {

/// Lets the user select a part of the screen: freezes it, shows it, follows the gestures to their end. Gives
/// the part as a PNG file; empty where the user cancelled, and also where something failed, which is then
/// said on standard error. The hint is in `language`.
[[nodiscard]] std::optional<platform::PngFile> captureInteractively(const Display& display,
                                                                    Language language);

}  // namespace screencapture
