#include "tools/screencapture/selection/Hint.h"
#include "tools/screencapture/selection/Painting.h"
#include "tools/screencapture/x11/PixelFormat.h"
#include "tools/screencapture/x11/Resources.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <numeric>
#include <random>

using namespace screencapture;

namespace {

constexpr Size screen{60, 50};

using Look = std::vector<std::size_t>;

/// What a scene shows at each pixel, as numbers that differ wherever the look does.
Look lookOf(const Scene& scene, const Metrics& metrics) {
  Look look(screen.width * screen.height);
  const auto add = [&](const Rectangle& area, auto mark) {
    for (int y = area.y; y < area.bottom(); ++y)
      for (int x = area.x; x < area.right(); ++x)
        look[static_cast<std::size_t>(y * screen.width + x)] =
            look[static_cast<std::size_t>(y * screen.width + x)] * 31 + mark(x - area.x, y - area.y);
  };
  for (const Fill& fill : fillsOf(scene, {0, 0, screen.width, screen.height}, metrics))
    add(fill.area,
        [&](int, int) { return fill.color.rgb + static_cast<std::size_t>(fill.color.alpha * 1000) + 1; });
  if (scene.hint)
    add(scene.hint->place,
        [&](int x, int y) { return static_cast<std::size_t>(x * 100 + y + 7 * scene.hint->opacity); });
  if (scene.label)
    add(scene.label->place, [&](int x, int y) {
      return std::hash<std::string>()(scene.label->text) ^ static_cast<std::size_t>(x * 1000 + y + 10);
    });
  return look;
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
  if (below(3) == 0)
    scene.hint = ShownHint{{20, 40, 20, 5}, below(3)};
  if (scene.bright)
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
    const Look was = lookOf(before, metrics), is = lookOf(after, metrics);
    for (std::size_t i = 0; i < is.size(); ++i) {
      const Point point{static_cast<int>(i) % screen.width, static_cast<int>(i) / screen.width};
      if (was[i] == is[i])
        continue;
      ASSERT_TRUE(std::ranges::any_of(changed, [&](const Rectangle& each) { return each.contains(point); }))
          << "round " << round << " at " << point.x << ", " << point.y;
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

TEST(Scene, aPickedWindowHasItsSizeToo) {
  Selection selection({600, 200}, std::vector<Rectangle>{{10, 20, 300, 100}}, {50, 50});
  selection.pressKey(Key::Space);
  const Rectangle monitor{0, 0, 600, 200};
  const Scene scene = sceneOf(selection, {&monitor, 1}, {});
  ASSERT_TRUE(scene.label);
  EXPECT_EQ(scene.label->text, "300 x 100");
}

TEST(Hint, staysAsItIsUntilItSaysThatItChangesAndThenIsGone) {
  const Hint hint({Language::Korean}, {1000, 0, 800, 600}, Metrics::at(1.5));
  Hint::Duration time{0};
  int steps = 0;
  int opacity = 255;
  while (const auto next = Hint::nextChange(time)) {
    const auto shown = hint.at(time);
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown, hint.at(time + *next / 100));
    EXPECT_EQ(shown->place.intersected({1000, 0, 800, 600}), shown->place);
    EXPECT_LE(shown->opacity, opacity);
    opacity = shown->opacity;
    time += *next;
    ASSERT_LT(++steps, 100);
  }
  EXPECT_FALSE(hint.at(time));
  EXPECT_GT(steps, 10) << "it fades";
}

TEST(Hint, isInTheFirstLanguageThatTheProgramSpeaks) {
  const auto language = [](std::map<std::string, std::string_view> variables) {
    return languageOf([&](const char* name) { return variables[name]; });
  };
  EXPECT_EQ(language({}), Language::English);
  EXPECT_EQ(language({{"LANG", "ko_KR.UTF-8"}}), Language::Korean);
  EXPECT_EQ(language({{"LANG", "ko_KR.UTF-8"}, {"LC_ALL", "en_GB"}}), Language::English);
  EXPECT_EQ(language({{"LANG", "en_US"}, {"LANGUAGE", "fr::ko-KR:en"}}), Language::Korean);
  EXPECT_EQ(language({{"LANG", "kok_IN"}}), Language::English);
}

TEST(TextMasks, haveTheSameLookAtEveryScale) {
  for (const Text text : {Text::Digits, Text::HexDigits, Text::EnglishHint, Text::KoreanHint}) {
    const auto ink = [](const Coverage& coverage) {
      return std::accumulate(coverage.values.begin(), coverage.values.end(), 0.0) / 255;
    };
    const Coverage largest = coverageOf(text, 4);
    EXPECT_GT(ink(largest), 100);
    for (double scale = 1; scale < 4; scale += 0.05) {
      const Coverage coverage = coverageOf(text, scale);
      const double ratio = scale / 4;
      ASSERT_EQ(coverage.values.size(), static_cast<std::size_t>(coverage.size.width * coverage.size.height));
      EXPECT_NEAR(coverage.size.width, largest.size.width * ratio, 0.08 * largest.size.width * ratio)
          << scale;
      EXPECT_NEAR(coverage.size.height, largest.size.height * ratio, 1.01) << scale;
      EXPECT_NEAR(ink(coverage), ink(largest) * ratio * ratio, 0.2 * ink(largest) * ratio * ratio) << scale;
      EXPECT_EQ(coverage.size.width % cellsOf(text), 0);
    }
  }
}

TEST(Resources, tellTheDesktopsScale) {
  EXPECT_EQ(scaleFromResources("Xcursor.size:\t24\nXft.dpi:\t192\nXft.hinting:\t1\n"), 2);
  EXPECT_EQ(scaleFromResources("Xft.dpi: 144"), 1.5);
  for (const char* useless : {"", "Xft.dpi:", "Xft.dpi: many", "Xft.dpi:\t-96\n", "\n\n"})
    EXPECT_EQ(scaleFromResources(useless), 1) << useless;
}
