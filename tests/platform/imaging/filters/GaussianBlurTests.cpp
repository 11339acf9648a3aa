#include "platform/imaging/filters/GaussianBlur.h"
#include "tests/platform/imaging/filters/FilterPictures.h"

#include <QColorSpace>

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>
#include <vector>

using namespace filter_pictures;
using namespace platform;

namespace {

/// What each of a row's or column's pixels counts for in each result: a gaussian up to 5 sigma, its parts
/// beyond the edges laid on the edge pixels.
std::vector<std::vector<double>> exactWeights(int pixels, double sigma) {
  const int radius = static_cast<int>(std::ceil(5 * sigma));
  double sum = 0;
  for (int offset = -radius; offset <= radius; ++offset)
    sum += std::exp(-offset * offset / (2 * sigma * sigma));
  std::vector<std::vector<double>> weights(static_cast<size_t>(pixels),
                                           std::vector<double>(static_cast<size_t>(pixels)));
  for (int at = 0; at < pixels; ++at)
    for (int offset = -radius; offset <= radius; ++offset)
      weights[static_cast<size_t>(at)][static_cast<size_t>(std::clamp(at + offset, 0, pixels - 1))] +=
          std::exp(-offset * offset / (2 * sigma * sigma)) / sum;
  return weights;
}

/// The largest difference of a channel from the exact blur, which is not rounded.
double worstError(const QImage& source, const QImage& blurred, double sigma) {
  const int width = source.width();
  const int height = source.height();
  const auto across = exactWeights(width, sigma);
  const auto down = exactWeights(height, sigma);
  std::vector<double> rows(static_cast<size_t>(width * height * 4));
  const auto at = [&](int x, int y, int channel) -> double& {
    return rows[static_cast<size_t>((y * width + x) * 4 + channel)];
  };
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      for (int from = 0; from < width; ++from)
        for (int channel = 0; channel < 4; ++channel)
          at(x, y, channel) += across[static_cast<size_t>(x)][static_cast<size_t>(from)] *
                               source.constScanLine(y)[4 * from + channel];
  double worst = 0;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width * 4; ++x) {
      double exact = 0;
      for (int from = 0; from < height; ++from)
        exact += down[static_cast<size_t>(y)][static_cast<size_t>(from)] * at(0, from, x);
      worst = std::max(worst, std::abs(blurred.constScanLine(y)[x] - exact));
    }
  }
  return worst;
}

/// Sigmas on both sides of where the way to blur changes, and at the ends.
constexpr double telling[] = {0.1,  0.5, 1,  3.99, 4,  5.99,  6,   7.9, 8,
                              11.9, 14,  24, 40.3, 96, 122.9, 200, 1000};

}  // namespace

TEST(GaussianBlur, isAGaussianWithinAFractionOfALevel) {
  const unsigned seed = freshSeed();
  SCOPED_TRACE(seed);
  Random random(seed);
  double worst = 0;
  for (int round = 0; round < 60; ++round) {
    const double sigma = evenOnLogScale(0.5, 200, random);
    const QImage picture = randomPicture(between(1, 120, random), between(1, 120, random), random);
    const QImage blurred = gaussianBlur(picture, sigma);
    ASSERT_EQ(blurred.size(), picture.size());
    const double error = worstError(picture, blurred, sigma);
    worst = std::max(worst, error);
    // Half a level is rounding; no picture can make the rest larger than this.
    EXPECT_LT(error, 0.75) << "sigma " << sigma << ", " << picture.width() << "x" << picture.height();
  }
  RecordProperty("worst error in thousandths of a level", static_cast<int>(worst * 1000));
}

// The widest difference between nodes and sigma, and the frequency that folds most onto what the gaussian
// lets pass.
TEST(GaussianBlur, isNotFooledByStripesThatBeatWithItsNodes) {
  for (const double sigma : {4.0, 6.0, 8.0, 12.0, 16.0}) {
    const double nodes = sigma / 2;
    for (const double detuning : {-1.0, 1.0}) {
      const double period = 1 / (1 / nodes + detuning / (M_PI * sigma));
      QImage picture(101, 90, QImage::Format_RGBA8888_Premultiplied);
      picture.fill(Qt::white);
      for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width() * 4; ++x)
          picture.scanLine(y)[x] =
              std::fmod(y, period) < period / 2 || std::fmod(x / 4, period) < period / 2 ? 255 : 0;
      EXPECT_LT(worstError(picture, gaussianBlur(picture, sigma), sigma), 0.75) << sigma;
    }
  }
}

