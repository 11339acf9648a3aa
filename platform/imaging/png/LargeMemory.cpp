#include "platform/imaging/png/LargeMemory.h"

#include <limits>
#include <sys/mman.h>

namespace platform {

void* allocateLarge(std::size_t bytes) {
  constexpr std::size_t largePage = std::size_t{2} << 20;
  if (bytes < 4 * largePage)  // pieces that the heap is likely to hold on to and hand out again
    return std::malloc(bytes);
  if (bytes > std::numeric_limits<std::size_t>::max() - largePage)
    return nullptr;
  const std::size_t reserved = (bytes + largePage - 1) / largePage * largePage;
  void* memory = std::aligned_alloc(largePage, reserved);
  if (memory)
    madvise(memory, reserved, MADV_HUGEPAGE);  // only advice: without it the pages are small
  return memory;
}

}  // namespace platform
