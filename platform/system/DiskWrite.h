#pragma once

#include <cstdint>
#include <span>
#include <sys/types.h>

namespace platform {

/// Writes all of `bytes` from `offset` on, and has the disk begin with each part while the next is on its
/// way: of what is large, a sync then has little left to wait for. Returns 0 or errno's number; a part may
/// have been written then.
[[nodiscard]] int writeTowardsDisk(int file, std::span<const std::uint8_t> bytes, off_t offset);

}  // namespace platform
