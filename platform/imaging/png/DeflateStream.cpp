#include "platform/imaging/png/DeflateStream.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <endian.h>
#include <span>

namespace platform {

namespace {

using Byte = std::uint8_t;

constexpr int longestCode = 15;

/// A place in a stream's bits, which begin with the lowest of each byte.
class Bits {
 public:
  Bits(const Byte* stream, std::size_t size) : bytes(stream), end(8 * size) {}

  /// The next 57 bits or more. Beyond the end they may be anything.
  [[nodiscard]] std::uint64_t peek() const {
    const std::size_t here = std::min(at, end);
    std::uint64_t word = 0;
    std::memcpy(&word, bytes + here / 8, sizeof word);
    return le64toh(word) >> here % 8;
  }
  void skip(std::size_t count) { at += count; }
  std::size_t take(int count) {
    const std::uint64_t taken = peek() & ((std::uint64_t{1} << count) - 1);
    skip(static_cast<std::size_t>(count));
    return taken;
  }
  void skipToWholeByte() { at = (at + 7) / 8 * 8; }

  [[nodiscard]] std::size_t position() const { return at; }
  [[nodiscard]] bool isPastEnd() const { return at > end; }

 private:
  const Byte* bytes;
  std::size_t end;
  std::size_t at = 0;
};

/// A prefix code, as a table of all that the next bits can be. What it tells of a symbol fits a byte, so that
/// the table stays in the processor's fastest memory.
class PrefixCode {
 public:
  /// The symbols' codes follow from their lengths, 0 for a symbol without one. `entry` makes of a symbol and
  /// the length of its code what `at` tells.
  template <typename MakeEntry>
  [[nodiscard]] bool set(std::span<const Byte> lengths, MakeEntry makeEntry) {
    const int longest = *std::ranges::max_element(lengths);
    const std::size_t size = std::size_t{1} << longest;
    mask = size - 1;
    std::fill_n(entries.begin(), size, none);
    std::size_t code = 0;
    for (int length = 1; length <= longest; ++length, code *= 2) {
      for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
        if (lengths[symbol] != length)
          continue;
        if (code >> length != 0)
          return false;
        const auto entry = static_cast<Byte>(makeEntry(symbol, static_cast<std::size_t>(length)));
        for (std::size_t i = reversed(code++, length); i < size; i += std::size_t{1} << length)
          entries[i] = entry;
      }
    }
    return true;
  }

  static constexpr Byte none = 0;  // where no code begins like this
  [[nodiscard]] Byte at(std::uint64_t bits) const { return entries[bits & mask]; }

 private:
  static std::size_t reversed(std::size_t code, int length) {
    std::size_t result = 0;
    for (; length > 0; --length, code /= 2)
      result = 2 * result + code % 2;
    return result;
  }

  std::array<Byte, std::size_t{1} << longestCode> entries;
  std::size_t mask = 0;
};

/// The codes of a block. Their entries hold the bits of a code and of the number that follows it, and whether
/// it is a literal.
struct BlockCodes {
  static constexpr Byte isLength = 0x40, isEnd = 0x80, bitsOnly = 0x3f;

  PrefixCode literals;  // and the end of the block, and lengths
  PrefixCode distances;

  [[nodiscard]] bool set(std::span<const Byte> literalLengths, std::span<const Byte> distanceLengths) {
    constexpr std::size_t endOfBlock = 256;
    const auto literal = [](std::size_t symbol, std::size_t bits) {
      if (symbol <= endOfBlock)
        return symbol < endOfBlock ? bits : bits | isEnd;
      return isLength | (bits + (symbol < 265 || symbol >= 285 ? 0 : (symbol - 261) / 4));
    };
    const auto distance = [](std::size_t symbol, std::size_t bits) {
      return bits + (symbol < 4 ? 0 : symbol / 2 - 1);
    };
    return literals.set(literalLengths, literal) && distances.set(distanceLengths, distance);
  }

  [[nodiscard]] bool setFixed() {
    std::array<Byte, 288> lengths{};
    std::fill_n(lengths.begin(), 144, Byte{8});
    std::fill_n(lengths.begin() + 144, 112, Byte{9});
    std::fill_n(lengths.begin() + 256, 24, Byte{7});
    std::fill_n(lengths.begin() + 280, 8, Byte{8});
    std::array<Byte, 32> distanceLengths{};
    distanceLengths.fill(5);
    return set(lengths, distanceLengths);
  }

