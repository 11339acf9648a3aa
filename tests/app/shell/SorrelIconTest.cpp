#include "app/shell/AppColors.h"
#include "app/shell/SorrelIcon.h"

#include <QImage>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorrel;
using platform::Appearance;

namespace {

QImage pixels(const platform::Image& image) {
  return image.icon.pixmap(18, 18).toImage();
}

TEST(SorrelIconTest, TellsEmptyFromNotAndNothingElse) {
  const auto empty = SorrelIcon::image(0, 18);
  const auto one = SorrelIcon::image(1, 18);
  const auto many = SorrelIcon::image(500, 18);
  EXPECT_EQ(pixels(one), pixels(many));
  EXPECT_NE(pixels(one), pixels(empty));
  EXPECT_EQ(pixels(SorrelIcon::image(-1, 18)), pixels(empty));
  EXPECT_EQ(one.size, QSizeF(18, 18));
  EXPECT_EQ(many.accessibilityDescription, u"Sorrel — 500 screenshots"_s);
}

TEST(AppColorsTest, FollowTheAppearance) {
  EXPECT_EQ(AppColors::accent.resolved(Appearance::Light), QColor(0x3B, 0x6B, 0x2F));
  EXPECT_EQ(AppColors::accent.resolved(Appearance::Dark), QColor(0x6F, 0xAE, 0x4E));
  EXPECT_EQ(AppColors::inkOnAmber.resolved(Appearance::Light),
            AppColors::inkOnAmber.resolved(Appearance::Dark));
  EXPECT_LT(AppColors::separator.resolved(Appearance::Dark).alpha(), 64);
}

}  // namespace
