#include "tools/screencapture/PixelFormat.h"
#include "tools/screencapture/Scene.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

using namespace screencapture;

namespace {

constexpr Size screen{60, 50};

/// What a scene shows at a point, as a number that differs wherever the look does.
std::size_t lookAt(const Scene& scene, Point point, const Metrics& metrics) {
  if (scene.label && scene.label->place.contains(point))
    return std::hash<std::string>()(scene.label->text) ^
           static_cast<std::size_t>((point.x - scene.label->place.x) * 1000 + point.y - scene.label->place.y +
                                    10);
  if (!scene.bright)
    return 0;
  const Rectangle& bright = *scene.bright;
  if (scene.mode == Mode::Window) {
    // Its frame is drawn inside, so every pixel depends on the distance from the edge.
    const int edge = std::min({point.x - bright.x, point.y - bright.y, bright.right() - 1 - point.x,
                               bright.bottom() - 1 - point.y});
    return bright.contains(point) ? 5 + static_cast<std::size_t>(std::min(edge, 4)) : 0;
  }
  if (bright.contains(point))
    return 1;
  if (bright.grown(metrics.line).contains(point))
    return 2;
  return bright.grown(metrics.areaFrame()).contains(point) ? 3 : 0;
}

Scene randomScene(std::mt19937& random) {
  const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
  const auto rectangle = [&] {
    const int x = below(screen.width), y = below(screen.height);
    return Rectangle{x, y, 1 + below(screen.width - x), 1 + below(screen.height - y)};
  };
  Scene scene;
  scene.mode = below(3) ? Mode::Area : Mode::Window;
  if (below(6))
    scene.bright = rectangle();
  if (scene.bright && scene.mode == Mode::Area)
    scene.label = Label{std::to_string(below(5)), rectangle()};
  return scene;
}

}  // namespace

TEST(Scene, itsDifferenceCoversAllThatLooksDifferent) {
  std::mt19937 random(1);
  Metrics metrics;
  Scene before;
  for (int round = 0; round < 300; ++round) {
    metrics.line = 1 + round % 2;
    const Scene after = randomScene(random);
    const std::vector<Rectangle> changed = difference(before, after, metrics);
    for (int y = 0; y < screen.height; ++y) {
      for (int x = 0; x < screen.width; ++x) {
        const Point point{x, y};
        if (lookAt(before, point, metrics) == lookAt(after, point, metrics))
          continue;
        ASSERT_TRUE(std::ranges::any_of(changed, [&](const Rectangle& each) { return each.contains(point); }))
            << "round " << round << " at " << x << ", " << y;
      }
    }
    before = after;
  }
  EXPECT_TRUE(difference(before, before, metrics).empty());
}

TEST(Scene, aSmallStepOfALargeAreaPaintsLittle) {
  Scene before, after;
  before.bright = Rectangle{0, 0, 1000, 1000};
  after.bright = Rectangle{0, 0, 1001, 1000};
  int pixels = 0;
  for (const Rectangle& each : difference(before, after, {}))
    pixels += each.width * each.height;
  EXPECT_LT(pixels, 20 * 1000);
}

TEST(Scene, theLabelStaysOnThePointersMonitor) {
  const Rectangle monitors[] = {{0, 0, 300, 200}, {300, 0, 300, 150}};
  for (int step = 0; step < 86 * 22; ++step) {
    const Point end{1 + step % 86 * 7, 1 + step / 86 * 7};
    const int scale = 1 + step % 2;
    Selection drag({600, 200}, {}, {0, 0});
    drag.pressButton(Button::Left, {0, 0});
    drag.movePointer(end);
    const Scene scene = sceneOf(drag, monitors, {static_cast<double>(scale), scale});
    ASSERT_TRUE(scene.label);
    const Rectangle& monitor = monitors[end.x < 300 ? 0 : 1];
    EXPECT_EQ(scene.label->place.intersected(monitor), scene.label->place) << end.x << ", " << end.y;
    EXPECT_FALSE(scene.label->place.contains(end));
    EXPECT_EQ(scene.label->text, std::to_string(end.x + 1) + " x " + std::to_string(end.y + 1));
  }
}

TEST(Metrics, takeTheScaleFromTheDesktopsResources) {
  EXPECT_EQ(Metrics::fromResources("Xcursor.size:\t24\nXft.dpi:\t192\nXft.hinting:\t1\n").scale, 2);
  EXPECT_EQ(Metrics::fromResources("Xft.dpi: 144").scale, 1.5);
  EXPECT_EQ(Metrics::fromResources("Xft.dpi: 144").line, 2);
  EXPECT_EQ(Metrics::fromResources("Xft.dpi: 96000").scale, 4);
  for (const char* useless : {"", "Xft.dpi:", "Xft.dpi: many", "Xft.dpi:\t-96\n", "Xft.dpi:\t48", "\n\n"})
    EXPECT_EQ(Metrics::fromResources(useless).scale, 1) << useless;
}

TEST(PixelFormat, findsTheChannelsThatAreBytesOfTheirOwn) {
  EXPECT_EQ(PixelFormat{}.layout(), (platform::ChannelLayout{4, 2, 1, 0}));
  PixelFormat format;
  format.byteOrder = ByteOrder::MostFirst;
  EXPECT_EQ(format.layout(), (platform::ChannelLayout{4, 1, 2, 3}));
  format.bitsPerPixel = 24;
  EXPECT_EQ(format.layout(), (platform::ChannelLayout{3, 0, 1, 2}));
  EXPECT_EQ(format.stride(3), 12U);
  format.redMask = 0xf800;
  EXPECT_FALSE(format.layout());
}

TEST(PixelFormat, scalesOtherChannelsFromDarkestToBrightest) {
  const PixelFormat sixteen{16, 32, ByteOrder::LeastFirst, 0xf800, 0x07e0, 0x001f};
  EXPECT_EQ(sixteen.stride(3), 8U);
  for (unsigned pixel = 0; pixel < 0x10000; pixel += 37) {
    const std::array<std::uint8_t, 2> bytes{static_cast<std::uint8_t>(pixel),
                                            static_cast<std::uint8_t>(pixel >> 8)};
    std::array<std::uint8_t, 3> rgb{};
    sixteen.toRgb(bytes.data(), 1, rgb.data());
    EXPECT_EQ(rgb[0], std::lround((pixel >> 11) * 255 / 31.0));
    EXPECT_EQ(rgb[1], std::lround((pixel >> 5 & 63) * 255 / 63.0));
    EXPECT_EQ(rgb[2], std::lround((pixel & 31) * 255 / 31.0));
  }
  // Ten bits a channel, as on deep colour screens, the most significant byte first.
  const PixelFormat deep{32, 32, ByteOrder::MostFirst, 0x3ff00000, 0x000ffc00, 0x000003ff};
  const std::array<std::uint8_t, 4> brightRed{0x3f, 0xf0, 0x00, 0x00};
  std::array<std::uint8_t, 3> rgb{};
  deep.toRgb(brightRed.data(), 1, rgb.data());
  EXPECT_EQ(rgb, (std::array<std::uint8_t, 3>{255, 0, 0}));
}
