#pragma once

#include "platform/imaging/png/Effort.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace platform {

// The loops of the blur that touch many values: each works on one row, whose pixels are four channels next to
// one another. Results don't depend on the instructions that they are compiled to. Inputs and outputs don't
// overlap.

/// A moving average over `factor` values, applied four times: the discrete cubic B-spline. Its weights are
/// whole numbers whose sum is factor to the fourth.
template <int factor>
constexpr auto boxedFourTimes() {
  std::array<std::uint16_t, 4 * factor - 3> weights{};
  weights[0] = 1;
  for (int pass = 0; pass < 4; ++pass) {
    std::array<std::uint16_t, 4 * factor - 3> boxed{};
    for (std::size_t i = 0; i < weights.size(); ++i)
      for (std::size_t k = 0; k < factor && k <= i; ++k)
        boxed[i] = static_cast<std::uint16_t>(boxed[i] + weights[i - k]);
    weights = boxed;
  }
  return weights;
}

/// The weights of `boxedFourTimes`, over rows one above the other. The sums fit for factors 2 to 4.
template <int factor>
void shrinkDown(const std::array<const std::uint8_t*, 4 * factor - 3>& rows, std::uint16_t* sums,
                std::size_t channels, Instructions instructions);

/// The same along a row: result k is the weighted sum of the pixels from factor * k on, times `scale`.
template <int factor>
void shrinkAcross(const float* row, float* results, std::size_t resultPixels, float scale,
                  Instructions instructions);

/// The weights of `boxedFourTimes<2>`, over rows one above the other.
void halveDown(const std::array<const float*, 5>& rows, float* sums, std::size_t channels,
               Instructions instructions);

/// A kernel that is the same on both sides: results[i] is values[i] * weights[0] and, for k from 1 to
/// `radius`, (values[i - k * step] + values[i + k * step]) * weights[k]. One weight more than that has to be
/// there.
void convolve(const float* values, std::size_t step, const float* weights, int radius, float* results,
              std::size_t channels, Instructions instructions);

/// What each of the four nodes around a pixel counts for.
using SplineWeights = std::array<float, 4>;

/// Puts `factor` pixels between two nodes, the cubic B-spline's. The first result lies `phase` pixels after
/// the second node; `weights` has one entry for each of the `factor` phases.
void enlargeAcross(const float* nodes, const SplineWeights* weights, std::size_t factor, std::size_t phase,
                   float* results, std::size_t resultPixels, Instructions instructions);

/// Four rows of 8.8 fixed point into one of bytes. The weights' sum is 65536.
void mixDown(const std::array<const std::uint16_t*, 4>& rows, const std::array<std::uint16_t, 4>& weights,
             std::uint8_t* bytes, std::size_t channels, Instructions instructions);

void toFloats(const std::uint16_t* values, float* results, std::size_t channels, Instructions instructions);
void toFloats(const std::uint8_t* bytes, float* results, std::size_t channels, Instructions instructions);

/// To the nearest whole number, for values from 0 to the type's largest.
void round(const float* values, std::uint16_t* results, std::size_t channels, Instructions instructions);
void round(const float* values, std::uint8_t* bytes, std::size_t channels, Instructions instructions);

}  // namespace platform
