#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

namespace platform {

/// Memory that an X server on this machine can write into, known to it by a number.
class SharedSegment {
 public:
  /// Nothing where the system has none to give. Once the server knows it, or won't, release the number.
  [[nodiscard]] static std::optional<SharedSegment> create(std::size_t size);
  ~SharedSegment();
  SharedSegment(SharedSegment&& other) noexcept
      : identifier(std::exchange(other.identifier, -1)), memory(std::exchange(other.memory, nullptr)) {}
  SharedSegment& operator=(SharedSegment&& other) noexcept {
    std::swap(identifier, other.identifier);
    std::swap(memory, other.memory);
    return *this;
  }

  [[nodiscard]] int id() const { return identifier; }
  [[nodiscard]] std::uint8_t* data() const { return memory; }
  /// From now on the memory goes with the last process that uses it, however that ends, and nobody new finds
  /// it.
  void releaseNumber();

 private:
  SharedSegment(int number, std::uint8_t* attached) : identifier(number), memory(attached) {}

  int identifier;
  std::uint8_t* memory;
};

}  // namespace platform
