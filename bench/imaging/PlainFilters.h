#pragma once

#include <QImage>

namespace bench {

/// The filters as one writes them without a thought for time, on one core. Pictures have four channels of 8
/// bits.

/// How long it takes to convolve each row and each column with all weights up to 5 sigma. It is the same for
/// each row and grows with their number, so that a fortieth of them is measured.
[[nodiscard]] double plainGaussianSeconds(const QImage& picture, double sigma);

/// Each square cell in its mean colour.
[[nodiscard]] QImage plainlyPixellated(const QImage& picture, double cellSize);

}  // namespace bench
