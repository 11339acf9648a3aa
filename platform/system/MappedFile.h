#pragma once

#include "platform/system/Descriptor.h"

#include <optional>

namespace platform {

/// A file of no folder: it is memory, and goes with the last descriptor of it. For bytes that another process
/// is to have. `name` is only what the system's lists show.
[[nodiscard]] Descriptor newFileInMemory(const char* name);

/// The bytes of a file as they stand in memory, read only. They stay when the descriptor is closed.
class MappedFile {
 public:
  /// All of an open file, which must not become shorter meanwhile; nothing where it is empty or can't be
  /// mapped.
  [[nodiscard]] static std::optional<MappedFile> of(int file);
  ~MappedFile();
  MappedFile(MappedFile&& other) noexcept : mapped(std::exchange(other.mapped, {})) {}
  MappedFile& operator=(MappedFile&& other) noexcept {
    std::swap(mapped, other.mapped);
    return *this;
  }

  [[nodiscard]] std::span<const std::uint8_t> bytes() const { return mapped; }

 private:
  explicit MappedFile(std::span<std::uint8_t> memory) : mapped(memory) {}

  std::span<std::uint8_t> mapped;
};

}  // namespace platform
