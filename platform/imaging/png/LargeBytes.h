#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace platform {

struct FreeBytes {
  void operator()(std::uint8_t* bytes) const { std::free(bytes); }
};
using LargeBytes = std::unique_ptr<std::uint8_t[], FreeBytes>;

/// Memory for a picture or a file, without an initial value, or null where there is none. Getting it page by
/// page, at the first write to each, would take as long as filling it several times over, so the system is
/// asked for large pages.
[[nodiscard]] LargeBytes allocateLarge(std::size_t size);

}  // namespace platform
