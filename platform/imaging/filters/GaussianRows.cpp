#include "platform/imaging/filters/GaussianRows.h"

#include "platform/imaging/png/Vectorised.h"

#include <cstring>
#include <utility>

namespace platform {
namespace {

using PixelOfFloats [[gnu::vector_size(16)]] = float;
template <typename Vector>
void load(Vector& vector, const float* from) {
  std::memcpy(&vector, from, sizeof vector);
}

template <typename Vector>
void store(const Vector& vector, float* to) {
  std::memcpy(to, &vector, sizeof vector);
}

template <typename Value, std::size_t count>
using Rows = std::array<const Value*, count>;

template <int factor, std::size_t... tap>
void sumBytes(const Rows<std::uint8_t, sizeof...(tap)>& rows, std::uint16_t* __restrict sums,
              std::size_t channels, std::index_sequence<tap...>) {
  constexpr auto weights = boxedFourTimes<factor>();
  for (std::size_t i = 0; i < channels; ++i)
    sums[i] = static_cast<std::uint16_t>(((weights[tap] * rows[tap][i]) + ...));
}

template <int factor>
void shrinkDownLoop(Rows<std::uint8_t, 4 * factor - 3> rows, std::uint16_t* __restrict sums,
                    std::size_t channels) {
  sumBytes<factor>(rows, sums, channels, std::make_index_sequence<4 * factor - 3>());
}

template <int factor>
void shrinkAcrossLoop(const float* row, float* results, std::size_t resultPixels, float scale) {
  constexpr auto weights = boxedFourTimes<factor>();
  for (std::size_t k = 0; k < resultPixels; ++k) {
    PixelOfFloats sum{};
    for (std::size_t tap = 0; tap < weights.size(); ++tap) {
      PixelOfFloats pixel;
      load(pixel, row + (k * factor + tap) * 4);
      sum += pixel * static_cast<float>(weights[tap]);
    }
    store(sum * scale, results + k * 4);
  }
}

void halveDownLoop(Rows<float, 5> rows, float* __restrict sums, std::size_t channels) {
  for (std::size_t i = 0; i < channels; ++i)
    sums[i] = rows[0][i] + rows[4][i] + 4 * (rows[1][i] + rows[3][i]) + 6 * rows[2][i];
}

void convolveLoop(const float* values, std::ptrdiff_t step, const float* weights, std::ptrdiff_t radius,
                  float* __restrict results, std::size_t channels) {
  for (std::size_t i = 0; i < channels; ++i)
    results[i] = values[i] * weights[0];
  for (std::ptrdiff_t k = 1; k <= radius; k += 2) {
    const float weight = weights[k];
    const float nextWeight = weights[k + 1];
    const float* before = values - k * step;
    const float* after = values + k * step;
    const float* nextBefore = k < radius ? before - step : before;
    const float* nextAfter = k < radius ? after + step : after;
    for (std::size_t i = 0; i < channels; ++i)
      results[i] += (before[i] + after[i]) * weight + (nextBefore[i] + nextAfter[i]) * nextWeight;
  }
}

void enlargeAcrossLoop(const float* nodes, const SplineWeights* weights, std::size_t factor,
                       std::size_t phase, float* results, std::size_t resultPixels) {
  for (std::size_t x = 0; x < resultPixels; nodes += 4, phase = 0) {
    PixelOfFloats node0, node1, node2, node3;
    load(node0, nodes);
    load(node1, nodes + 4);
    load(node2, nodes + 8);
    load(node3, nodes + 12);
    for (; phase < factor && x < resultPixels; ++phase, ++x) {
      const SplineWeights& weight = weights[phase];
      store(node0 * weight[0] + node1 * weight[1] + node2 * weight[2] + node3 * weight[3], results + x * 4);
    }
  }
}

void mixDownLoop(Rows<std::uint16_t, 4> rows, std::array<std::uint16_t, 4> weights,
                 std::uint8_t* __restrict bytes, std::size_t channels) {
  // Each of the four products loses half a unit on average; half of 256 rounds.
  constexpr std::uint16_t rounding = 4 / 2 + 256 / 2;
  const auto upperHalf = [](std::uint16_t value, std::uint16_t weight) {
    return static_cast<std::uint16_t>((static_cast<std::uint32_t>(value) * weight) >> 16);
  };
  for (std::size_t i = 0; i < channels; ++i) {
    const auto sum = static_cast<std::uint16_t>(
        upperHalf(rows[0][i], weights[0]) + upperHalf(rows[1][i], weights[1]) +
        upperHalf(rows[2][i], weights[2]) + upperHalf(rows[3][i], weights[3]) + rounding);
    bytes[i] = static_cast<std::uint8_t>(sum >> 8);
  }
}

void toFloatsLoop(const std::uint16_t* values, float* __restrict results, std::size_t channels) {
  for (std::size_t i = 0; i < channels; ++i)
    results[i] = values[i];
}

void toFixedPointLoop(const float* values, std::uint16_t* __restrict results, std::size_t channels) {
  for (std::size_t i = 0; i < channels; ++i)
    results[i] = static_cast<std::uint16_t>(static_cast<int>(values[i] + 0.5F));
}

void bytesToFloatsLoop(const std::uint8_t* bytes, float* __restrict results, std::size_t channels) {
  for (std::size_t i = 0; i < channels; ++i)
    results[i] = bytes[i];
}

void toBytesLoop(const float* values, std::uint8_t* __restrict bytes, std::size_t channels) {
  for (std::size_t i = 0; i < channels; ++i)
    bytes[i] = static_cast<std::uint8_t>(static_cast<int>(values[i] + 0.5F));
}

}  // namespace

template <int factor>
void shrinkDown(const std::array<const std::uint8_t*, 4 * factor - 3>& rows, std::uint16_t* sums,
                std::size_t channels, Instructions instructions) {
  vectorised<shrinkDownLoop<factor>>(instructions, rows, sums, channels);
}

template void shrinkDown<2>(const std::array<const std::uint8_t*, 5>&, std::uint16_t*, std::size_t,
                            Instructions);
template void shrinkDown<3>(const std::array<const std::uint8_t*, 9>&, std::uint16_t*, std::size_t,
                            Instructions);
template void shrinkDown<4>(const std::array<const std::uint8_t*, 13>&, std::uint16_t*, std::size_t,
                            Instructions);

template <int factor>
void shrinkAcross(const float* row, float* results, std::size_t resultPixels, float scale,
                  Instructions instructions) {
  vectorised<shrinkAcrossLoop<factor>>(instructions, row, results, resultPixels, scale);
}

template void shrinkAcross<2>(const float*, float*, std::size_t, float, Instructions);
template void shrinkAcross<3>(const float*, float*, std::size_t, float, Instructions);
template void shrinkAcross<4>(const float*, float*, std::size_t, float, Instructions);

void halveDown(const std::array<const float*, 5>& rows, float* sums, std::size_t channels,
               Instructions instructions) {
  vectorised<halveDownLoop>(instructions, rows, sums, channels);
}

void convolve(const float* values, std::size_t step, const float* weights, int radius, float* results,
              std::size_t channels, Instructions instructions) {
  vectorised<convolveLoop>(instructions, values, static_cast<std::ptrdiff_t>(step), weights, radius, results,
                           channels);
}

void enlargeAcross(const float* nodes, const SplineWeights* weights, std::size_t factor, std::size_t phase,
                   float* results, std::size_t resultPixels, Instructions instructions) {
  vectorised<enlargeAcrossLoop>(instructions, nodes, weights, factor, phase, results, resultPixels);
}

void mixDown(const std::array<const std::uint16_t*, 4>& rows, const std::array<std::uint16_t, 4>& weights,
             std::uint8_t* bytes, std::size_t channels, Instructions instructions) {
  vectorised<mixDownLoop>(instructions, rows, weights, bytes, channels);
}

void toFloats(const std::uint16_t* values, float* results, std::size_t channels, Instructions instructions) {
  vectorised<toFloatsLoop>(instructions, values, results, channels);
}

void toFloats(const std::uint8_t* bytes, float* results, std::size_t channels, Instructions instructions) {
  vectorised<bytesToFloatsLoop>(instructions, bytes, results, channels);
}

void round(const float* values, std::uint16_t* results, std::size_t channels, Instructions instructions) {
  vectorised<toFixedPointLoop>(instructions, values, results, channels);
}

void round(const float* values, std::uint8_t* bytes, std::size_t channels, Instructions instructions) {
  vectorised<toBytesLoop>(instructions, values, bytes, channels);
}

}  // namespace platform
