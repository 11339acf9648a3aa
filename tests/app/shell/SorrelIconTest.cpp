#include "app/shell/SorrelIcon.h"

#include <QImage>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorrel;

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
  EXPECT_EQ(many.accessibilityDescription, u"Sorrel — 500 screenshots"_s);
}

}  // namespace
