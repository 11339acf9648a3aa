#include "platform/desktop/Motion.h"

#include <QApplication>
#include <QProxyStyle>

#include <gtest/gtest.h>
#include <memory>
#include <vector>

using namespace platform;
using namespace std::chrono_literals;

namespace {

/// What the desktop says of animations.
class Style : public QProxyStyle {
 public:
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    return hint == SH_Widget_Animation_Duration ? duration
                                                : QProxyStyle::styleHint(hint, option, widget, data);
  }
  int duration = 200;
};

class MotionTest : public testing::Test {
 protected:
  MotionTest() { QApplication::setStyle(style); }

  Style* const style = new Style;  // the application's
  ManualClock clock;
  std::vector<double> steps;
  std::unique_ptr<Motion> motion =
      std::make_unique<Motion>(160ms, Easing::Out, [this](double value) { steps.push_back(value); });
};

TEST_F(MotionTest, GoesAllTheWayAndRests) {
  motion->moveTo(1);
  EXPECT_TRUE(steps.empty()) << "no step before the next frame";
  clock.advance(80ms);
  EXPECT_GT(motion->value(), 0.6) << "ahead of half, since it slows down";
  clock.advance(1s);
  ASSERT_GE(steps.size(), 9u);
  EXPECT_TRUE(std::ranges::is_sorted(steps));
  EXPECT_EQ(steps.back(), 1);
  EXPECT_EQ(clock.pending(), 0) << "nothing wakes the program while nothing moves";
}

TEST_F(MotionTest, TurnsRoundOnItsWayWithoutAJump) {
  motion->moveTo(1);
  clock.advance(64ms);
  const double turningPoint = motion->value();
  steps.clear();
  motion->moveTo(0);
  clock.advance(16ms);
  EXPECT_LT(turningPoint - steps.front(), 0.2);
  EXPECT_GT(turningPoint, steps.front());
  clock.advance(1s);
  EXPECT_EQ(steps.back(), 0);
}

TEST_F(MotionTest, EndsWithItsOwnerWhichAStepMayEnd) {
  motion->moveTo(1);
  clock.advance(32ms);
  motion.reset();
  EXPECT_EQ(clock.pending(), 0);
  for (const int duration : {200, 0}) {
    style->duration = duration;
    motion = std::make_unique<Motion>(160ms, Easing::InOut, [this](double) { motion.reset(); });
    motion->moveTo(1);
    clock.advance(1s);
    EXPECT_EQ(motion, nullptr);
  }
}

TEST_F(MotionTest, NothingMovesWhereTheDesktopAsksForThat) {
  style->duration = 0;
  motion->moveTo(1);
  EXPECT_EQ(steps, std::vector{1.0});
  int turned = 0;
  Rotation rotation(40ms, 4, [&] { ++turned; });
  rotation.start();
  EXPECT_EQ(clock.pending(), 0);
  style->duration = 200;
  rotation.start();
  rotation.start();
  clock.advance(120ms);
  EXPECT_EQ(turned, 3) << "one rotation, though it was started twice";
  EXPECT_EQ(rotation.turn(), 0.75);
  clock.advance(40ms);
  EXPECT_EQ(rotation.turn(), 0);
  rotation.stop();
  EXPECT_EQ(clock.pending(), 0);
}

}  // namespace
