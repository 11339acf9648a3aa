#include "app/editor/view/PopoverGeometry.h"
#include "app/editor/view/PopoverTiming.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;
using namespace sorrel;
using Change = PopoverTiming::Change;

namespace {

class PopoverTimingTest : public testing::Test {
 protected:
  platform::ManualClock clock;
  std::vector<Change> changes;
  PopoverTiming timing{[this](Change change) { changes.push_back(change); }};
};

TEST_F(PopoverTimingTest, HidesTwoSecondsAfterThePointerHasLeft) {
  timing.scheduleHide();  // it has appeared
  clock.advance(1999ms);
  EXPECT_TRUE(timing.isVisible());
  timing.keep();  // the pointer enters
  clock.advance(1h);
  EXPECT_TRUE(timing.isVisible());
  timing.scheduleHide();  // and leaves
  clock.advance(1500ms);
  timing.show();  // another tool
  clock.advance(1999ms);
  EXPECT_TRUE(changes.empty());
  clock.advance(1ms);
  EXPECT_EQ(changes, std::vector{Change::hiddenByItself});
  timing.keep();
  clock.advance(1h);
  timing.hideNow();
  EXPECT_EQ(changes, (std::vector{Change::hiddenByItself, Change::shown, Change::hiddenNow}));
  timing.show();
  timing.hideNow();
  timing.show();
  clock.advance(1999ms);
  EXPECT_TRUE(timing.isVisible()) << "the deadline of before doesn't count";
  EXPECT_EQ(clock.pending(), 1);
}

TEST_F(PopoverTimingTest, StaysWhileAColorIsPicked) {
  timing.scheduleHide();
  timing.beginWorkElsewhere();
  timing.scheduleHide();  // the pointer leaves, for the eyedropper
  clock.advance(1h);
  EXPECT_TRUE(timing.isVisible());
  timing.endWorkElsewhere();
  clock.advance(2s);
  EXPECT_FALSE(timing.isVisible());
}

TEST(PopoverGeometry, FitsItsContentAndTheWindow) {
  EXPECT_EQ(PopoverGeometry::popover(0, 744, 0), QRect(55, 65, 209, 667));
  EXPECT_EQ(PopoverGeometry::popover(1, 744, 230), QRect(55, 113, 209, 230));
  EXPECT_EQ(PopoverGeometry::popover(2, 400, 500), QRect(55, 161, 209, 227)) << "the rest scrolls";
  EXPECT_EQ(PopoverGeometry::popover(2, 256, 500), QRect(55, 161, 209, 180)) << "beyond the lower edge";
  EXPECT_EQ(PopoverGeometry::popover(2, 256, 120), QRect(55, 161, 209, 120));
}

}  // namespace
