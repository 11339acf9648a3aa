// What both filters promise, whatever they make of a picture.

#include "platform/imaging/filters/GaussianBlur.h"
#include "platform/imaging/filters/Pixellate.h"
#include "tests/platform/imaging/filters/FilterPictures.h"

#include <QColorSpace>

#include <gtest/gtest.h>
#include <limits>
#include <vector>

using namespace filter_pictures;
using namespace platform;

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

struct Filter {
  const char* name;
  QImage (*apply)(QImage picture, double strength, const QRect& region, const Effort& effort);
  int (*reach)(double strength);
  std::vector<double> strengths;
  double inPlaceFrom;  // the strength from which a picture of the caller's own is worked on where it lies
  std::vector<double> refused;
  double none;  // leaves a picture as it is
};

class FilterContract : public testing::TestWithParam<Filter> {
 protected:
  [[nodiscard]] static QImage apply(QImage picture, double strength, const QRect& region = {},
                                    const Effort& effort = {}) {
    return GetParam().apply(std::move(picture), strength, region, effort);
  }
};

INSTANTIATE_TEST_SUITE_P(
    Filters, FilterContract,
    testing::Values(
        // Sigmas on both sides of where the way to blur changes, and at the ends.
        Filter{"Gaussian",
               [](QImage picture, double sigma, const QRect& region, const Effort& effort) {
                 return gaussianBlur(std::move(picture), sigma, region, effort);
               },
               gaussianReach,
               {0.1, 0.5, 1, 3.99, 4, 5.99, 6, 7.9, 8, 11.9, 14, 24, 40.3, 96, 122.9, 200, 1000},
               4,
               {-1.0, maximumSigma + 1, nan, infinity},
               0},
        Filter{"Pixellate",
               [](QImage picture, double cellSize, const QRect& region, const Effort& effort) {
                 return pixellate(std::move(picture), cellSize, region, effort);
               },
               pixellateReach,
               {1.0, 1.5, 2.0, 6.0, 23.0, 66.24, 149.5, 1e300},
               1,
               {0.0, -6.0, nan, infinity},
               std::numeric_limits<double>::denorm_min()}),
    [](const auto& test) { return test.param.name; });

TEST_P(FilterContract, TheSamePixelsForAPartWithLessOfTheMachineAndInPlace) {
  const unsigned seed = freshSeed();
  SCOPED_TRACE(seed);
  Random random(seed);
  for (const double strength : GetParam().strengths) {
    SCOPED_TRACE(strength);
    const QImage picture = randomPicture(between(200, 500, random), between(200, 500, random), random);
    const QImage untouched = picture.copy();
    const QImage whole = apply(picture, strength);
    EXPECT_EQ(picture, untouched);
    EXPECT_EQ(apply(picture, strength, {}, {Cores::One, Instructions::Widest}), whole);
    EXPECT_EQ(apply(picture, strength, {}, {Cores::All, Instructions::Plain}), whole);
    QImage own = picture.copy();
    const uchar* memory = own.constBits();
    const QImage inPlace = apply(std::move(own), strength);
    EXPECT_EQ(inPlace, whole);
    EXPECT_TRUE(strength < GetParam().inPlaceFrom || inPlace.constBits() == memory);
    for (int round = 0; round < 6; ++round) {
      const QRect region = randomRegion(picture.size(), random);
      EXPECT_EQ(apply(picture, strength, region), whole.copy(region & picture.rect()));
    }
  }
}

TEST_P(FilterContract, NothingBeyondTheReachCounts) {
  Random random(1);
  for (const double strength : GetParam().strengths) {
    const int reach = GetParam().reach(strength);
    EXPECT_LE(reach, std::ceil(7 * strength)) << strength;
    if (reach > 150)
      continue;  // all of the picture
    const QImage picture = randomPicture(331, 307, random);
    const QRect region(150, 140, 20, 30);
    const QRect seen = region.adjusted(-reach, -reach, reach, reach);
    EXPECT_EQ(apply(changedOutside(seen, picture), strength, region), apply(picture, strength, region))
        << strength;
  }
}

TEST_P(FilterContract, WhatCannotBeFilteredIsRefused) {
  Random random(3);
  const QImage picture = randomPicture(20, 10, random);
  for (const double strength : GetParam().refused) {
    EXPECT_TRUE(apply(picture, strength).isNull()) << strength;
    EXPECT_EQ(GetParam().reach(strength), 0) << strength;
  }
  EXPECT_TRUE(apply({}, 6).isNull());
  EXPECT_TRUE(apply(picture.convertToFormat(QImage::Format_RGB32), 6).isNull());
  EXPECT_TRUE(apply(picture, 6, QRect(20, 0, 5, 5)).isNull());
  EXPECT_EQ(apply(picture, GetParam().none), picture);
}

// Large results lie in memory of another kind.
TEST_P(FilterContract, WhatBelongsToThePictureBesidesPixelsStays) {
  for (const QSize& size : {QSize(30, 20), QSize(1300, 1000)}) {
    QImage picture(size, QImage::Format_RGBA8888_Premultiplied);
    picture.fill(Qt::red);
    picture.setColorSpace(QColorSpace::SRgb);
    picture.setDevicePixelRatio(2);
    const QImage filtered = apply(picture, 5);
    EXPECT_EQ(filtered, picture);
    EXPECT_EQ(filtered.colorSpace(), QColorSpace(QColorSpace::SRgb));
    EXPECT_EQ(filtered.devicePixelRatio(), 2);
  }
}

}  // namespace
