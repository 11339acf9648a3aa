#include "platform/imaging/png/LiteralCompression.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace platform {
namespace {

constexpr std::size_t endOfBlock = 256;  // the symbol

/// Writes numbers of few bits, the lowest bit first.
class BitWriter {
 public:
  explicit BitWriter(std::uint8_t* begin) : to(begin) {}

  /// At most 56 bits between two times of `flush`.
  void put(std::uint64_t bits, unsigned count) {
    pending |= bits << pendingCount;
    pendingCount += count;
  }
  /// Writes up to 7 bytes beyond the bits.
  void flush() {
    std::memcpy(to, &pending, sizeof pending);
    to += pendingCount / 8;
    pending >>= pendingCount / 8 * 8;
    pendingCount %= 8;
  }
  std::uint8_t* fillByte() {
    pendingCount = (pendingCount + 7) / 8 * 8;
    flush();
    return to;
  }

 private:
  std::uint8_t* to;
  std::uint64_t pending = 0;
  unsigned pendingCount = 0;
};

void putHeader(BitWriter& writer, const isal_hufftables& code) {
  for (std::uint32_t i = 0; i < code.deflate_hdr_count; ++i) {
    // Its first bit tells whether this is the last block, which comes later.
    writer.put(i == 0 ? code.deflate_hdr[i] & 0xfe : code.deflate_hdr[i], 8);
    writer.flush();
  }
  if (code.deflate_hdr_extra_bits > 0)
    writer.put(code.deflate_hdr[code.deflate_hdr_count], code.deflate_hdr_extra_bits);
  writer.flush();
}

void putBytes(BitWriter& writer, const isal_hufftables& code, std::span<const std::uint8_t> bytes) {
  struct Symbol {
    std::uint32_t bits;
    std::uint32_t count;  // at most 15
  };
  std::array<Symbol, 256> symbols;
  for (std::size_t byte = 0; byte < symbols.size(); ++byte)
    symbols[byte] = {code.lit_table[byte], code.lit_table_sizes[byte]};
  std::size_t i = 0;
  for (; i + 3 <= bytes.size(); i += 3) {
    // Three make one number first, which needn't wait for what was written before.
    const Symbol one = symbols[bytes[i]], two = symbols[bytes[i + 1]], three = symbols[bytes[i + 2]];
    const std::uint64_t lower = one.bits | two.bits << one.count;
    const std::uint32_t lowerCount = one.count + two.count;
    writer.put(lower | std::uint64_t{three.bits} << lowerCount, lowerCount + three.count);
    writer.flush();
  }
  for (; i < bytes.size(); ++i) {
    writer.put(symbols[bytes[i]].bits, symbols[bytes[i]].count);
    writer.flush();
  }
  writer.put(code.lit_table[endOfBlock], code.lit_table_sizes[endOfBlock]);
  writer.flush();
}

}  // namespace

void LiteralCompression::chooseCode(std::span<const std::uint8_t> bytes) {
  // Counted apart, for equal neighbours would wait for each other.
  std::array<std::array<std::uint32_t, 256>, 4> parts{};
  std::size_t i = 0;
  for (; i + parts.size() <= bytes.size(); i += parts.size())
    for (std::size_t part = 0; part < parts.size(); ++part)
      ++parts[part][bytes[i + part]];
  for (; i < bytes.size(); ++i)
    ++parts.front()[bytes[i]];
  std::memset(&counts, 0, sizeof counts);
  for (std::size_t byte = 0; byte < 256; ++byte)
    for (const auto& part : parts)
      counts.lit_len_histogram[byte] += part[byte];
  counts.lit_len_histogram[endOfBlock] = 1;
  isal_create_hufftables_subset(&code, &counts);
}

std::size_t LiteralCompression::sizeOf(std::span<const std::uint8_t> bytes) {
  chooseCode(bytes);
  std::size_t bits = 0;
  for (std::size_t byte = 0; byte < 256; ++byte)
    bits += counts.lit_len_histogram[byte] * code.lit_table_sizes[byte];
  return code.deflate_hdr_count + bits / 8;
}

std::size_t LiteralCompression::run(std::span<const std::uint8_t> bytes, bool last, std::uint8_t* to) {
  BitWriter writer(to);
  for (std::size_t begin = 0; begin < bytes.size(); begin += blockSize) {
    const auto block = bytes.subspan(begin, std::min(blockSize, bytes.size() - begin));
    chooseCode(block);
    putHeader(writer, code);
    putBytes(writer, code, block);
  }
  // An empty block of bytes as they are: it begins at the next whole byte, and may be the last.
  constexpr unsigned kindBits = 3;
  writer.put(last ? 1 : 0, kindBits);
  std::uint8_t* end = writer.fillByte();
  end = std::ranges::copy(std::array<std::uint8_t, 4>{0, 0, 0xff, 0xff}, end).out;
  return static_cast<std::size_t>(end - to);
}

}  // namespace platform
