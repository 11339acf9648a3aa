#include "platform/desktop/Screens.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

TEST(ScreensTest, TheKeyboardIsWhereTheActiveWindowIsElseWhereThePointerIs) {
  const std::vector<QRect> all{{0, 0, 800, 600}, {800, 0, 800, 900}};
  const QPoint left(10, 10), right(900, 10);
  const QRect desktopWindow(0, 0, 1600, 900);
  EXPECT_EQ(screenWithKeyboard(all, QRect(700, 0, 400, 100), left), 1u) << "most of it is there";
  EXPECT_EQ(screenWithKeyboard(all, all[0], right), 0u) << "a window that fills its screen";
  EXPECT_EQ(screenWithKeyboard(all, std::nullopt, right), 1u);
  EXPECT_EQ(screenWithKeyboard(all, desktopWindow, right), 1u);
  EXPECT_EQ(screenWithKeyboard(all, QRect(5000, 0, 10, 10), right), 0u);
  EXPECT_EQ(screenWithKeyboard({all[0]}, desktopWindow, right), 0u);
}

TEST(ScreensTest, BarsTakeTheirStripFromTheScreenTheyStandOn) {
  // One above the other, the lower one wider; the bar of the lower one stands at its upper edge.
  const QRect upper(0, 0, 800, 600), lower(0, 600, 1000, 700);
  const QSize root(1000, 1300);
  const std::vector<X11Bar> bars{{{0, 600, 1000, 28}, {0, 628, 0, 0}},
                                 {{0, 1270, 1000, 30}, {0, 0, 0, 30}},
                                 {{770, 0, 30, 600}, {0, 0, 230, 0}}};
  EXPECT_EQ(visiblePart(upper, root, bars), QRect(0, 0, 770, 600));
  EXPECT_EQ(visiblePart(lower, root, bars), QRect(0, 628, 1000, 642));
  EXPECT_EQ(visiblePart(upper, root, {{upper, {800, 0, 0, 0}}}), upper) << "a strip that leaves nothing";
}

TEST(ScreensTest, BarsOfWhichOnlyTheSizeIsKnownAreWhereTheTrayIs) {
  const QRectF screen(1000, 0, 800, 600);
  const QSizeF free(800, 570);
  EXPECT_EQ(visiblePart(screen, free, QPointF(1790, 590)), QRectF(1000, 0, 800, 570));
  EXPECT_EQ(visiblePart(screen, free, QPointF(1790, 10)), QRectF(1000, 30, 800, 570));
  EXPECT_EQ(visiblePart(screen, free, std::nullopt), QRectF(1000, 30, 800, 570));
  EXPECT_EQ(visiblePart(screen, free, QPointF(10, 590)), QRectF(1000, 30, 800, 570)) << "on another screen";
  EXPECT_EQ(visiblePart(screen, QSizeF(760, 600), QPointF(1790, 300)), QRectF(1000, 0, 760, 600));
}

}  // namespace
