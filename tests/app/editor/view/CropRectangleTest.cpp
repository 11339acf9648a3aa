#include "app/editor/view/CropRectangle.h"

#include <gtest/gtest.h>
#include <random>

using namespace sorrel;

namespace {

constexpr QSizeF picture(1000, 625);

TEST(CropRectangleTest, TakesTheHandleInReach) {
  const QRectF rectangle(100, 100, 400, 300);
  const struct {
    QPointF point;
    double scale;
    std::optional<CropHandle> expected;
  } cases[] = {
      {{82, 82}, 1, CropHandle::topLeft},
      {{81.9, 100}, 1, std::nullopt},
      {{518, 90}, 1, CropHandle::topRight},
      {{110, 415}, 1, CropHandle::bottomLeft},
      {{490, 390}, 1, CropHandle::bottomRight},
      {{300, 117}, 1, CropHandle::top},
      {{300, 383}, 1, CropHandle::bottom},
      {{100, 250}, 1, CropHandle::left},
      {{500, 250}, 1, CropHandle::right},
      {{300, 250}, 1, CropHandle::move},
      {{300, 50}, 1, std::nullopt},
      // The reach is as long on the screen at each scale.
      {{300, 64}, 0.5, CropHandle::top},
      {{300, 110}, 2, CropHandle::move},
      {{300, 109}, 2, CropHandle::top},
      {{300, 250}, 0.01, CropHandle::topLeft},
  };
  for (const auto& one : cases)
    EXPECT_EQ(cropHandle(one.point, rectangle, one.scale), one.expected)
        << one.point.x() << ", " << one.point.y() << " at " << one.scale;
  const QRectF small(100, 100, 30, 30);
  for (int x = 100; x <= 130; ++x)
    for (int y = 100; y <= 130; ++y)
      EXPECT_NE(cropHandle(QPointF(x, y), small, 1), CropHandle::move);
  EXPECT_EQ(cropHandle(QPointF(115, 115), small, 1), CropHandle::topLeft) << "as near to each corner";
}

TEST(CropRectangleTest, DragsKeepItOnThePictureAndLargeEnough) {
  const QRectF start(100, 100, 400, 300);
  EXPECT_EQ(applyCropDrag(CropHandle::left, start, {1000, 50}, picture), QRectF(476, 100, 24, 300));
  EXPECT_EQ(applyCropDrag(CropHandle::bottomRight, start, {-1000, 1000}, picture), QRectF(100, 100, 24, 525));
  EXPECT_EQ(applyCropDrag(CropHandle::move, start, {900, -900}, picture), QRectF(600, 0, 400, 300));
  EXPECT_EQ(applyCropDrag(CropHandle::top, QRectF(100, 100, 10, 300), {0, 20}, picture),
            QRectF(100, 120, 24, 280))
      << "too narrow from the start: the far edge gives way";
  EXPECT_EQ(applyCropDrag(CropHandle::topLeft, QRectF(0, 0, 16, 16), {5, 5}, QSizeF(16, 16)),
            QRectF(-8, -8, 24, 24))
      << "a picture smaller than the smallest rectangle";

  std::mt19937 random(11);
  const auto within = [&](double low, double high) {
    return std::uniform_real_distribution(low, high)(random);
  };
  for (int i = 0; i < 20000; ++i) {
    const QRectF from(within(0, 500), within(0, 300), within(24, 500), within(24, 325));
    const auto handle = static_cast<CropHandle>(i % 9);
    const QRectF to = applyCropDrag(handle, from, {within(-1200, 1200), within(-1200, 1200)}, picture);
    ASSERT_GE(to.left(), -1e-9);
    ASSERT_GE(to.top(), -1e-9);
    ASSERT_LE(to.right(), picture.width() + 1e-9);
    ASSERT_LE(to.bottom(), picture.height() + 1e-9);
    ASSERT_GE(std::min(to.width(), to.height()), 24 - 1e-9);
    using enum CropHandle;
    const bool isHeldAcross = handle == top || handle == bottom;
    const bool isHeldAlong = handle == left || handle == right;
    ASSERT_TRUE(!isHeldAcross || (to.left() == from.left() && to.right() == from.right()));
    ASSERT_TRUE(!isHeldAlong || (to.top() == from.top() && to.bottom() == from.bottom()));
  }
}

TEST(CropRectangleTest, HalfAUnitIsNoCrop) {
  EXPECT_FALSE(isCropModified(QRectF(QPointF(), picture), picture));
  EXPECT_FALSE(isCropModified(QRectF(0.4, 0, 999.6, 625), picture));
  EXPECT_TRUE(isCropModified(QRectF(0.6, 0, 999.4, 625), picture));
  EXPECT_TRUE(isCropModified(QRectF(0, 0, 1000, 624), picture));
}

}  // namespace
