#pragma once

#include <cstdint>

namespace platform {

/// What a file may ask of a decoder at most, so that a forged header can't exhaust memory.
struct DecodeBounds {
  std::int64_t pixels = std::int64_t{1} << 28;  // of the picture
  std::int64_t bytes = std::int64_t{1} << 30;   // of the file, and of what a codec holds beside the picture
};

}  // namespace platform
