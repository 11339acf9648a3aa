#include "tools/screencapture/selection/TextMasks.h"

#include <algorithm>
#include <cmath>

namespace screencapture {

namespace {

std::vector<std::uint8_t> unpack(const BakedText& baked) {
  std::vector<std::uint8_t> values;
  values.reserve(baked.size.count());
  for (std::size_t i = 0; i < baked.packed.size(); ++i) {
    if (baked.packed[i] != 0)
      values.push_back(baked.packed[i]);
    else
      values.insert(values.end(), baked.packed[++i], 0);
  }
  return values;
}

/// The mean of the values that each pixel of a line of `count` covers, of a line of `length` values that lie
/// `step` apart.
template <typename Read, typename Write>
void reduce(int length, int count, Read read, Write write) {
  const double ratio = static_cast<double>(length) / count;
  for (int i = 0; i < count; ++i) {
    const double begin = i * ratio, end = begin + ratio;
    double sum = 0;
    for (int at = static_cast<int>(begin); at < length && at < end; ++at)
      sum += read(at) * (std::min(end, at + 1.0) - std::max(begin, static_cast<double>(at)));
    write(i, static_cast<std::uint8_t>(std::lround(std::min(sum / ratio, 255.0))));
  }
}

Coverage reduced(const Coverage& large, Size size) {
  Coverage narrow{{size.width, large.size.height}, {}};
  narrow.values.resize(narrow.size.count());
  for (int y = 0; y < large.size.height; ++y)
    reduce(
        large.size.width, size.width,
        [&](int x) {
          return large.values[large.size.indexOf({x, y})];
        },
        [&](int x, std::uint8_t value) {
          narrow.values[narrow.size.indexOf({x, y})] = value;
        });
  Coverage small{size, {}};
  small.values.resize(size.count());
  for (int x = 0; x < size.width; ++x)
    reduce(
        large.size.height, size.height,
        [&](int y) {
          return narrow.values[narrow.size.indexOf({x, y})];
        },
        [&](int y, std::uint8_t value) {
          small.values[size.indexOf({x, y})] = value;
        });
  return small;
}

}  // namespace

Coverage coverageOf(Text text, double scale) {
  const BakedText* best = nullptr;
  for (const BakedText& baked : bakedTexts) {
    if (baked.text == text && (!best || best->scale < scale))
      best = &baked;
  }
  const Coverage drawn{best->size, unpack(*best)};
  if (best->scale == scale)
    return drawn;
  const int cells = cellsOf(text);  // each of which stays a whole number of pixels wide
  const double ratio = scale / best->scale;
  const auto length = [ratio](int before) {
    return std::max(1, static_cast<int>(std::lround(before * ratio)));
  };
  return reduced(drawn, {length(drawn.size.width / cells) * cells, length(drawn.size.height)});
}

Coverage lineOf(std::string_view text, Text characters, double scale) {
  const std::string_view order = characters == Text::Digits ? "0123456789x" : "0123456789ABCDEF#";
  const Coverage drawn = coverageOf(characters, scale);
  const int cell = drawn.size.width / cellsOf(characters);
  const auto advance = [cell](char character) { return character == ' ' ? cell / 2 : cell; };
  Coverage line{{0, drawn.size.height}, {}};
  for (const char character : text)
    line.size.width += advance(character);
  line.values.resize(line.size.count());
  int x = 0;
  for (const char character : text) {
    const auto index = static_cast<int>(order.find(character));
    for (int y = 0; character != ' ' && y < line.size.height; ++y)
      std::copy_n(&drawn.values[drawn.size.indexOf({index * cell, y})], cell,
                  &line.values[line.size.indexOf({x, y})]);
    x += advance(character);
  }
  return line;
}

}  // namespace screencapture
