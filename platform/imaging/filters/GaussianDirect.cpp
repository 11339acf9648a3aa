#include "platform/imaging/filters/GaussianPasses.h"
#include "platform/imaging/filters/GaussianRows.h"
#include "platform/imaging/png/Bands.h"

#include <algorithm>
#include <cmath>

namespace platform {
namespace {

/// Rows worked out together: enough that the rows above and below, which the next tile needs again, don't
/// count for much, and few enough for a processor's cache.
constexpr int tileRows = 64;

class DirectBlur {
 public:
  DirectBlur(const SourceRows& from, const GaussianKernel& with, const QRect& into, const Effort& effort)
      : source(from),
        kernel(with),
        region(into),
        instructions(effort.instructions),
        channels(static_cast<std::size_t>(region.width()) * 4),
        before(std::min(kernel.radius, region.left())),
        after(std::min(kernel.radius, source.width - 1 - region.right())),
        padded(channels + static_cast<std::size_t>(kernel.radius) * 8),
        tile(channels * static_cast<std::size_t>(tileRows + 2 * kernel.radius)),
        mixed(channels) {}

  /// Rows are counted from the region's first.
  void blur(int first, int end, const ResultRows& result) {
    for (int top = first; top < end; top += tileRows) {
      const int count = std::min(tileRows, end - top);
      for (int row = 0; row < count + 2 * kernel.radius; ++row)
        blurAcross(region.top() + top + row - kernel.radius, tileRow(row));
      for (int row = 0; row < count; ++row) {
        convolve(tileRow(row + kernel.radius), channels, kernel.weights.data(), kernel.radius, mixed.data(),
                 channels, instructions);
        round(mixed.data(), result.row(top + row), channels, instructions);
      }
    }
  }

 private:
  [[nodiscard]] float* tileRow(int row) { return tile.data() + static_cast<std::size_t>(row) * channels; }

  void blurAcross(int y, float* results) {
    const int missing = kernel.radius - before;
    const int present = before + region.width() + after;
    toFloats(source.row(y) + std::ptrdiff_t{4} * (region.left() - before),
             padded.data() + std::ptrdiff_t{4} * missing, static_cast<std::size_t>(present) * 4,
             instructions);
    repeatEdges(padded.data(), missing, present, kernel.radius - after);
    convolve(padded.data() + std::ptrdiff_t{4} * kernel.radius, 4, kernel.weights.data(), kernel.radius,
             results, channels, instructions);
  }

  SourceRows source;
  const GaussianKernel& kernel;
  QRect region;
  Instructions instructions;
  std::size_t channels;
  int before;  // pixels of the picture that the kernel reaches on the region's left and right
  int after;
  std::vector<float> padded;
  std::vector<float> tile;
  std::vector<float> mixed;
};

}  // namespace

int kernelRadius(double sigma) {
  return static_cast<int>(std::ceil(4.2 * sigma));
}

GaussianKernel gaussianKernel(double sigma) {
  GaussianKernel kernel{kernelRadius(sigma), {}};
  std::vector<double> exact{1};
  double sum = 1;
  for (int x = 1; x <= kernel.radius; ++x) {
    exact.push_back(std::exp(-1.0 * x * x / (2 * sigma * sigma)));
    sum += 2 * exact.back();
  }
  for (const double weight : exact)
    kernel.weights.push_back(static_cast<float>(weight / sum));
  kernel.weights.push_back(0);
  return kernel;
}

void blurDirectly(const SourceRows& source, double sigma, const QRect& region, const ResultRows& result,
                  const Effort& effort) {
  const GaussianKernel kernel = gaussianKernel(sigma);
  forEachBand(region.height(), smallestBand(region.width()), effort.cores, [&](int first, int end) {
    DirectBlur(source, kernel, region, effort).blur(first, end, result);
  });
}

}  // namespace platform
