#include "platform/imaging/png/PngChunks.h"

#include <cstring>
#include <isa-l/crc.h>

namespace platform {

void putNumber(std::uint8_t* to, std::size_t number) {
  for (int shift = 24; shift >= 0; shift -= 8)
    *to++ = static_cast<std::uint8_t>(number >> shift);
}

std::uint8_t* closeChunk(std::uint8_t* chunk, std::string_view type, std::size_t size) {
  putNumber(chunk, size);
  std::memcpy(chunk + 4, type.data(), 4);
  putNumber(chunk + 8 + size, crc32_gzip_refl(0, chunk + 4, size + 4));
  return chunk + chunkFrame + size;
}

}  // namespace platform
