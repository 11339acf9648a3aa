#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <sys/types.h>
#include <utility>
#include <vector>

namespace platform {

/// Owns an open file's number, or none; closes it at its end.
class Descriptor {
 public:
  Descriptor() = default;
  /// Takes what the system's calls give: a number, or one below zero for none.
  explicit Descriptor(int opened) : number(opened) {}
  ~Descriptor() { (void)close(); }
  Descriptor(Descriptor&& other) noexcept : number(other.release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number, other.number);
    return *this;
  }

  [[nodiscard]] bool isOpen() const { return number >= 0; }
  [[nodiscard]] int get() const { return number; }
  /// Gives the number away, unclosed.
  [[nodiscard]] int release() { return std::exchange(number, -1); }
  /// Closes it now: some file systems say only then that the disk was full. Returns 0 or errno's number.
  [[nodiscard]] int close();

 private:
  int number = -1;
};

[[nodiscard]] inline std::span<const std::uint8_t> bytesOf(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

/// Writes all of `bytes`, however many turns that takes, at the file's own position. Returns 0 or errno's
/// number; a part may have been written then.
[[nodiscard]] int writeAll(int file, std::span<const std::uint8_t> bytes);
/// The same from `offset` on, for files that have positions.
[[nodiscard]] int writeAll(int file, std::span<const std::uint8_t> bytes, off_t offset);

/// Appends what is left in `source` to `bytes`. Returns 0 or errno's number.
[[nodiscard]] int readAll(int source, std::vector<std::uint8_t>& bytes);

/// A pipe's reading and writing end, closed in child processes; neither is open where there are too many.
struct Pipe {
  Descriptor reading;
  Descriptor writing;
};
[[nodiscard]] Pipe makePipe();

}  // namespace platform
