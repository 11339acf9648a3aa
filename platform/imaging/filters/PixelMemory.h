#pragma once

#include <QImage>

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace platform {

/// Memory for many pixels, not set to anything, to be freed with std::free; null if there is none. Large
/// pieces lie in huge pages where the kernel grants them: to clear fresh pages one by one can take longer
/// than a filter does.
[[nodiscard]] void* allocatePixelMemory(std::size_t bytes);

struct FreePixelMemory {
  void operator()(void* memory) const { std::free(memory); }
};

/// A picture of that size with 4 bytes a pixel, in such memory and not set to anything, which is otherwise
/// like `source`. Null without memory.
[[nodiscard]] QImage blankLike(const QImage& source, const QSize& size);

template <typename Value>
using PixelMemory = std::unique_ptr<Value[], FreePixelMemory>;

}  // namespace platform
