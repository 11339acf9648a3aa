#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace platform {

/// Memory for a picture or a file, not set to anything, to be freed with std::free; null where there is none.
/// To get many fresh pages one by one, each at the first write to it, can take longer than what is then done
/// to the pixels, so the system is asked for large pages.
[[nodiscard]] void* allocateLarge(std::size_t bytes);

struct FreeLargeMemory {
  void operator()(void* memory) const { std::free(memory); }
};

template <typename Value>
using LargeMemory = std::unique_ptr<Value[], FreeLargeMemory>;

/// Such memory for `count` values.
template <typename Value>
[[nodiscard]] LargeMemory<Value> allocateLarge(std::size_t count) {
  return LargeMemory<Value>(static_cast<Value*>(allocateLarge(count * sizeof(Value))));
}

}  // namespace platform
