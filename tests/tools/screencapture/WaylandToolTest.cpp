// The tool itself on a Wayland compositor, with a real pointer and real keys.

#include "tests/support/Files.h"
#include "tests/support/SwaySession.h"
#include "tests/support/Waiting.h"

#include <QFile>

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <random>

using namespace Qt::StringLiterals;
using namespace testing_support;

namespace {

constexpr int right = 3;

/// In which no two places look the same.
QImage noise(QSize size, unsigned seed) {
  std::mt19937 random(seed);
  QImage picture(size, QImage::Format_RGB32);
  for (int y = 0; y < size.height(); ++y)
    for (int x = 0; x < size.width(); ++x)
      picture.setPixel(x, y, 0xff000000 | (random() & 0xffffff));
  return picture;
}

SwayOptions outputs(double scale, int count = 1) {
  SwayOptions options;
  options.outputs.clear();
  for (int i = 0; i < count; ++i)
    options.outputs.push_back({{600, 480}, scale, {static_cast<int>(600 / scale) * i, 0}});
  return options;
}

/// The session with noise on its outputs, and the tool in it.
struct Desk {
  explicit Desk(const SwayOptions& options) : session(options) {
    for (size_t i = 0; i < options.outputs.size(); ++i) {
      backgrounds.push_back(noise(options.outputs[i].pixels, static_cast<unsigned>(i)));
      session.setBackground(backgrounds.back(), i);
    }
  }

  /// The tool, once what it shows of the last output is there.
  [[nodiscard]] std::unique_ptr<Program> shown(const QStringList& words) {
    auto tool = session.start(QStringList{QStringLiteral(SORREL_CAPTURE_TOOL)} + words);
    const size_t last = backgrounds.size() - 1;
    until("the screen is frozen", [&] { return session.picture(last) != backgrounds[last]; });
    return tool;
  }
  [[nodiscard]] std::unique_ptr<Program> selecting() { return shown({u"-i"_s, file}); }
  void waitUntilGone() {
    until("the overlay is gone", [&] { return session.picture() == backgrounds.front(); });
  }
  [[nodiscard]] QImage taken() const { return QImage(file).convertToFormat(QImage::Format_RGB32); }

  SwaySession session;
  std::vector<QImage> backgrounds;
  const QString file = session.home(u"taken.png"_s);
};

}  // namespace

class WaylandCrop : public testing::TestWithParam<double> {};

TEST_P(WaylandCrop, isPixelForPixelWhatWasFrozen) {
  const double scale = GetParam();
  Desk desk(outputs(scale));
  const auto tool = desk.selecting();
  desk.session.drag({40, 20}, {160, 120});
  EXPECT_EQ(tool->waitForEnd(), 0) << tool->errors().constData();
  const auto pixel = [scale](int at) { return static_cast<int>(at * scale); };
  const QRect area(QPoint(pixel(40), pixel(20)), QPoint(pixel(160), pixel(120)));
  EXPECT_EQ(desk.taken(), desk.backgrounds[0].copy(area));
  desk.waitUntilGone();
}

INSTANTIATE_TEST_SUITE_P(Scales, WaylandCrop, testing::Values(1, 1.5, 2));

TEST(WaylandTool, takesAPartThatLiesOnTwoOutputs) {
  Desk desk(outputs(2, 2));
  const auto tool = desk.selecting();
  desk.session.drag({280, 20}, {340, 60});
  EXPECT_EQ(tool->waitForEnd(), 0) << tool->errors().constData();
  const QImage taken = desk.taken();
  ASSERT_EQ(taken.size(), QSize(121, 81));
  EXPECT_EQ(taken.copy(0, 0, 40, 81), desk.backgrounds[0].copy(560, 40, 40, 81));
  EXPECT_EQ(taken.copy(40, 0, 81, 81), desk.backgrounds[1].copy(0, 40, 81, 81));
}

TEST(WaylandTool, oneSelectionIsOpenAtATimeAndTheNextMayBeginWhenItIsGone) {
  Desk desk(outputs(1));
  for (int i = 0; i < 3; ++i) {
    const auto tool = desk.selecting();
    const QImage frozen = desk.session.settledPicture();
    const auto second = desk.session.start({QStringLiteral(SORREL_CAPTURE_TOOL), u"-i"_s, desk.file});
    EXPECT_EQ(second->waitForEnd(), 1);
    EXPECT_EQ(second->errors(), "screencapture: another selection is open\n");
    EXPECT_EQ(desk.session.settledPicture(), frozen);
    desk.session.input().tapKey(KEY_ESC);
    desk.waitUntilGone();
  }
}

TEST(WaylandTool, leavesNothingWhenItIsCancelled) {
  Desk desk(outputs(1));
  const std::function<void()> ways[] = {[&] { desk.session.input().tapKey(KEY_ESC); },
                                        [&] { desk.session.input().clickButton(right); },
                                        [&] {
                                          desk.session.moveTo({100, 100});
                                          desk.session.input().pressButton(1);
                                          desk.session.moveTo({200, 200});
                                          desk.session.input().tapKey(KEY_ESC);
                                          desk.session.input().releaseButton(1);
                                        }};
  for (const auto& way : ways) {
    const auto tool = desk.selecting();
    way();
    EXPECT_EQ(tool->waitForEnd(), 1);
    EXPECT_EQ(tool->errors(), "");
    EXPECT_FALSE(QFile::exists(desk.file));
    desk.waitUntilGone();
  }
}

TEST(WaylandTool, picksThePixelToWhichTheArrowsHaveGone) {
  Desk desk(outputs(1));
  desk.session.moveTo({300, 200});
  const auto tool = desk.shown({u"--pick-color"_s});
  desk.session.input().tapKey(KEY_RIGHT);
  desk.session.input().pressKey(KEY_LEFTSHIFT);
  desk.session.input().tapKey(KEY_DOWN);
  desk.session.input().releaseKey(KEY_LEFTSHIFT);
  desk.session.moveTo({302, 200});  // the hand goes on from there
  desk.session.input().clickButton(1);
  EXPECT_EQ(tool->waitForEnd(), 0) << tool->errors().constData();
  EXPECT_EQ(tool->output().trimmed(), desk.backgrounds[0].pixelColor(303, 210).name().toUpper().toLatin1());
}
