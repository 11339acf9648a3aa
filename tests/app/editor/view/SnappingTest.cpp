#include "app/editor/view/Snapping.h"

#include <gtest/gtest.h>

using namespace sorrel;

namespace {

constexpr QSizeF picture(1000, 625);
constexpr QSizeF text(200, 40);

TEST(SnappingTest, KeepsToMarginsAndMiddleWithinReach) {
  const struct {
    QPointF proposed;
    QPointF center;
    std::optional<double> guideV;
    std::optional<double> guideH;
  } cases[] = {
      {{130, 200}, {124, 200}, 24, {}},       {{136, 200}, {124, 200}, 24, {}},
      {{137, 200}, {137, 200}, {}, {}},       {{-500, 50}, {-500, 44}, {}, 24},
      {{505, 320}, {500, 312.5}, 500, 312.5}, {{870, 590}, {876, 581}, 976, 601},
  };
  for (const auto& one : cases) {
    const Snap snap = applySnap(one.proposed, text, picture);
    EXPECT_EQ(snap.center, one.center) << one.proposed.x();
    EXPECT_EQ(snap.guideV, one.guideV) << one.proposed.x();
    EXPECT_EQ(snap.guideH, one.guideH) << one.proposed.x();
  }
}

TEST(SnappingTest, OfEquallyNearLinesTheFirstHolds) {
  // The margin's centre at 34, the middle at 50, and what is proposed between them.
  const Snap between = applySnap({42, 42}, QSizeF(20, 20), QSizeF(100, 100));
  EXPECT_EQ(between.center, QPointF(34, 34));
  EXPECT_EQ(between.guideV, 24);
  // So wide that both margins would hold its centre where the middle is.
  EXPECT_EQ(applySnap({500, 300}, QSizeF(952, 40), picture).guideV, 24);
}

}  // namespace
