#include "bench/screencapture/TestPicture.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace {

struct Canvas {
  int width;
  int height;
  std::vector<std::uint32_t> pixels;

  std::uint32_t& at(int x, int y) {
    return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(x)];
  }
};

std::uint32_t colour(double red, double green, double blue) {
  const auto channel = [](double value) { return static_cast<std::uint32_t>(std::clamp(value, 0.0, 255.0)); };
  return channel(red) << 16 | channel(green) << 8 | channel(blue);
}

void drawGround(Canvas& canvas, std::mt19937& random) {
  for (int y = 0; y < canvas.height; ++y) {
    for (int x = 0; x < canvas.width; ++x) {
      const double grain = static_cast<double>(random() % 3);
      canvas.at(x, y) = colour(110 + 70 * std::sin(x / 400.0) + grain, 100 + 60 * std::cos(y / 300.0) + grain,
                               120 + 50 * std::sin((x + y) / 700.0) + grain);
    }
  }
}

/// Marks of 9 by 16 pixels, five kinds of grey each, from a small alphabet, in rows with ragged ends.
void drawWindow(Canvas& canvas, int left, int top, int width, int height, bool dark, std::mt19937& random) {
  constexpr int cell = 11, row = 26, markWidth = 9, markHeight = 16, letters = 40;
  static constexpr int shades[] = {0, 0, 60, 140, 220};
  std::vector<int> alphabet(letters * markWidth * markHeight);
  std::ranges::generate(alphabet, [&] { return shades[random() % std::size(shades)]; });
  const auto shade = [dark](int ink) {
    const double level = dark ? 30 + ink * 0.8 : 255 - ink;
    return colour(level, level, level + (dark ? 8 : 0));
  };
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x)
      canvas.at(left + x, top + y) = shade(0);
  }
  for (int y = 30; y + row < height; y += row) {
    const int end = width / 4 + static_cast<int>(random() % static_cast<unsigned>(width * 3 / 5));
    for (int x = 30; x < end; x += cell) {
      const std::size_t letter = random() % letters;
      for (int i = 0; i < markWidth * markHeight && random() % 6 != 0; ++i)
        canvas.at(left + x + i % markWidth, top + y + i / markWidth) =
            shade(alphabet[letter * markWidth * markHeight + static_cast<std::size_t>(i)]);
    }
  }
}

}  // namespace

std::vector<std::uint32_t> desktopPicture(int width, int height) {
  std::mt19937 random(7);
  Canvas canvas{width, height, {}};
  canvas.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  drawGround(canvas, random);
  drawWindow(canvas, width / 30, height / 12, width / 2, height * 5 / 6, false, random);
  drawWindow(canvas, width * 5 / 9, height / 6, width * 2 / 5, height * 2 / 3, true, random);
  return canvas.pixels;
}
