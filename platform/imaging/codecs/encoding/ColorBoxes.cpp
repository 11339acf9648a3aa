#include "platform/imaging/codecs/encoding/ColorBoxes.h"

#include <algorithm>

namespace platform::encoding {

ColorBoxes::Sums& ColorBoxes::Sums::operator+=(const Sums& other) {
  count += other.count;
  red += other.red;
  green += other.green;
  blue += other.blue;
  squares += other.squares;
  return *this;
}

ColorBoxes::Sums& ColorBoxes::Sums::operator-=(const Sums& other) {
  count -= other.count;
  red -= other.red;
  green -= other.green;
  blue -= other.blue;
  squares -= other.squares;
  return *this;
}

double ColorBoxes::Sums::spread() const {
  if (count == 0)
    return 0;
  const auto square = [](std::int64_t number) {
    return static_cast<double>(number) * static_cast<double>(number);
  };
  return static_cast<double>(squares) -
         (square(red) + square(green) + square(blue)) / static_cast<double>(count);
}

void ColorBoxes::add(Color color) {
  const int red = color.red, green = color.green, blue = color.blue;
  cells[cellOf(color)] += {1, red, green, blue, red * red + green * green + blue * blue};
}

std::vector<Color> ColorBoxes::divide(std::size_t most) {
  accumulate();
  std::vector<Box> boxes(1);
  boxes[0].spread = within(boxes[0]).spread();
  while (boxes.size() < most) {
    const auto widest = std::max_element(boxes.begin(), boxes.end(), [](const Box& left, const Box& right) {
      return left.spread < right.spread;
    });
    if (widest->spread <= 0)
      break;
    Box other;
    if (cut(*widest, other))
      boxes.push_back(other);
    else
      widest->spread = 0;
  }
  std::vector<Color> means;
  for (const Box& box : boxes) {
    const Sums sums = within(box);
    const auto mean = [&](std::int64_t sum) {
      return static_cast<std::uint8_t>((sum + sums.count / 2) / std::max<std::int64_t>(1, sums.count));
    };
    for (std::size_t red = box.first[0] + 1; red <= box.last[0]; ++red)
      for (std::size_t green = box.first[1] + 1; green <= box.last[1]; ++green)
        for (std::size_t blue = box.first[2] + 1; blue <= box.last[2]; ++blue)
          boxOfCell[index(red, green, blue)] = means.size();
    means.push_back({mean(sums.red), mean(sums.green), mean(sums.blue)});
  }
  return means;
}

/// Each cell becomes the sum of all up to and with it.
void ColorBoxes::accumulate() {
  for (const std::size_t step : {index(1, 0, 0), index(0, 1, 0), index(0, 0, 1)})
    for (std::size_t red = 1; red < side; ++red)
      for (std::size_t green = 1; green < side; ++green)
        for (std::size_t blue = 1; blue < side; ++blue) {
          const std::size_t cell = index(red, green, blue);
          cells[cell] += cells[cell - step];
        }
}

ColorBoxes::Sums ColorBoxes::within(const Box& box) const {
  Sums sums;
  for (unsigned corner = 0; corner < 8; ++corner) {
    std::array<std::size_t, 3> at{};
    for (unsigned axis = 0; axis < 3; ++axis)
      at[axis] = (corner >> axis & 1) != 0 ? box.first[axis] : box.last[axis];
    const Sums& here = cells[index(at[0], at[1], at[2])];
    const bool isOdd = (corner == 1 || corner == 2 || corner == 4 || corner == 7);
    isOdd ? sums -= here : sums += here;
  }
  return sums;
}

bool ColorBoxes::cut(Box& box, Box& other) const {
  Box bestLow, bestHigh;
  double least = -1;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    for (std::size_t level = box.first[axis] + 1; level < box.last[axis]; ++level) {
      Box low = box, high = box;
      low.last[axis] = high.first[axis] = level;
      const Sums lowSums = within(low), highSums = within(high);
      if (lowSums.count == 0 || highSums.count == 0)
        continue;
      low.spread = lowSums.spread();
      high.spread = highSums.spread();
      if (least < 0 || low.spread + high.spread < least) {
        least = low.spread + high.spread;
        bestLow = low;
        bestHigh = high;
      }
    }
  }
  if (least < 0)
    return false;
  box = bestLow;
  other = bestHigh;
  return true;
}

}  // namespace platform::encoding
