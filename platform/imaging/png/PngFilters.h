#pragma once

#include "platform/imaging/png/Effort.h"

#include <cstddef>
#include <cstdint>

namespace platform {

/// What a row's bytes are predicted from, in the numbering of PNG's filter types.
enum class PngFilter : std::uint8_t { None, Sub, Up, Average, Paeth };

/// So many bytes may be read after a row, and written after what a filter gives: bytes are worked on side by
/// side.
inline constexpr std::size_t filterSlack = 16;

/// A picture's row and the one above it (zeros above the first). A pixel of zeros lies before each.
struct PngRow {
  const std::uint8_t* bytes = nullptr;
  const std::uint8_t* above = nullptr;
  std::size_t size = 0;
  std::size_t pixelSize = 0;  // in bytes
};

/// The filter whose differences look cheapest to compress. Each byte counts as far as it is from zero, as the
/// PNG standard advises, but no more than a byte that nothing predicts; without a filter, whatever equals one
/// of its neighbours is free, for compression finds it again. So text and windows, whose pixels equal a
/// neighbour or are far from it, mostly go without, which makes them smaller by a tenth.
/// Where that makes no difference, the row goes the way of the one above.
[[nodiscard]] PngFilter cheapestFilter(const PngRow& row, PngFilter filterAbove, Instructions instructions);

/// Writes each byte less its prediction.
void applyFilter(PngFilter filter, const PngRow& row, std::uint8_t* out, Instructions instructions);

/// The other way: of a row's `size` filtered bytes and the row above, the row itself. A pixel of zeros lies
/// before `above` and `to`, slack after all three; a pixel has at most 4 bytes.
void undoFilter(PngFilter filter, const std::uint8_t* from, const std::uint8_t* above, std::size_t size,
                std::size_t pixelSize, std::uint8_t* to);

}  // namespace platform
