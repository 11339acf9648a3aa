#pragma once

#include "platform/imaging/codecs/decoding/Decoders.h"

#include <array>
#include <cstdint>
#include <memory>

struct inflate_state;

namespace platform::decoding {

/// A PNG file's rows, neither interlaced nor of 16 bits, from the data of its first IDAT chunk on. Streamed:
/// no more than some hundred KiB and a few rows are held at once.
class PngRows {
 public:
  struct Form {
    std::size_t width = 0;
    unsigned bitsPerPixel = 0;  // as in the file
    unsigned channels = 0;      // 1 to 4
    /// Of pixels with one channel: what their numbers stand for, in RGBA.
    std::array<std::array<std::uint8_t, 4>, 256> colours{};
    /// Of pixels with three: the one that is clear, or -1.
    std::int32_t clear = -1;  // 0xrrggbb
  };

  /// `idatSize` is what the first chunk's header tells.
  PngRows(const ByteSource& source, std::uint32_t idatSize, const Form& pixels);
  ~PngRows();
  PngRows(const PngRows&) = delete;
  PngRows& operator=(const PngRows&) = delete;

  /// Writes the next row as RGBA; false if the data are damaged or end early, or if there is no memory.
  [[nodiscard]] bool next(std::uint8_t* rgba);
  /// After the last row: whether the chunk that it came from is sound, as far as it is there.
  [[nodiscard]] bool endsWell();

 private:
  [[nodiscard]] bool fillRow();
  [[nodiscard]] bool readInput();
  void expand(const std::uint8_t* row, std::uint8_t* rgba) const;

  const ByteSource& file;
  const Form form;
  const std::size_t rowSize;
  const std::size_t outputSize;
  std::unique_ptr<inflate_state> inflating;
  std::unique_ptr<std::uint8_t[]> input;
  std::unique_ptr<std::uint8_t[]> output;   // filtered rows, with slack behind them
  std::size_t begin = 0, end = 0;           // of what lies there unread
  std::unique_ptr<std::uint8_t[]> current;  // with slack on either side
  std::unique_ptr<std::uint8_t[]> previous;
  std::uint32_t left;  // of the chunk under way
  std::uint32_t checksum;
};

}  // namespace platform::decoding
