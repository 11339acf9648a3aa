#include "tools/screencapture/selection/Magnifier.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <vector>

using namespace screencapture;

namespace {

constexpr double scales[] = {1, 1.25, 1.5, 2, 4};
constexpr std::uint32_t opaque = 0xff000000;

Rectangle source() {
  return Magnifier::sourceAround({0, 0});
}

/// The magnifier over one color, but for the pixel that lies so far from the middle.
Artwork drawn(const Magnifier& magnifier, std::uint32_t rgb, Point from = {}, std::uint32_t other = 0) {
  const Rectangle area = source();
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(area.width * area.height), opaque | rgb);
  if (other != 0)
    pixels.at(static_cast<std::size_t>((from.y - area.y) * area.width + from.x - area.x)) = other;
  return magnifier.draw(pixels);
}

/// The smallest rectangle that holds all of this color, and how many there are.
std::pair<Rectangle, int> extentOf(const Artwork& artwork, std::uint32_t color) {
  Rectangle all;
  int count = 0;
  for (int y = 0; y < artwork.size.height; ++y) {
    for (int x = 0; x < artwork.size.width; ++x) {
      if (artwork.pixels[static_cast<std::size_t>(y * artwork.size.width + x)] != color)
        continue;
      const int right = std::max(all.right(), x + 1), bottom = std::max(all.bottom(), y + 1);
      all = count++ == 0 ? Rectangle{x, y, 1, 1}
                         : Rectangle{std::min(all.x, x), std::min(all.y, y), right - std::min(all.x, x),
                                     bottom - std::min(all.y, y)};
    }
  }
  return {all, count};
}

}  // namespace

TEST(Magnifier, showsEachPixelAsASquareOfItsOwnColor) {
  constexpr std::uint32_t rare = 0xff12b3a7;
  for (const double scale : scales) {
    const Metrics metrics = Metrics::at(scale);
    const Magnifier magnifier(metrics);
    const int pitch = metrics.pixels(9), side = pitch - metrics.line;
    const auto square = [&](Point from) {
      const auto [extent, count] = extentOf(drawn(magnifier, 0x804020, from, rare), rare);
      EXPECT_EQ(count, side * side) << scale << ": " << from.x << ", " << from.y;
      EXPECT_EQ(extent.width, side);
      EXPECT_EQ(extent.height, side);
      return extent;
    };
    const Rectangle first = square({2, 0});
    for (const Point from :
         {Point{6, 0}, Point{-6, 0}, Point{0, 6}, Point{0, -6}, Point{4, 4}, Point{-3, 4}}) {
      const Rectangle found = square(from);
      EXPECT_EQ(found.x, first.x + (from.x - 2) * pitch);
      EXPECT_EQ(found.y, first.y + from.y * pitch);
    }
  }
}

TEST(Magnifier, itsGridAndItsMarkAreSeenOnEveryGround) {
  const Metrics metrics = Metrics::at(1);
  const Magnifier magnifier(metrics);
  constexpr std::uint32_t rare = 0xff12b3a7;
  const Rectangle second = extentOf(drawn(magnifier, 0, {2, 0}, rare), rare).first;
  const int markEnd = second.x - metrics.pixels(9) - metrics.line;  // of the middle square
  for (std::uint32_t level = 0; level < 256; level += 5) {
    const Artwork artwork = drawn(magnifier, level * 0x010101);
    const auto levelAt = [&](int x) {
      const int y = second.y + second.height / 2;
      return static_cast<int>(artwork.pixels[static_cast<std::size_t>(y * artwork.size.width + x)] & 0xff);
    };
    EXPECT_EQ(levelAt(second.x), static_cast<int>(level));
    EXPECT_GE(std::abs(levelAt(second.right()) - static_cast<int>(level)), 20) << level;
    EXPECT_EQ(levelAt(markEnd - 1), static_cast<int>(level));
    EXPECT_EQ(levelAt(markEnd), 255);
    EXPECT_LT(levelAt(markEnd + metrics.line), 40);
  }
}

TEST(Magnifier, beyondTheScreenItShowsNoBlack) {
  const Magnifier magnifier(Metrics::at(1));
  const Rectangle area = source();
  const std::vector<std::uint32_t> nothing(static_cast<std::size_t>(area.width * area.height));
  EXPECT_NE(magnifier.draw(nothing).pixels, drawn(magnifier, 0).pixels);
}

TEST(Magnifier, staysOnThePixelsMonitorAndOffThePixel) {
  for (const int scale : {1, 2}) {
    const Rectangle monitors[] = {{0, 0, 640 * scale, 400 * scale}, {640, 100, 320 * scale, 640 * scale}};
    const Magnifier magnifier(Metrics::at(scale));
    const Size size = drawn(magnifier, 0).size;
    for (const Rectangle& monitor : monitors) {
      for (int y = monitor.y; y < monitor.bottom(); y += 7 * scale) {
        for (int x = monitor.x; x < monitor.right(); x += 7 * scale) {
          const Rectangle place = magnifier.placeFor({x, y}, monitor);
          EXPECT_EQ((Size{place.width, place.height}), size);
          EXPECT_EQ(place.intersected(monitor), place) << x << ", " << y;
          EXPECT_FALSE(place.contains({x, y})) << x << ", " << y;
        }
      }
    }
  }
}

TEST(Magnifier, namesAColorWithSixDigits) {
  EXPECT_EQ(hexOf(0x00000a), "#00000A");
  EXPECT_EQ(hexOf(0xfedcb9), "#FEDCB9");
}
