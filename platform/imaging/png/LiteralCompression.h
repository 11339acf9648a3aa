#pragma once

#include <cstddef>
#include <cstdint>
#include <isa-l/igzip_lib.h>
#include <span>

namespace platform {

/// Compresses bytes that hardly repeat, such as a photograph's differences: blocks of a deflate stream (RFC
/// 1951) whose bytes stand for themselves, with a Huffman code for each block. A search for repetitions takes
/// several times as long and finds short ones from far away, which cost more than their bytes.
class LiteralCompression {
 public:
  /// How many bytes are a block.
  static constexpr std::size_t blockSize = std::size_t{1} << 17;

  /// To how many bytes one block of these shrinks, closely; of a block's size at most.
  [[nodiscard]] std::size_t sizeOf(std::span<const std::uint8_t> bytes);

  /// Writes them to `to`, which has room for half as many more, and returns how many bytes those are. The
  /// stream goes on after them, at a whole byte, unless they are the last.
  [[nodiscard]] std::size_t run(std::span<const std::uint8_t> bytes, bool last, std::uint8_t* to);

 private:
  void chooseCode(std::span<const std::uint8_t> bytes);

  isal_huff_histogram counts;
  isal_hufftables code;
};

}  // namespace platform
