#pragma once

#include "platform/imaging/filters/FilterFrame.h"
#include "platform/imaging/png/Effort.h"

#include <QRect>

#include <cstddef>
#include <vector>

namespace platform {

// The two ways to blur, for pixels in premultiplied RGBA; `region` lies inside of the picture and is written
// to `result` from its first row and column on. They throw std::bad_alloc.

/// The weights of a sampled gaussian, from its centre outwards to `radius` and, for `convolve`, a zero more.
/// Their sum over both sides is 1, to a float's precision.
struct GaussianKernel {
  int radius;
  std::vector<float> weights;
};

/// How far from the centre a kernel reaches: beyond that lies 0.003 per cent of a gaussian.
[[nodiscard]] int kernelRadius(double sigma);
[[nodiscard]] GaussianKernel gaussianKernel(double sigma);

/// How a blur by way of a smaller picture works: its nodes lie `factor` pixels apart, 2, 3 or one of them
/// times a power of two, and are blurred by `nodeSigma`, in nodes. Factor 1 means that there is no smaller
/// picture.
struct Reduction {
  int factor = 1;
  double nodeSigma = 0;
};
[[nodiscard]] Reduction reductionFor(double sigma);

/// Convolves each row, then each column. Time grows with sigma.
void blurDirectly(const SourceRows& source, double sigma, const QRect& region, const ResultRows& result,
                  const Effort& effort);

/// Shrinks, blurs, enlarges. All of the source has been read before the first pixel is written, so that the
/// result may be in the same place.
void blurReduced(const SourceRows& source, const Reduction& reduction, const QRect& region,
                 const ResultRows& result, const Effort& effort);

/// Repeats the first and last pixels that are present outwards. `row` begins with the pixel `before` the
/// first one present, and ends `after` pixels behind the last one.
template <typename Channel>
void repeatEdges(Channel* row, int before, int present, int after) {
  const auto copy = [row](int from, int to) {
    for (int channel = 0; channel < 4; ++channel)
      row[4 * to + channel] = row[4 * from + channel];
  };
  for (int x = 0; x < before; ++x)
    copy(before, x);
  for (int x = before + present; x < before + present + after; ++x)
    copy(before + present - 1, x);
}

}  // namespace platform
