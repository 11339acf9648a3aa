#include "platform/imaging/png/BandCompression.h"

#include "platform/imaging/png/LiteralCompression.h"

#include <algorithm>
#include <array>
#include <isa-l/igzip_lib.h>
#include <new>
#include <zlib.h>

namespace platform {
namespace {

enum class Grain { Coarse, Slope, Plain };

/// Slopes of colour have hardly a difference but by a step or two, and few of these; plains nearly none at
/// all. ISA-L takes whatever repetition it meets first, which is right for text and photographs, but makes
/// slopes and plains three times as large as need be.
Grain grainOf(std::span<const std::uint8_t> rows) {
  const std::size_t mostLarge = rows.size() / 1000;
  constexpr std::size_t block = 4096;
  std::size_t small = 0, large = 0;
  for (std::size_t begin = 0; begin < rows.size() && large <= mostLarge; begin += block) {
    std::uint16_t smallHere = 0, largeHere = 0;
    for (const std::uint8_t byte : rows.subspan(begin, std::min(block, rows.size() - begin))) {
      const auto distance = std::min<std::uint8_t>(byte, static_cast<std::uint8_t>(-byte));
      smallHere = static_cast<std::uint16_t>(smallHere + (distance > 0 ? 1 : 0));
      largeHere = static_cast<std::uint16_t>(largeHere + (distance > 5 ? 1 : 0));
    }
    small += smallHere;
    large += largeHere;
  }
  if (large > mostLarge || small > rows.size() / 8)
    return Grain::Coarse;
  return small > rows.size() / 100 ? Grain::Slope : Grain::Plain;
}

/// zlib looks about more thoroughly. How far was chosen by measuring slopes and glows.
std::size_t compressByZlib(std::span<const std::uint8_t> rows, Grain grain, bool last, std::uint8_t* to) {
  z_stream stream{};
  constexpr int rawDeflate = -15, memory = 9;
  if (deflateInit2(&stream, 6, Z_DEFLATED, rawDeflate, memory,
                   grain == Grain::Plain ? Z_RLE : Z_DEFAULT_STRATEGY) != Z_OK)
    return 0;
  constexpr int goodLength = 8, lazyLength = 16, niceLength = 258, chain = 64;
  deflateTune(&stream, goodLength, lazyLength, niceLength, chain);
  stream.next_in = const_cast<Bytef*>(rows.data());  // only read, though not declared so
  stream.avail_in = static_cast<uInt>(rows.size());
  stream.next_out = to;
  stream.avail_out = static_cast<uInt>(BandCompression::room(rows.size()));
  deflate(&stream, last ? Z_FINISH : Z_SYNC_FLUSH);
  const bool done = stream.avail_in == 0 && stream.avail_out > 0;
  const std::size_t size = stream.total_out;
  deflateEnd(&stream);
  return done ? size : 0;
}

}  // namespace

struct BandCompression::State {
  std::size_t compressByIsal(std::span<const std::uint8_t> rows, bool last, std::uint8_t* to) {
    isal_deflate_init(&stream);
    stream.level = 1;
    stream.level_buf = memory.data();
    stream.level_buf_size = static_cast<std::uint32_t>(memory.size());
    stream.flush = last ? NO_FLUSH : FULL_FLUSH;
    stream.end_of_stream = last ? 1 : 0;
    stream.next_in = const_cast<std::uint8_t*>(rows.data());
    stream.avail_in = static_cast<std::uint32_t>(rows.size());
    stream.next_out = to;
    stream.avail_out = static_cast<std::uint32_t>(room(rows.size()));
    const bool done = isal_deflate(&stream) == COMP_OK && stream.avail_in == 0 && stream.avail_out > 0;
    return done ? stream.total_out : 0;
  }

  /// Tried with a piece of them from the middle. `scratch` has their room.
  bool hardlyRepeat(std::span<const std::uint8_t> rows, std::uint8_t* scratch) {
    const std::size_t size = std::min(rows.size(), LiteralCompression::blockSize);
    const auto piece = rows.subspan((rows.size() - size) / 2, size);
    const std::size_t alone = literals.sizeOf(piece);
    // Clearly, for what lies before the piece would have been found in it.
    return alone + alone / 32 < compressByIsal(piece, false, scratch);
  }

  isal_zstream stream;
  std::array<std::uint8_t, ISAL_DEF_LVL1_DEFAULT> memory;
  LiteralCompression literals;
};

BandCompression::BandCompression() : state(new (std::nothrow) State) {
}
BandCompression::~BandCompression() = default;

std::size_t BandCompression::run(std::span<const std::uint8_t> rows, Place place, std::uint8_t* to) {
  const bool last = place == Place::Last;
  if (const Grain grain = grainOf(rows); grain != Grain::Coarse)
    return compressByZlib(rows, grain, last, to);
  if (!state)
    return 0;
  return state->hardlyRepeat(rows, to) ? state->literals.run(rows, last, to)
                                       : state->compressByIsal(rows, last, to);
}

}  // namespace platform
