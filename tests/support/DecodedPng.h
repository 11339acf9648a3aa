#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace testing_support {

/// A PNG file's picture as an independent decoder reads it: 8 bits a channel, rows without gaps.
struct DecodedPng {
  int width = 0;
  int height = 0;
  int channels = 0;  // 3 for RGB, 4 for RGBA
  std::vector<std::uint8_t> bytes;

  /// Empty where the file is damaged anywhere, a checksum included.
  [[nodiscard]] static std::optional<DecodedPng> read(std::span<const std::uint8_t> file);
  /// 0xRRGGBB.
  [[nodiscard]] std::uint32_t at(int x, int y) const;
};

}  // namespace testing_support
