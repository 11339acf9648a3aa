#pragma once

#include "platform/imaging/png/Effort.h"

#include <cstddef>
#include <cstdint>

namespace platform {

/// Where the bytes of a pixel's 8-bit channels lie, counted from the pixel's first byte.
struct ChannelLayout {
  static constexpr int none = -1;

  int bytesPerPixel = 4;
  int red = 0;
  int green = 1;
  int blue = 2;
  int alpha = none;  // straight, not multiplied into the colours; none makes the picture opaque

  bool operator==(const ChannelLayout&) const = default;

  [[nodiscard]] int channels() const { return alpha == none ? 3 : 4; }
  /// Red, green, blue, where there is one alpha, and nothing else.
  [[nodiscard]] static constexpr ChannelLayout packed(bool hasAlpha) {
    return hasAlpha ? ChannelLayout{4, 0, 1, 2, 3} : ChannelLayout{3, 0, 1, 2, none};
  }
};

/// Packs the channels of a row of pixels: `size` bytes of them.
void packChannels(const std::uint8_t* from, const ChannelLayout& layout, std::uint8_t* to, std::size_t size,
                  Instructions instructions);

}  // namespace platform