  /// From the head of a block with codes of its own.
  [[nodiscard]] bool read(Bits& bits) {
    const std::size_t literalCount = 257 + bits.take(5);
    const std::size_t count = literalCount + 1 + bits.take(5);
    const std::size_t lengthCount = 4 + bits.take(4);
    static constexpr std::array<Byte, 19> order{16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                11, 4,  12, 3, 13, 2, 14, 1, 15};
    std::array<Byte, 19> lengthLengths{};
    for (std::size_t i = 0; i < lengthCount; ++i)
      lengthLengths[order[i]] = static_cast<Byte>(bits.take(3));
    // Its table is done with before the literals' is made.
    constexpr int bitsOfBits = 3;
    if (!literals.set(lengthLengths,
                      [](std::size_t symbol, std::size_t length) { return symbol << bitsOfBits | length; }))
      return false;
    std::array<Byte, 320> lengths{};
    for (std::size_t i = 0; i < count;) {
      const Byte entry = literals.at(bits.peek());
      bits.skip(entry % (1 << bitsOfBits));
      if (entry == PrefixCode::none || bits.isPastEnd())
        return false;
      const int symbol = entry >> bitsOfBits;
      if (symbol < 16) {
        lengths[i++] = static_cast<Byte>(symbol);
        continue;
      }
      const Byte repeated = symbol == 16 && i > 0 ? lengths[i - 1] : Byte{0};
      const std::size_t times = symbol == 18 ? 11 + bits.take(7) : 3 + bits.take(symbol == 16 ? 2 : 3);
      if (times > count - i)
        return false;
      std::fill_n(lengths.begin() + static_cast<std::ptrdiff_t>(i), times, repeated);
      i += times;
    }
    const std::span<const Byte> all(lengths);
    return set(all.first(literalCount), all.subspan(literalCount, count - literalCount));
  }

  /// Steps over a block from its first code.
  [[nodiscard]] bool skip(Bits& bits) const {
    while (!bits.isPastEnd()) {
      std::uint64_t next = bits.peek();
      Byte entry = literals.at(next);
      // Of literals, the bits at hand hold three in any case.
      for (int more = 0; more < 2 && entry < isLength; ++more) {
        next >>= entry;
        bits.skip(entry);
        entry = literals.at(next);
      }
      if (entry == PrefixCode::none)
        return false;
      bits.skip(entry & bitsOnly);
      if (entry & isEnd)
        return !bits.isPastEnd();
      if (entry & isLength) {
        const Byte distance = distances.at(bits.peek());
        if (distance == PrefixCode::none)
          return false;
        bits.skip(distance);
      }
    }
    return false;
  }
};

bool skipStored(Bits& bits) {
  bits.skipToWholeByte();
  const std::size_t size = bits.take(16);
  bits.skip(16 + 8 * size);
  return !bits.isPastEnd();
}

bool skipBlock(Bits& bits, BlockCodes& codes) {
  enum Kind { Stored, Fixed, OwnCodes };
  switch (bits.take(2)) {
    case Stored:
      return skipStored(bits);
    case Fixed:
      return codes.setFixed() && codes.skip(bits);
    case OwnCodes:
      return codes.read(bits) && codes.skip(bits);
    default:
      return false;
  }
}

}  // namespace

std::size_t letOthersFollow(std::uint8_t* stream, std::size_t size) {
  Bits bits(stream, size);
  BlockCodes codes;
  std::size_t block = 0;
  bool isLast = false;
  while (!isLast) {
    block = bits.position();
    isLast = bits.take(1) != 0;
    if (!skipBlock(bits, codes))
      return 0;
  }
  stream[block / 8] &= static_cast<Byte>(~(1 << block % 8));
  const std::size_t end = bits.position();
  // The head of the empty block is three zeros, and zeros lie up to the whole byte already.
  const std::size_t lengthAt = (end + 3 + 7) / 8;
  if (lengthAt > (end + 7) / 8)
    stream[lengthAt - 1] = 0;
  constexpr std::array<Byte, 4> emptyLength{0, 0, 0xff, 0xff};
  std::ranges::copy(emptyLength, stream + lengthAt);
  return lengthAt + emptyLength.size();
}

}  // namespace platform
