#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace platform {

/// Compresses pieces of one deflate stream (RFC 1951) independently of each other: a piece ends at a whole
/// byte and looks back at nothing before it, so that all together, one after the other, are the stream. One
/// for each thread.
class BandCompression {
 public:
  BandCompression();
  ~BandCompression();
  BandCompression(const BandCompression&) = delete;
  BandCompression& operator=(const BandCompression&) = delete;

  /// How many bytes `size` bytes may become at most, by far.
  [[nodiscard]] static std::size_t room(std::size_t size) { return size + size / 2 + 4096; }

  enum class Place { Inner, Last };
  /// Writes the filtered rows' piece to `to`, which has their `room`; at most 1 GiB at once. Returns its
  /// size, or 0 if there was not enough memory.
  [[nodiscard]] std::size_t run(std::span<const std::uint8_t> rows, Place place, std::uint8_t* to);

 private:
  struct State;
  std::unique_ptr<State> state;
};

}  // namespace platform
