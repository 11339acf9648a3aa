#include "platform/imaging/png/Channels.h"

#include <array>
#include <cstring>
#if defined(__x86_64__)
#include <tmmintrin.h>
#endif

namespace platform {
namespace {

using Byte = std::uint8_t;

#if defined(__x86_64__)
/// Four pixels of four bytes at a time. Returns how many pixels it packed: all but the last few, where whole
/// vectors would reach beyond the row.
[[gnu::target("ssse3")]] std::size_t packByShuffling(const Byte* from, const ChannelLayout& layout, Byte* to,
                                                     std::size_t size) {
  constexpr std::size_t atOnce = 4, vector = 16;
  const auto channels = static_cast<std::size_t>(layout.channels());
  std::array<Byte, vector> places;
  places.fill(0x80);  // nothing
  for (std::size_t pixel = 0; pixel < atOnce; ++pixel) {
    const std::array offsets{layout.red, layout.green, layout.blue, layout.alpha};
    for (std::size_t channel = 0; channel < channels; ++channel)
      places[pixel * channels + channel] = static_cast<Byte>(4 * pixel + static_cast<Byte>(offsets[channel]));
  }
  const __m128i order = _mm_loadu_si128(reinterpret_cast<const __m128i*>(places.data()));
  std::size_t done = 0;
  for (; done * channels + vector <= size; done += atOnce) {
    const __m128i pixels = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + 4 * done));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to + done * channels), _mm_shuffle_epi8(pixels, order));
  }
  return done;
}

bool canShuffle(Instructions instructions) {
  return instructions == Instructions::Widest && __builtin_cpu_supports("ssse3");
}
#else
std::size_t packByShuffling(const Byte*, const ChannelLayout&, Byte*, std::size_t) {
  return 0;
}

bool canShuffle(Instructions) {
  return false;
}
#endif

}  // namespace

void packChannels(const Byte* from, const ChannelLayout& layout, Byte* to, std::size_t size,
                  Instructions instructions) {
  const ChannelLayout own = layout;  // no byte written below changes it
  if (own == ChannelLayout::packed(own.alpha != ChannelLayout::none)) {
    std::memcpy(to, from, size);
    return;
  }
  const Byte* const end = to + size;
  if (own.bytesPerPixel == 4 && canShuffle(instructions)) {
    const std::size_t done = packByShuffling(from, own, to, size);
    from += 4 * done;
    to += done * static_cast<std::size_t>(own.channels());
  }
  for (; to != end; from += own.bytesPerPixel) {
    *to++ = from[own.red];
    *to++ = from[own.green];
    *to++ = from[own.blue];
    if (own.alpha != ChannelLayout::none)
      *to++ = from[own.alpha];
  }
}

}  // namespace platform
