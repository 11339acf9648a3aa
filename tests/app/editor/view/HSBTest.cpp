#include "app/editor/view/HSB.h"

#include <gtest/gtest.h>

using namespace sorrel;

namespace {

TEST(HSB, LeadsToTheColorAndBack) {
  EXPECT_EQ(hsbToHex({0, 1, 1}), 0xFF0000U);
  EXPECT_EQ(hsbToHex({1, 1, 1}), 0xFF0000U) << "the hue is a circle";
  EXPECT_EQ(hsbToHex({0.7, 0, 0.5}), 0x808080U);
  EXPECT_NEAR(rgbToHSB({1, 0, 1}).hue, 5.0 / 6, 1e-12);
  // Each colour of a coarse grid comes back as it was, and its hue is the toolkit-independent definition's.
  for (quint32 hex = 0; hex <= 0xFFFFFF; hex += 0x050B07) {
    PickerPosition position;
    position.seed(hex);
    EXPECT_EQ(hsbToHex(position), hex) << std::hex << hex;
    EXPECT_TRUE(position.hue >= 0 && position.hue < 1);
  }
  EXPECT_NEAR(rgbToHSB({0, 1, 0}).hue, 1.0 / 3, 1e-12);
  EXPECT_NEAR(rgbToHSB({0, 0.5, 1}).hue, 7.0 / 12, 1e-12);
}

TEST(HSB, AGreyKeepsThePickersHue) {
  PickerPosition position;
  position.seed(0x2D7FF9);
  const double hue = position.hue;
  for (const quint32 grey : {0xFFFFFFU, 0x000000U, 0x808080U}) {
    position.seed(grey);
    EXPECT_EQ(position.hue, hue);
    EXPECT_EQ(position.saturation, 0);
    EXPECT_EQ(hsbToHex(position), grey);
  }
  position.saturation = 1;
  EXPECT_NEAR(rgbToHSB(hsbToRGB(position)).hue, hue, 1e-12);
}

}  // namespace
