#pragma once

#include "platform/imaging/codecs/encoding/Palette.h"

#include <array>
#include <cstdint>
#include <vector>

namespace platform::encoding {

/// Divides the space of colours into boxes, as many as there may be palette entries, so that the colours in a
/// box differ as little as possible. After X. Wu, "Efficient statistical computations for optimal color
/// quantization" (1991): sums over a coarse grid give the variance of any box at once, and the box with the
/// largest is cut, where that lowers it most.
class ColorBoxes {
 public:
  void add(Color color);
  /// Once, after all colours are there. Returns the mean colours of the boxes, at most `most`.
  [[nodiscard]] std::vector<Color> divide(std::size_t most);
  /// The number of the box that a colour lies in, once they are divided.
  [[nodiscard]] std::size_t boxOf(Color color) const { return boxOfCell[cellOf(color)]; }

 private:
  static constexpr std::size_t side = 33;  // 32 levels a channel, and an empty one below them

  struct Sums {
    std::int64_t count = 0, red = 0, green = 0, blue = 0, squares = 0;

    Sums& operator+=(const Sums& other);
    Sums& operator-=(const Sums& other);
    /// How far the colours lie from their mean: the sum of the squares.
    [[nodiscard]] double spread() const;
  };
  /// Beyond the first and up to the last level, in red, green and blue.
  struct Box {
    std::array<std::size_t, 3> first{};
    std::array<std::size_t, 3> last{side - 1, side - 1, side - 1};
    double spread = 0;
  };

  static std::size_t index(std::size_t red, std::size_t green, std::size_t blue) {
    return (red * side + green) * side + blue;
  }
  static std::size_t cellOf(Color color) {
    return index((color.red >> 3) + 1U, (color.green >> 3) + 1U, (color.blue >> 3) + 1U);
  }
  void accumulate();
  [[nodiscard]] Sums within(const Box& box) const;
  /// False if the colours of the box lie in a single cell.
  [[nodiscard]] bool cut(Box& box, Box& other) const;

  std::vector<Sums> cells = std::vector<Sums>(side * side * side);
  std::vector<std::size_t> boxOfCell = std::vector<std::size_t>(side * side * side);
};

}  // namespace platform::encoding
