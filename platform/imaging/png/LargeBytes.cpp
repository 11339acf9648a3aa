#include "platform/imaging/png/LargeBytes.h"

#include <limits>
#include <sys/mman.h>

namespace platform {

LargeBytes allocateLarge(std::size_t size) {
  constexpr std::size_t largePage = std::size_t{2} << 20;
  if (size < largePage)
    return LargeBytes(static_cast<std::uint8_t*>(std::malloc(size)));
  if (size > std::numeric_limits<std::size_t>::max() - largePage)
    return nullptr;
  const std::size_t rounded = (size + largePage - 1) / largePage * largePage;
  LargeBytes bytes(static_cast<std::uint8_t*>(std::aligned_alloc(largePage, rounded)));
  if (bytes)
    madvise(bytes.get(), rounded, MADV_HUGEPAGE);  // a hint, without which all works as well
  return bytes;
}

}  // namespace platform
