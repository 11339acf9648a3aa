#include "platform/imaging/drawing/ScaledPart.h"

#include "platform/imaging/filters/BlankPicture.h"
#include "platform/imaging/png/Bands.h"
#include "platform/imaging/png/Vectorised.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

namespace platform {
namespace {

constexpr int channels = 4;
constexpr int weightBits = 14;
constexpr std::uint32_t fullWeight = 1U << weightBits;
/// Of what a column of pixels adds up to before the rows are gone through.
constexpr int middleBits = 8;

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

void addRow(std::uint32_t* sums, const std::uint8_t* row, std::uint32_t weight, int count) {
  for (int i = 0; i < count; ++i)
    sums[i] += weight * row[i];
}

void halve(std::uint16_t* middle, const std::uint32_t* sums, int count) {
  for (int i = 0; i < count; ++i)
    middle[i] = static_cast<std::uint16_t>(sums[i] >> (weightBits - middleBits));
}

using Sums = std::uint32_t __attribute__((vector_size(16)));
using Halves = std::uint16_t __attribute__((vector_size(8)));
using Bytes = std::uint8_t __attribute__((vector_size(4)));

void mixColumns(std::uint8_t* to, const std::uint16_t* middle, const int* first, const std::uint16_t* weights,
                int taps, int count) {
  constexpr std::uint32_t half = 1U << (weightBits + middleBits - 1);
  for (int x = 0; x < count; ++x) {
    const std::uint16_t* const from = middle + std::ptrdiff_t(channels) * first[x];
    Sums sums = {half, half, half, half};
    for (int tap = 0; tap < taps; ++tap) {
      Halves pixel;
      std::memcpy(&pixel, from + channels * tap, sizeof pixel);
      sums += std::uint32_t(weights[tap]) * __builtin_convertvector(pixel, Sums);
    }
    const auto bytes = __builtin_convertvector(sums >> (weightBits + middleBits), Bytes);
    std::memcpy(to + std::ptrdiff_t(channels) * x, &bytes, sizeof bytes);
    weights += taps;
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
  const std::ptrdiff_t skipped = std::ptrdiff_t(channels) * (left - picture.topLeft.x());
  std::uint8_t* const to = result.bits();
  const std::ptrdiff_t stride = result.bytesPerLine();
  constexpr int rowsWorthAThread = 64;
  constexpr int chunk = 2048;  // stays near the processor
  forEachBand(part.height(), rowsWorthAThread, Cores::All, [&](int begin, int end) {
    std::vector<std::uint32_t> sums(chunk);
    std::vector<std::uint16_t> middle(static_cast<std::size_t>(count));
    for (int y = begin; y < end; ++y) {
      for (int from = 0; from < count; from += chunk) {
        const int length = std::min(chunk, count - from);
        std::fill_n(sums.begin(), length, 0U);
        for (int tap = 0; tap < down.count; ++tap)
          if (const std::uint32_t weight = down.of(std::size_t(y))[tap])
            vectorised<addRow>(
                Instructions::Widest, sums.data(),
                picture.pixels.constScanLine(down.first[std::size_t(y)] + tap - picture.topLeft.y()) +
                    skipped + from,
                weight, length);
        vectorised<halve>(Instructions::Widest, middle.data() + from, sums.data(), length);
      }
      vectorised<mixColumns>(Instructions::Widest, to + y * stride, middle.data(), across.first.data(),
                             across.of(0), across.count, part.width());
    }
  });
  return result;
}

}  // namespace platform
