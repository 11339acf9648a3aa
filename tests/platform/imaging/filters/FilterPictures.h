#pragma once

#include <QImage>
#include <QRect>

#include <cmath>
#include <random>

/// Pictures that are hard on a filter, and rectangles across them.
namespace filter_pictures {

using Random = std::mt19937;

/// Prints what a failed round can be repeated with.
inline unsigned freshSeed() {
  return std::random_device()();
}

inline int between(int least, int most, Random& random) {
  return std::uniform_int_distribution(least, most)(random);
}

inline double evenOnLogScale(double least, double most, Random& random) {
  return std::exp(std::uniform_real_distribution(std::log(least), std::log(most))(random));
}

/// Noise, or stripes and edges of full contrast whose period nearly beats with any grid, each opaque or of
/// changing alpha.
inline QImage randomPicture(int width, int height, Random& random) {
  enum { Noise, ExtremeNoise, Stripes, Checks, Edge, kinds };
  const int kind = between(0, kinds - 1, random);
  const int alphaKind = between(0, 2, random);
  const double periodX = std::uniform_real_distribution(1.5, 40.0)(random);
  const double periodY = std::uniform_real_distribution(1.5, 40.0)(random);
  const auto wave = [](double at, double period) { return std::fmod(at, period) < period / 2; };
  QImage picture(width, height, QImage::Format_RGBA8888_Premultiplied);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      uchar* pixel = picture.scanLine(y) + 4 * x;
      const int alpha = alphaKind == 0   ? 255
                        : alphaKind == 1 ? between(0, 255, random)
                                         : between(0, 8, random);
      for (int channel = 0; channel < 3; ++channel) {
        const bool light = kind == Stripes  ? wave(y + channel, periodY)
                           : kind == Checks ? wave(x, periodX) != wave(y, periodY)
                           : kind == Edge   ? x + channel * y > width / 2
                                            : between(0, 1, random) == 1;
        const int value = kind == Noise ? between(0, 255, random) : light ? 255 : 0;
        pixel[channel] = static_cast<uchar>(value * alpha / 255);
      }
      pixel[3] = static_cast<uchar>(alpha);
    }
  }
  return picture;
}

/// A rectangle that has at least one pixel in the picture and may stick out.
inline QRect randomRegion(const QSize& size, Random& random) {
  const QPoint inside(between(0, size.width() - 1, random), between(0, size.height() - 1, random));
  return QRect(inside - QPoint(between(0, size.width(), random), between(0, size.height(), random)),
               inside + QPoint(between(0, size.width(), random), between(0, size.height(), random)));
}

/// `picture` with other pixels wherever they lie outside of `kept`.
inline QImage changedOutside(const QRect& kept, QImage picture) {
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x)
      if (!kept.contains(x, y))
        for (int channel = 0; channel < 4; ++channel)
          picture.scanLine(y)[4 * x + channel] ^= 0xff;
  return picture;
}

}  // namespace filter_pictures
