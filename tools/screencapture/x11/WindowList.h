#pragma once

#include "tools/screencapture/selection/Geometry.h"
#include "tools/screencapture/x11/Display.h"

#include <vector>

namespace screencapture {

/// The windows that the user sees as such at this moment, the topmost first: each as its window manager
/// framed it, less the invisible margin that some programs draw their shadow into, cut off at the screen's
/// edges. Menus and tips are not among them. Without a window manager, the programs' own windows.
[[nodiscard]] std::vector<Rectangle> shownWindows(const Display& display);

}  // namespace screencapture
