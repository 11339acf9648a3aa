#pragma once

#include "platform/desktop/Image.h"

namespace sorrel::SorrelIcon {

/// The status item's image: a full bottle, or an empty one where `count` is below 1. It keeps its own colours
/// on every bar. Never without an image: where the program's own are missing it is a symbol, and in the end a
/// blank. `size` is the side length in points.
[[nodiscard]] platform::Image image(qint64 count, int size);

/// What the status item says to those who rest the pointer on it, in the interface language.
[[nodiscard]] QString toolTip(qint64 count);

}  // namespace sorrel::SorrelIcon
