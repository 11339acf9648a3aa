#pragma once

#include "tools/screencapture/selection/Use.h"
#include "tools/screencapture/wayland/Stage.h"

namespace screencapture::wayland {

/// Brings what the user does to a use of the tool on its stage. Returns when the gestures have come to their
/// end, the connection is lost, or the compositor has taken the overlay away.
void perform(Stage& stage, Use& use);

}  // namespace screencapture::wayland
