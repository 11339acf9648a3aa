#pragma once

#include "platform/desktop/Image.h"

namespace sorrel::SorrelIcon {

/// The status item's image: a full bottle, or an empty one where `count` is below 1. It keeps its own colours
/// on every bar. Never without an image: where the program's own are missing it is a symbol, and in the end a
/// blank. `size` is the side length in points.
[[nodiscard]] platform::Image image(qint64 count, int size);

}  // namespace sorrel::SorrelIcon
