#include "platform/imaging/filters/GaussianBlur.h"
#include "tests/platform/imaging/filters/FilterPictures.h"

#include <algorithm>
#include <gtest/gtest.h>
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
