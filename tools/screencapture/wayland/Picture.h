#pragma once

#include "tools/screencapture/selection/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace screencapture::wayland {

/// Pixels that stay as they are, upright: each 0xXXRRGGBB, whatever X is.
class Picture {
 public:
  Picture() = default;
  /// Rows run from the top, each `stride` pixels after the one above it, in memory that lives as long as
  /// `owner` does.
  Picture(Size pixels, const std::uint32_t* first, std::size_t stride, std::shared_ptr<const void> owner)
      : extent(pixels), begin(first), rowLength(stride), memory(std::move(owner)) {}
  /// Rows without gaps.
  Picture(Size pixels, std::vector<std::uint32_t> values);

  [[nodiscard]] Size size() const { return extent; }
  [[nodiscard]] std::size_t stride() const { return rowLength; }
  [[nodiscard]] const std::uint32_t* row(int y) const {
    return begin + static_cast<std::size_t>(y) * rowLength;
  }

  /// A part, which must lie inside, over the same memory.
  [[nodiscard]] Picture part(const Rectangle& inside) const;

 private:
  Size extent;
  const std::uint32_t* begin = nullptr;
  std::size_t rowLength = 0;
  std::shared_ptr<const void> memory;
};

/// How an output shows what it is given: turned by so many quarters, and then mirrored, left for right. The
/// numbers of wl_output.transform.
struct Transform {
  int quarters = 0;
  bool isMirrored = false;

  [[nodiscard]] static Transform of(int number) { return {number & 3, (number & 4) != 0}; }
  [[nodiscard]] bool swapsSides() const { return quarters % 2 != 0; }
};

enum class RowOrder { FromTop, FromBottom };

/// Pixels of a compositor as they lie in its memory.
struct RawPixels {
  std::uint32_t format = 0;  // of wl_shm
  Size size;
  std::size_t stride = 0;  // bytes
  std::span<const std::uint8_t> bytes;
};

/// Makes a picture of what a compositor has written: in the usual format and upright it stays where it is, in
/// the memory of `owner`. Empty where the format is none of those that screens have, or the bytes are too
/// few.
[[nodiscard]] std::optional<Picture> uprightPicture(const RawPixels& raw, const Transform& transform,
                                                    RowOrder order, std::shared_ptr<const void> owner);

}  // namespace screencapture::wayland
