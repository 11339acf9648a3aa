#include "platform/imaging/drawing/ScaledPart.h"

#include "platform/imaging/filters/BlankPicture.h"
#include "platform/imaging/png/Bands.h"
#include "platform/imaging/png/Vectorised.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

namespace platform {
namespace {

constexpr int channels = 4;
constexpr int weightBits = 14;
constexpr std::uint32_t fullWeight = 1U << weightBits;

/// What each pixel of a line takes from which pixels of another: as many for each, beginning with `first`,
/// whose weights add up to the full one.
struct Taps {
  int count = 1;
  std::vector<int> first;
  std::vector<std::uint16_t> weights;

  [[nodiscard]] const std::uint16_t* of(std::size_t index) const {
    return weights.data() + index * static_cast<std::size_t>(count);
  }
};

/// How much of `step` pixels from `begin` on lies in the one numbered `pixel`.
double shareOf(double begin, double step, int pixel) {
  return std::max(std::min(begin + step, pixel + 1.0) - std::max(begin, double(pixel)), 0.0) / step;
}

/// For the places from `begin` up to but without `end` of `to`, of a line of `from`.
Taps tapsOf(int from, int to, int begin, int end, Enlarging enlarging) {
  const double step = double(from) / to;
  const bool isSmooth = to > from && enlarging == Enlarging::Smooth;
  Taps taps;
  taps.count = std::min(from, to < from ? int(std::ceil(step)) + 1 : isSmooth ? 2 : 1);
  for (int place = begin; place < end; ++place) {
    const double start = isSmooth ? (place + 0.5) * step - 0.5 : place * step;
    const int first = std::clamp(int(std::floor(to > from && !isSmooth ? (place + 0.5) * step : start)), 0,
                                 from - taps.count);
    taps.first.push_back(first);
    std::uint32_t given = 0;
    const std::size_t at = taps.weights.size();
    for (int tap = 0; tap < taps.count; ++tap) {
      const double share = taps.count == 1 ? 1
                           : isSmooth
                               ? std::clamp(1 - std::abs(std::max(start, 0.0) - (first + tap)), 0.0, 1.0)
                               : shareOf(start, step, first + tap);
      const auto weight = static_cast<std::uint16_t>(std::lround(share * fullWeight));
      taps.weights.push_back(weight);
      given += weight;
    }
    // What rounding has left over goes to the heaviest.
    auto& heaviest = *std::max_element(taps.weights.begin() + std::ptrdiff_t(at), taps.weights.end());
    heaviest = static_cast<std::uint16_t>(heaviest + fullWeight - given);
  }
  return taps;
}

/// Such sums of bytes with weights of 14 bits are exact as floating numbers, which are quicker to multiply.
void addRow(float* sums, const std::uint8_t* row, float weight, int count) {
  for (int i = 0; i < count; ++i)
    sums[i] += weight * row[i];
}

using Pixel = float __attribute__((vector_size(16)));
using Whole = std::int32_t __attribute__((vector_size(16)));
using Bytes = std::uint8_t __attribute__((vector_size(16)));

/// `known`: how many taps there are, where the compiler is to unroll them.
template <int known>
void mixColumns(std::uint8_t* to, const float* sums, const int* first, const float* weights, int taps,
                int count) {
  constexpr std::uint8_t least = std::endian::native == std::endian::little ? 0 : 3;
  taps = known ? known : taps;
  for (int x = 0; x < count; ++x) {
    const float* const from = sums + std::ptrdiff_t(channels) * first[x];
    Pixel sum = {};
    for (int tap = 0; tap < taps; ++tap) {
      Pixel pixel;
      std::memcpy(&pixel, from + std::ptrdiff_t(channels) * tap, sizeof pixel);
      sum += weights[tap] * pixel;
    }
    const auto whole = __builtin_convertvector(sum + 0.5F, Whole);
    const auto parts = std::bit_cast<Bytes>(whole);
    const auto bytes = __builtin_shufflevector(parts, parts, least, least + 4, least + 8, least + 12);
    std::memcpy(to + std::ptrdiff_t(channels) * x, &bytes, channels);
    weights += taps;
  }
}

/// `weights`: those of the taps, scaled so that bytes come out.
void mixColumnsOf(std::uint8_t* to, const float* sums, const Taps& across, const std::vector<float>& weights,
                  int count) {
  const auto mix = [&]<int known>() {
    vectorised<mixColumns<known>>(Instructions::Widest, to, sums, across.first.data(), weights.data(),
                                  across.count, count);
  };
  switch (across.count) {
    case 2:
      return mix.operator()<2>();
    case 3:
      return mix.operator()<3>();
    default:
      return mix.operator()<0>();
  }
}

}  // namespace

QRect sourceOfScaledPart(const QSize& whole, const QSize& scaled, const QRect& part) {
  const auto range = [](int from, int to, int begin, int end) {
    const double step = double(from) / to;
    return std::pair(std::clamp(int(std::floor(begin * step)) - 1, 0, from - 1),
                     std::clamp(int(std::ceil(end * step)) + 1, 1, from));
  };
  const auto [left, right] = range(whole.width(), scaled.width(), part.left(), part.right() + 1);
  const auto [top, bottom] = range(whole.height(), scaled.height(), part.top(), part.bottom() + 1);
  return {left, top, right - left, bottom - top};
}

QImage scaledPart(const PicturePart& picture, const QSize& scaled, const QRect& part, Enlarging enlarging) {
  if (picture.pixels.isNull() || part.isEmpty())
    return {};
  QImage result = blankLike(picture.pixels, part.size());
  if (result.isNull())
    return {};
  Taps across = tapsOf(picture.whole.width(), scaled.width(), part.left(), part.right() + 1, enlarging);
  const Taps down = tapsOf(picture.whole.height(), scaled.height(), part.top(), part.bottom() + 1, enlarging);
  // Only the columns that are asked for.
  const int left = across.first.front();
  const int count = channels * (across.first.back() + across.count - left);
  for (int& first : across.first)
    first -= left;
  constexpr float toByte = 1.0F / (float(fullWeight) * float(fullWeight));
  std::vector<float> weights;
  for (const std::uint16_t weight : across.weights)
    weights.push_back(toByte * weight);
  const std::ptrdiff_t skipped = std::ptrdiff_t(channels) * (left - picture.topLeft.x());
  std::uint8_t* const to = result.bits();
  const std::ptrdiff_t stride = result.bytesPerLine();
  constexpr int rowsWorthAThread = 64;
  constexpr int chunk = 2048;  // stays near the processor
  forEachBand(part.height(), rowsWorthAThread, Cores::All, [&](int begin, int end) {
    std::vector<float> sums(static_cast<std::size_t>(count));
    for (int y = begin; y < end; ++y) {
      for (int from = 0; from < count; from += chunk) {
        const int length = std::min(chunk, count - from);
        std::fill_n(sums.begin() + from, length, 0.0F);
        for (int tap = 0; tap < down.count; ++tap)
          if (const std::uint16_t weight = down.of(std::size_t(y))[tap])
            vectorised<addRow>(
                Instructions::Widest, sums.data() + from,
                picture.pixels.constScanLine(down.first[std::size_t(y)] + tap - picture.topLeft.y()) +
                    skipped + from,
                float(weight), length);
      }
      mixColumnsOf(to + y * stride, sums.data(), across, weights, part.width());
    }
  });
  return result;
}

}  // namespace platform
