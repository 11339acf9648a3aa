#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

class QImage;

namespace platform::encoding {

struct Color {
  std::uint8_t red = 0, green = 0, blue = 0;

  bool operator==(const Color&) const = default;
};

/// Whether a pixel counts for a format whose pixels are there or not.
[[nodiscard]] inline bool isClear(const std::uint8_t* rgba) {
  return rgba[3] < 128;
}

/// The colours, not premultiplied, that stand best for those of a picture's pixels that aren't clear: all of
/// them if they are at most `most`, in the order in which they first appear. `picture` is
/// `QImage::Format_RGBA8888_Premultiplied`.
[[nodiscard]] std::vector<Color> choosePalette(const QImage& picture, std::size_t most);

/// Finds the entry of a palette that is nearest to a colour, by the squares of the channels' differences; the
/// first of equally near ones. Not for several threads.
class NearestColor {
 public:
  /// At least one color, at most 256; they must outlive this.
  explicit NearestColor(std::span<const Color> palette) : colors(palette) {}
  [[nodiscard]] std::uint8_t operator()(Color color);

 private:
  using Candidates = std::vector<std::uint8_t>;
  [[nodiscard]] Candidates candidatesFor(Color corner) const;

  static constexpr int cellBits = 4;  // a cell is 16 levels wide in each channel
  std::span<const Color> colors;
  std::array<Candidates, std::size_t{1} << 3 * (8 - cellBits)> cells;
};

}  // namespace platform::encoding
