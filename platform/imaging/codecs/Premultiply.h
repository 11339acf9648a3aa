#pragma once

#include <cstddef>
#include <cstdint>

namespace platform {

/// RGBA with 8 bits a channel, in place, each result rounded to the nearest. Premultiplying what was
/// unpremultiplied gives the same bytes again.
inline void premultiply(std::uint8_t* pixels, std::size_t count) {
  for (std::uint8_t* const end = pixels + 4 * count; pixels != end; pixels += 4) {
    const unsigned alpha = pixels[3];
    if (alpha == 255)
      continue;
    for (int channel = 0; channel < 3; ++channel) {
      const unsigned product = pixels[channel] * alpha + 128;
      pixels[channel] = static_cast<std::uint8_t>((product + (product >> 8)) >> 8);
    }
  }
}

/// A channel above its alpha counts as equal to it.
inline void unpremultiply(std::uint8_t* pixels, std::size_t count) {
  for (std::uint8_t* const end = pixels + 4 * count; pixels != end; pixels += 4) {
    const unsigned alpha = pixels[3];
    if (alpha == 255)
      continue;
    for (int channel = 0; channel < 3; ++channel) {
      const unsigned value = pixels[channel];
      pixels[channel] = alpha == 0       ? std::uint8_t{0}
                        : value >= alpha ? std::uint8_t{255}
                                         : static_cast<std::uint8_t>((value * 255 + alpha / 2) / alpha);
    }
  }
}

}  // namespace platform
