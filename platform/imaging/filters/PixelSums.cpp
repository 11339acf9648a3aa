#include "platform/imaging/filters/PixelSums.h"

#include "platform/imaging/png/Vectorised.h"

namespace platform {
namespace {

// Four rows at once: their sum fits 16 bits, and the 32-bit sums are read and written once for the four.
void addFourRowsLoop(const std::uint8_t* bytes, std::size_t stride, std::uint32_t* __restrict sums,
                     std::size_t channels) {
  const std::uint8_t* second = bytes + stride;
  const std::uint8_t* third = second + stride;
  const std::uint8_t* fourth = third + stride;
  for (std::size_t i = 0; i < channels; ++i)
    sums[i] += static_cast<std::uint16_t>(bytes[i] + second[i] + third[i] + fourth[i]);
}

void addRowLoop(const std::uint8_t* bytes, std::uint32_t* __restrict sums, std::size_t channels) {
  for (std::size_t i = 0; i < channels; ++i)
    sums[i] += bytes[i];
}

}  // namespace

void addRows(const std::uint8_t* bytes, std::size_t stride, std::size_t rows, std::uint32_t* sums,
             std::size_t channels, Instructions instructions) {
  for (; rows >= 4; rows -= 4, bytes += 4 * stride)
    vectorised<addFourRowsLoop>(instructions, bytes, stride, sums, channels);
  for (; rows > 0; --rows, bytes += stride)
    vectorised<addRowLoop>(instructions, bytes, sums, channels);
}

}  // namespace platform
