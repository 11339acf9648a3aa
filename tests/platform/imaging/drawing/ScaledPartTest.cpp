#include "platform/imaging/drawing/ScaledPart.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

using namespace platform;

namespace {

QImage noise(const QSize& size) {
  QImage picture(size, QImage::Format_RGBA8888_Premultiplied);
  std::mt19937 random(3);
  for (int y = 0; y < size.height(); ++y)
    for (int x = 0; x < size.width(); ++x)
      reinterpret_cast<quint32*>(picture.scanLine(y))[x] = quint32(random()) | 0xff000000U;
  return picture;
}

QImage wholeOf(const QImage& picture, const QSize& scaled, Enlarging enlarging = Enlarging::Smooth) {
  return scaledPart({picture, {0, 0}, picture.size()}, scaled, QRect({0, 0}, scaled), enlarging);
}

/// By how much of each of the picture's pixels lies in the one at (x, y), or how near its middle is.
double redAt(const QImage& picture, const QSize& scaled, int x, int y, Enlarging enlarging) {
  const auto share = [enlarging](int from, int to, int place, int pixel) {
    const double step = double(from) / to;
    if (to <= from)
      return std::max(std::min((place + 1) * step, pixel + 1.0) - std::max(place * step, double(pixel)),
                      0.0) /
             step;
    const double middle = std::clamp((place + 0.5) * step, 0.5, from - 0.5);
    return enlarging == Enlarging::Smooth ? std::max(0.0, 1 - std::abs(middle - (pixel + 0.5)))
                                          : double(std::floor((place + 0.5) * step) == pixel);
  };
  double sum = 0;
  for (int row = 0; row < picture.height(); ++row)
    for (int column = 0; column < picture.width(); ++column)
      sum += picture.constScanLine(row)[4 * column] * share(picture.width(), scaled.width(), x, column) *
             share(picture.height(), scaled.height(), y, row);
  return sum;
}

TEST(ScaledPart, isTheMeanOfAnAreaOrASlopeBetweenPixels) {
  const QImage picture = noise({23, 17});
  EXPECT_EQ(wholeOf(picture, picture.size()), picture);
  for (const Enlarging enlarging : {Enlarging::Smooth, Enlarging::Squares})
    for (const QSize& scaled : {QSize(7, 5), QSize(22, 16), QSize(24, 40), QSize(120, 90), QSize(1, 1)}) {
      const QImage result = wholeOf(picture, scaled, enlarging);
      ASSERT_EQ(result.size(), scaled);
      for (int y = 0; y < scaled.height(); ++y)
        for (int x = 0; x < scaled.width(); ++x) {
          ASSERT_NEAR(result.constScanLine(y)[4 * x], redAt(picture, scaled, x, y, enlarging), 1.01)
              << scaled.width() << ": " << x << ", " << y;
          ASSERT_EQ(result.constScanLine(y)[4 * x + 3], 255);
        }
    }
}

TEST(ScaledPart, partsOfPartsFitTogether) {
  const QImage picture = noise({90, 70});
  std::mt19937 random(5);
  const auto below = [&](int bound) { return int(random() % unsigned(bound)); };
  for (const Enlarging enlarging : {Enlarging::Smooth, Enlarging::Squares})
    for (const QSize& scaled : {QSize(31, 24), QSize(89, 70), QSize(133, 104), QSize(700, 540)}) {
      const QImage whole = wholeOf(picture, scaled, enlarging);
      for (int round = 0; round < 20; ++round) {
        const QRect part =
            QRect(below(scaled.width()), below(scaled.height()), 1 + below(80), 1 + below(80)) & whole.rect();
        const QRect source = sourceOfScaledPart(picture.size(), scaled, part);
        EXPECT_EQ(
            scaledPart({picture.copy(source), source.topLeft(), picture.size()}, scaled, part, enlarging),
            whole.copy(part))
            << scaled.width();
      }
    }
}

}  // namespace
