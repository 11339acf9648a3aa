#include "platform/imaging/filters/PixelMemory.h"

#include <QColorSpace>

#include <cstdlib>
#include <sys/mman.h>

namespace platform {

void* allocatePixelMemory(std::size_t bytes) {
  constexpr std::size_t hugePage = std::size_t{2} << 20;
  if (bytes < 4 * hugePage)  // pieces that the heap is likely to hold on to and hand out again
    return std::malloc(bytes);
  const std::size_t reserved = (bytes + hugePage - 1) / hugePage * hugePage;
  void* memory = std::aligned_alloc(hugePage, reserved);
  if (memory)
    madvise(memory, reserved, MADV_HUGEPAGE);  // only advice: without it the pages are small
  return memory;
}

QImage blankLike(const QImage& source, const QSize& size) {
  const std::size_t stride = static_cast<std::size_t>(size.width()) * 4;
  void* memory = allocatePixelMemory(stride * static_cast<std::size_t>(size.height()));
  if (!memory)
    return {};
  QImage result(static_cast<uchar*>(memory), size.width(), size.height(), static_cast<qsizetype>(stride),
                source.format(), std::free, memory);
  result.setDevicePixelRatio(source.devicePixelRatio());
  result.setColorSpace(source.colorSpace());
  return result;
}

}  // namespace platform
