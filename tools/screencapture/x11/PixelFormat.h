#pragma once

#include "platform/imaging/png/PngEncoder.h"
#include "tools/screencapture/x11/Display.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace screencapture {

enum class ByteOrder { LeastFirst, MostFirst };

/// How an X server lays out the pixels of a picture, and what their colours are.
struct PixelFormat {
  int bitsPerPixel = 32;
  int rowUnitBits = 32;  // rows are padded to a multiple of this
  ByteOrder byteOrder = ByteOrder::LeastFirst;
  std::uint32_t redMask = 0xff0000;
  std::uint32_t greenMask = 0x00ff00;
  std::uint32_t blueMask = 0x0000ff;

  /// The format of the root window's picture. Empty where its pixels are indices into a colour table, which
  /// no screen of today has.
  [[nodiscard]] static std::optional<PixelFormat> ofRoot(const Display& display);

  [[nodiscard]] std::size_t stride(int width) const;
  /// Where the channels lie, if each is a byte of its own: then nothing has to be converted.
  [[nodiscard]] std::optional<platform::ChannelLayout> layout() const;
  /// Writes `width` pixels as red, green and blue bytes. A channel of fewer or more than 8 bits is scaled, so
  /// that its darkest and brightest values stay so.
  void toRgb(const std::uint8_t* row, int width, std::uint8_t* out) const;
};

}  // namespace screencapture
