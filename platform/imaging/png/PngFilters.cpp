#include "platform/imaging/png/PngFilters.h"

#include "platform/imaging/png/Vectorised.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace platform {
namespace {

using Byte = std::uint8_t;

/// Bytes side by side, as the compilers offer them for any processor's vectors.
constexpr std::size_t lanes = filterSlack;
using Lanes [[gnu::vector_size(lanes)]] = Byte;

Lanes load(const Byte* from) {
  Lanes to;
  std::memcpy(&to, from, lanes);
  return to;
}

Lanes least(Lanes one, Lanes other) {
  return one < other ? one : other;
}

Lanes distance(Lanes one, Lanes other) {
  return one > other ? one - other : other - one;
}

Lanes average(Lanes left, Lanes up) {
  return (left & up) + ((left ^ up) >> 1);
}

/// Whichever of the three is nearest to left + up - upLeft, in bytes throughout: where left and up lie on the
/// same side of the third, that one is the farthest, and its distance need not be known.
Lanes paeth(Lanes left, Lanes up, Lanes upLeft) {
  const Lanes toLeft = distance(up, upLeft), toUp = distance(left, upLeft);
  const auto onBothSides = (left > upLeft) ^ (up > upLeft);
  const Lanes toUpLeft = onBothSides ? distance(toLeft, toUp) : Lanes{} + Byte{255};
  const Lanes nearer = toUp <= toUpLeft ? up : upLeft;
  const auto leftIsNearest = (toLeft <= toUp) & (toLeft <= toUpLeft);
  return leftIsNearest ? left : nearer;
}

constexpr Byte dearest = 8;  // what a byte costs that nothing predicts, in bits

Lanes cost(Lanes difference) {
  return least(least(difference, -difference), Lanes{} + dearest);
}

/// Of each filter, in its place.
using Costs = std::array<Lanes, 5>;

void addCosts(Costs& costs, const Byte* row, const Byte* above, std::size_t pixelSize) {
  const Lanes here = load(row), left = load(row - pixelSize);
  const Lanes up = load(above), upLeft = load(above - pixelSize);
  const auto known = (here == left) | (here == up);
  costs[0] += known ? Lanes{} : Lanes{} + dearest;
  costs[1] += cost(here - left);
  costs[2] += cost(here - up);
  costs[3] += cost(here - average(left, up));
  costs[4] += cost(here - paeth(left, up, upLeft));
}

std::uint64_t sumOf(Lanes bytes) {
  std::uint64_t sum = 0;
  for (std::size_t i = 0; i < lanes; ++i)
    sum += bytes[i];
  return sum;
}

template <typename Predict>
void subtract(const PngRow& row, Byte* out, Predict predict) {
  for (std::size_t i = 0; i < row.size; i += lanes) {
    const Lanes difference = load(row.bytes + i) - predict(i);
    std::memcpy(out + i, &difference, lanes);
  }
}

/// Of each filter what it costs, in its place.
void addUpCosts(PngRow row, std::uint64_t* sums) {
  // Of a row that isn't short, a quarter tells as much.
  constexpr std::size_t blocks = 4, shortRow = 1024;
  const std::size_t step = (row.size > shortRow ? 4 : 1) * blocks * lanes;
  for (std::size_t begin = 0; begin < row.size; begin += step) {
    Costs costs{};  // of so few blocks that sums of bytes stay bytes
    const std::size_t end = std::min(begin + blocks * lanes, row.size);
    for (std::size_t i = begin; i + lanes <= end; i += lanes)
      addCosts(costs, row.bytes + i, row.above + i, row.pixelSize);
    for (std::size_t filter = 0; filter < costs.size(); ++filter)
      sums[filter] += sumOf(costs[filter]);
  }
}

void writeDifferences(PngFilter filter, PngRow row, Byte* out) {
  const Byte *left = row.bytes - row.pixelSize, *up = row.above, *upLeft = up - row.pixelSize;
  switch (filter) {
    case PngFilter::None:
      std::memcpy(out, row.bytes, row.size);
      return;
    case PngFilter::Sub:
      return subtract(row, out, [=](std::size_t i) { return load(left + i); });
    case PngFilter::Up:
      return subtract(row, out, [=](std::size_t i) { return load(up + i); });
    case PngFilter::Average:
      return subtract(row, out, [=](std::size_t i) { return average(load(left + i), load(up + i)); });
    case PngFilter::Paeth:
      return subtract(row, out,
                      [=](std::size_t i) { return paeth(load(left + i), load(up + i), load(upLeft + i)); });
  }
}

/// Pixel after pixel, since each is predicted from the one before it; a pixel's channels side by side.
template <typename Predict>
void addUp(const Byte* from, const Byte* above, std::size_t size, std::size_t pixelSize, Byte* to,
           Predict predict) {
  // By way of a number, which goes from memory into a vector and back at once.
  using Numbers [[gnu::vector_size(lanes)]] = std::uint32_t;
  const auto loadPixel = [](const Byte* pixel) {
    std::uint32_t number = 0;
    std::memcpy(&number, pixel, sizeof number);
    return reinterpret_cast<Lanes>(Numbers{number});
  };
  Lanes left{}, upLeft{};
  for (std::size_t i = 0; i < size; i += pixelSize) {
    const Lanes up = loadPixel(above + i);
    left = loadPixel(from + i) + predict(left, up, upLeft);
    upLeft = up;
    const std::uint32_t sum = reinterpret_cast<Numbers>(left)[0];
    std::memcpy(to + i, &sum, sizeof sum);  // what is too much, the next pixel covers
  }
}

}  // namespace

PngFilter cheapestFilter(const PngRow& row, PngFilter filterAbove, Instructions instructions) {
  std::array<std::uint64_t, 5> sums{};
  vectorised<addUpCosts>(instructions, row, sums.data());
  const auto best = std::min_element(sums.begin() + 1, sums.end());
  const bool none = filterAbove == PngFilter::None ? sums.front() <= *best : sums.front() < *best;
  return none ? PngFilter::None : static_cast<PngFilter>(best - sums.begin());
}

void applyFilter(PngFilter filter, const PngRow& row, Byte* out, Instructions instructions) {
  vectorised<writeDifferences>(instructions, filter, row, out);
}

void undoFilter(PngFilter filter, const Byte* from, const Byte* above, std::size_t size,
                std::size_t pixelSize, Byte* to) {
  switch (filter) {
    case PngFilter::None:
      std::memcpy(to, from, size);
      return;
    case PngFilter::Sub:
      return addUp(from, above, size, pixelSize, to, [](Lanes left, Lanes, Lanes) { return left; });
    case PngFilter::Up:
      for (std::size_t i = 0; i < size; i += lanes) {
        const Lanes sum = load(from + i) + load(above + i);
        std::memcpy(to + i, &sum, lanes);
      }
      return;
    case PngFilter::Average:
      return addUp(from, above, size, pixelSize, to,
                   [](Lanes left, Lanes up, Lanes) { return average(left, up); });
    case PngFilter::Paeth:
      return addUp(from, above, size, pixelSize, to, paeth);
  }
}

}  // namespace platform
