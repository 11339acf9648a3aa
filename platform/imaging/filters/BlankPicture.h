#pragma once

#include <QImage>

namespace platform {

/// A picture of that size with 4 bytes a pixel, in large memory and not set to anything, which is otherwise
/// like `source`. Null without memory.
[[nodiscard]] QImage blankLike(const QImage& source, const QSize& size);

}  // namespace platform
