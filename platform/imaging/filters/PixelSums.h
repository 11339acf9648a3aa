#pragma once

#include "platform/imaging/png/Effort.h"

#include <cstddef>
#include <cstdint>

namespace platform {

/// Adds each of `rows` rows, `stride` bytes apart, to `sums`.
void addRows(const std::uint8_t* bytes, std::size_t stride, std::size_t rows, std::uint32_t* sums,
             std::size_t channels, Instructions instructions);

}  // namespace platform
