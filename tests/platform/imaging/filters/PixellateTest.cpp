#include "platform/imaging/filters/Pixellate.h"
#include "tests/platform/imaging/filters/FilterPictures.h"

#include <array>
#include <gtest/gtest.h>
#include <map>
#include <utility>

using namespace filter_pictures;
using namespace platform;

namespace {

/// Pixel by pixel: which cell is it in, and what is the mean there.
QImage slowlyPixellated(const QImage& picture, double cellSize) {
  using Cell = std::pair<double, double>;
  const auto cellOf = [&](int x, int y) {
    const double upwards = picture.height() - (y + 0.5);
    return Cell(std::floor((x + 0.5 - 150) / cellSize), std::floor((upwards - 150) / cellSize));
  };
  std::map<Cell, std::array<double, 5>> sums;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      std::array<double, 5>& sum = sums[cellOf(x, y)];
      for (int channel = 0; channel < 4; ++channel)
        sum[static_cast<size_t>(channel)] += picture.constScanLine(y)[4 * x + channel];
      sum[4] += 1;
    }
  }
  QImage result(picture.size(), picture.format());
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const std::array<double, 5>& sum = sums[cellOf(x, y)];
      for (int channel = 0; channel < 4; ++channel)
        result.scanLine(y)[4 * x + channel] =
            static_cast<uchar>(std::floor(sum[static_cast<size_t>(channel)] / sum[4] + 0.5));
    }
  }
  return result;
}

}  // namespace

TEST(Pixellate, isTheMeanOfEachCell) {
  const unsigned seed = freshSeed();
  SCOPED_TRACE(seed);
  Random random(seed);
  for (int round = 0; round < 80; ++round) {
    const double exact = evenOnLogScale(0.3, 500, random);
    const double cellSize = round % 2 ? exact : std::ceil(exact * 2) / 2;  // halves put centres on lines
    const QImage picture = randomPicture(between(1, 330, random), between(1, 330, random), random);
    const QImage cells = pixellate(picture, cellSize);
    ASSERT_EQ(cells, slowlyPixellated(picture, cellSize))
        << "cells of " << cellSize << ", " << picture.width() << "x" << picture.height();
  }
}

TEST(Pixellate, hasLinesThroughItsPointCountedFromTheLowerLeft) {
  QImage picture(200, 180, QImage::Format_RGBA8888_Premultiplied);
  picture.fill(Qt::black);
  picture.setPixelColor(150, 29, Qt::white);  // right above and to the right of the point
  const QImage cells = pixellate(picture, 10);
  for (int y = 0; y < 180; ++y)
    for (int x = 0; x < 200; ++x)
      ASSERT_EQ(cells.pixelColor(x, y).red(), QRect(150, 20, 10, 10).contains(x, y) ? 3 : 0)
          << x << ", " << y;
}
