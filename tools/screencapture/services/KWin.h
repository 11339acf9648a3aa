#pragma once

#include "tools/screencapture/services/AnswerFile.h"
#include "tools/screencapture/services/Bus.h"

#include <span>

namespace screencapture {

/// Adds KWin's own pictures of these outputs, in their own pixels and without the pointer. False, and no
/// picture is added, where KWin isn't there or doesn't give them to us: it looks for the desktop file whose
/// Exec is this program, and there for the interface's name.
[[nodiscard]] bool addPicturesOfKWin(sd_bus* bus, std::span<const char* const> outputs, AnswerFile& answer);

}  // namespace screencapture