TEST(GaussianBlur, givesTheSamePixelsForAPartWithLessOfTheMachineAndInPlace) {
  const unsigned seed = freshSeed();
  SCOPED_TRACE(seed);
  Random random(seed);
  for (const double sigma : telling) {
    const QImage picture = randomPicture(between(200, 400, random), between(200, 400, random), random);
    const QImage untouched = picture.copy();
    const QImage whole = gaussianBlur(picture, sigma);
    EXPECT_EQ(picture, untouched) << sigma;
    EXPECT_EQ(gaussianBlur(picture, sigma, {}, {Cores::One, Instructions::Widest}), whole) << sigma;
    EXPECT_EQ(gaussianBlur(picture, sigma, {}, {Cores::All, Instructions::Plain}), whole) << sigma;
    QImage own = picture.copy();
    const uchar* memory = own.constBits();
    const QImage inPlace = gaussianBlur(std::move(own), sigma);
    EXPECT_EQ(inPlace, whole) << sigma;
    EXPECT_TRUE(sigma < 4 || inPlace.constBits() == memory) << sigma;
    for (int round = 0; round < 6; ++round) {
      const QRect region = randomRegion(picture.size(), random);
      EXPECT_EQ(gaussianBlur(picture, sigma, region), whole.copy(region & picture.rect())) << sigma;
    }
  }
}

TEST(GaussianBlur, looksNoFurtherThanItsReach) {
  Random random(1);
  for (const double sigma : {0.5, 3.0, 4.0, 7.0, 14.0, 20.0}) {
    const int reach = gaussianReach(sigma);
    EXPECT_LE(reach, std::ceil(7 * sigma)) << sigma;
    const QImage picture = randomPicture(331, 307, random);
    const QRect region(150, 140, 20, 30);
    const QRect seen = region.adjusted(-reach, -reach, reach, reach);
    EXPECT_EQ(gaussianBlur(changedOutside(seen, picture), sigma, region),
              gaussianBlur(picture, sigma, region))
        << sigma;
  }
}

TEST(GaussianBlur, keepsAFlatPictureFlat) {
  for (const double sigma : telling) {
    for (const QSize& size : {QSize(1, 1), QSize(1, 77), QSize(90, 1), QSize(83, 61)}) {
      for (int level = 0; level < 256; level += 17) {
        QImage picture(size, QImage::Format_RGBA8888_Premultiplied);
        picture.fill(qRgba(0, level / 2, 255 - level, 255));
        EXPECT_EQ(gaussianBlur(picture, sigma), picture) << sigma << ", level " << level;
      }
    }
  }
}

TEST(GaussianBlur, keepsColoursBelowTheirAlpha) {
  Random random(2);
  for (const double sigma : telling) {
    const QImage blurred = gaussianBlur(randomPicture(150, 110, random), sigma);
    for (int y = 0; y < blurred.height(); ++y)
      for (int x = 0; x < blurred.width(); ++x)
        for (int channel = 0; channel < 3; ++channel)
          ASSERT_LE(blurred.constScanLine(y)[4 * x + channel], blurred.constScanLine(y)[4 * x + 3]) << sigma;
  }
}

TEST(GaussianBlur, refusesWhatItCannotBlur) {
  Random random(3);
  const QImage picture = randomPicture(20, 10, random);
  for (const double sigma :
       {-1.0, 10'001.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    EXPECT_TRUE(gaussianBlur(picture, sigma).isNull());
    EXPECT_EQ(gaussianReach(sigma), 0);
  }
  EXPECT_TRUE(gaussianBlur({}, 4).isNull());
  EXPECT_TRUE(gaussianBlur(picture.convertToFormat(QImage::Format_ARGB32_Premultiplied), 4).isNull());
  EXPECT_TRUE(gaussianBlur(picture, 4, QRect(20, 0, 5, 5)).isNull());
  EXPECT_EQ(gaussianBlur(picture, 0), picture);
  EXPECT_FALSE(gaussianBlur(picture, maximumSigma).isNull());
}

// Large results lie in memory of another kind.
TEST(GaussianBlur, keepsWhatBelongsToThePictureBesidesPixels) {
  for (const QSize& size : {QSize(30, 20), QSize(1300, 1000)}) {
    QImage picture(size, QImage::Format_RGBA8888_Premultiplied);
    picture.fill(Qt::red);
    picture.setColorSpace(QColorSpace::SRgb);
    picture.setDevicePixelRatio(2);
    QImage blurred = gaussianBlur(picture, 5);
    EXPECT_EQ(blurred, picture);
    EXPECT_EQ(blurred.colorSpace(), QColorSpace(QColorSpace::SRgb));
    EXPECT_EQ(blurred.devicePixelRatio(), 2);
  }
}
