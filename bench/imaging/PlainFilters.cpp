#include "bench/imaging/PlainFilters.h"

#include "bench/Figures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <vector>

namespace bench {
namespace {

/// Convolves `count` lines of `length` pixels; pixels of a line lie `step` floats apart, lines `lineStep`.
void convolvePlainly(const std::vector<float>& from, std::vector<float>& to, int length, int step, int count,
                     int lineStep, const std::vector<float>& weights) {
  const int radius = static_cast<int>(weights.size()) / 2;
  std::vector<float> line(static_cast<size_t>(4 * (length + 2 * radius)));
  for (int number = 0; number < count; ++number) {
    const float* begin = from.data() + static_cast<std::ptrdiff_t>(number) * lineStep;
    for (int at = 0; at < length + 2 * radius; ++at)
      std::memcpy(&line[static_cast<size_t>(4 * at)], begin + std::clamp(at - radius, 0, length - 1) * step,
                  4 * sizeof(float));
    for (int at = 0; at < length; ++at) {
      float sum[4] = {};
      for (size_t tap = 0; tap < weights.size(); ++tap)
        for (size_t channel = 0; channel < 4; ++channel)
          sum[channel] += weights[tap] * line[4 * (static_cast<size_t>(at) + tap) + channel];
      std::memcpy(&to[static_cast<size_t>(number) * static_cast<size_t>(lineStep) +
                      static_cast<size_t>(at) * static_cast<size_t>(step)],
                  sum, sizeof sum);
    }
  }
}

}  // namespace

double plainGaussianSeconds(const QImage& picture, double sigma) {
  constexpr int part = 40;
  const int width = picture.width();
  const int height = picture.height() / part;
  std::vector<float> weights;
  float sum = 0;
  for (int x = -static_cast<int>(std::ceil(5 * sigma)); x <= 5 * sigma + 1; ++x) {
    weights.push_back(static_cast<float>(std::exp(-x * x / (2 * sigma * sigma))));
    sum += weights.back();
  }
  for (float& weight : weights)
    weight /= sum;
  std::vector<float> values(static_cast<size_t>(width * height * 4));
  std::vector<float> blurred(values.size());
  return part * secondsOf([&] {
           std::copy_n(picture.constBits(), values.size(), values.begin());
           convolvePlainly(values, blurred, width, 4, height, 4 * width, weights);
           convolvePlainly(blurred, values, height, 4 * width, width, 4, weights);
           QImage result(width, height, picture.format());
           std::transform(values.begin(), values.end(), result.bits(),
                          [](float value) { return static_cast<uchar>(value + 0.5F); });
         });
}

QImage plainlyPixellated(const QImage& picture, double cellSize) {
  // The grid passes through (150, 150) counted from the lower left corner.
  const auto cellOf = [cellSize](int place) {
    return static_cast<int>(std::floor((place + 0.5 - 150) / cellSize));
  };
  const auto yUp = [&](int y) { return picture.height() - 1 - y; };
  QImage result(picture.size(), picture.format());
  for (int top = 0, bottom = 0; top < picture.height(); top = bottom) {
    for (bottom = top; bottom < picture.height() && cellOf(yUp(bottom)) == cellOf(yUp(top));)
      ++bottom;
    for (int left = 0, right = 0; left < picture.width(); left = right) {
      for (right = left; right < picture.width() && cellOf(right) == cellOf(left);)
        ++right;
      std::array<int, 4> sum{};
      for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x)
          for (size_t channel = 0; channel < 4; ++channel)
            sum[channel] += picture.constScanLine(y)[4 * static_cast<size_t>(x) + channel];
      const int count = (right - left) * (bottom - top);
      for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x)
          for (size_t channel = 0; channel < 4; ++channel)
            result.scanLine(y)[4 * static_cast<size_t>(x) + channel] =
                static_cast<uchar>((sum[channel] + count / 2) / count);
    }
  }
  return result;
}

}  // namespace bench
