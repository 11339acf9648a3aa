#include "platform/imaging/drawing/LineMask.h"

#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <vector>

using platform::LineMask;

namespace {

using Line = std::vector<QPointF>;

/// Of each pixel of an area, from 0 to 1.
using Coverage = std::vector<double>;

constexpr QRect area(-30, -20, 190, 150);

Coverage coverageOf(const LineMask& mask, const QRect& part = area) {
  Coverage coverage(size_t(area.width() * area.height()));
  mask.forEachStretch(part, [&](int x, int y, const LineMask::Samples* samples, int count) {
    for (int i = 0; i < count; ++i)
      coverage[size_t((y - area.top()) * area.width() + x + i - area.left())] =
          std::popcount(samples[i]) / double(LineMask::samplesPerPixel);
  });
  return coverage;
}

LineMask maskOf(const Line& line, double width) {
  LineMask mask(width, area);
  for (const QPointF& point : line)
    mask.append(point);
  return mask;
}

double distance(const QPointF& from, const Line& line) {
  double nearest = 1e18;
  for (size_t i = 0; i < line.size(); ++i) {
    const QPointF along = line[std::min(i + 1, line.size() - 1)] - line[i];
    const double length = QPointF::dotProduct(along, along);
    const double at =
        length > 0 ? std::clamp(QPointF::dotProduct(from - line[i], along) / length, 0.0, 1.0) : 0;
    const QPointF off = from - line[i] - at * along;
    nearest = std::min(nearest, std::hypot(off.x(), off.y()));
  }
  return nearest;
}

/// How much of each pixel is within half a width of the line, counted at 32 by 32 places in it.
Coverage exactCoverage(const Line& line, double width) {
  Coverage coverage;
  for (int y = area.top(); y <= area.bottom(); ++y)
    for (int x = area.left(); x <= area.right(); ++x) {
      const double middle = distance({x + 0.5, y + 0.5}, line);
      int inside = middle < width / 2 ? 1024 : 0;
      if (std::abs(middle - width / 2) < 0.75) {
        inside = 0;
        for (int i = 0; i < 1024; ++i)
          inside += distance({x + (i % 32 + 0.5) / 32, y + (i / 32 + 0.5) / 32}, line) <= width / 2;
      }
      coverage.push_back(inside / 1024.0);
    }
  return coverage;
}

double worstLevels(const Coverage& left, const Coverage& right) {
  double worst = 0;
  for (size_t i = 0; i < left.size(); ++i)
    worst = std::max(worst, std::abs(left[i] - right[i]) * 255);
  return worst;
}

class Random {
 public:
  explicit Random(unsigned seed) : engine(seed) {}
  double between(double least, double most) { return std::uniform_real_distribution(least, most)(engine); }

  /// A walk that crosses itself, in steps from a fraction of a pixel to half the area.
  Line line() {
    Line points{{between(0, 130), between(0, 110)}};
    const double step = std::exp(between(-1, 4.5));
    const double bend = between(0.1, 3);
    double direction = between(0, 6.3);
    for (int i = 0; i < 1 + int(300 / (10 + step)); ++i) {
      direction += between(-bend, bend);
      points.push_back(points.back() + step * QPointF(std::cos(direction), std::sin(direction)));
    }
    return points;
  }

 private:
  std::mt19937 engine;
};

TEST(LineMask, isWithin16LevelsOfTheAreaThatALineCovers) {
  Random random(1);
  for (int round = 0; round < 40; ++round) {
    const Line line = random.line();
    const double width = std::exp(random.between(0, 4.6));
    EXPECT_LE(worstLevels(coverageOf(maskOf(line, width)), exactCoverage(line, width)), 16)
        << "width " << width << ", round " << round;
  }
  // What comes from far away, turns on the spot, is one dot or lies on the grid.
  for (const Line& line :
       {Line{{-6e8, 41}, {6e8, 43}}, Line{{50, 50}, {80, 50}, {20, 50}, {50, 50}}, Line{{40.3, 60.8}},
        Line{{40.3, 60.8}, {40.3, 60.8}}, Line{{30, 30}, {90, 30}, {90, 90}, {30, 90}, {30, 30}},
        Line{{0, 0}, {100, 100}}, Line{{-500, -500}, {-400, 600}}})
    for (const double width : {1.0, 4.0, 5.0, 17.5})
      EXPECT_LE(worstLevels(coverageOf(maskOf(line, width)), exactCoverage(line, width)), 16) << width;
}

TEST(LineMask, isTheSameHoweverOftenThePenGoesBackAndForth) {
  Line once{{10, 20.3}, {100, 70.8}};
  Line often = once;
  for (int i = 0; i < 200; ++i) {
    const double at = (i * 37 % 100) / 99.0;
    often.push_back(once[0] + at * (once[1] - once[0]));
  }
  for (const double width : {1.5, 6.0, 30.0})
    EXPECT_LE(worstLevels(coverageOf(maskOf(often, width)), coverageOf(maskOf(once, width))), 12) << width;
}

TEST(LineMask, changesOnlyWhereItSays) {
  Random random(3);
  for (int round = 0; round < 10; ++round) {
    const double width = random.between(1, 40);
    LineMask mask(width, area);
    Coverage before = coverageOf(mask);
    for (const QPointF& point : random.line()) {
      const QRect changed = mask.append(point);
      const Coverage after = coverageOf(mask);
      for (int y = area.top(), i = 0; y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x, ++i)
          if (!changed.contains(x, y)) {
            ASSERT_EQ(after[size_t(i)], before[size_t(i)]) << x << ", " << y;
          }
      before = after;
    }
    const QRect part(13, 5, 70, 61);
    const Coverage inPart = coverageOf(mask, part);
    for (int y = area.top(), i = 0; y <= area.bottom(); ++y)
      for (int x = area.left(); x <= area.right(); ++x, ++i)
        ASSERT_EQ(inPart[size_t(i)], part.contains(x, y) ? before[size_t(i)] : 0) << x << ", " << y;
  }
}

TEST(LineMask, beginsAgainWithNothing) {
  LineMask mask(50, area);
  mask.append({-10, -10});
  mask.append({120, 100});
  mask.restart(5, area);
  EXPECT_EQ(coverageOf(mask), Coverage(size_t(area.width() * area.height())));
  const Line line{{10, 10}, {90, 30}};
  for (const QPointF& point : line)
    mask.append(point);
  EXPECT_EQ(coverageOf(mask), coverageOf(maskOf(line, 5)));
  for (const QPointF& nowhere : {QPointF(NAN, 5), QPointF(5, INFINITY)})
    EXPECT_TRUE(mask.append(nowhere).isEmpty());
  mask.restart(0, area);
  EXPECT_TRUE(mask.append({10, 10}).isEmpty());
  mask.restart(5, {});
  EXPECT_TRUE(mask.append({10, 10}).isEmpty());
}

}  // namespace
