// A blur in time that doesn't grow with sigma: most of a wide gaussian's work can be done on a smaller
// picture.
//
//   1. The picture is shrunk to nodes `factor` pixels apart. What would alias is removed before: a moving
//      average over `factor` pixels, four times over, which is a discrete cubic B-spline. Its frequency
//      response is zero at all frequencies that fold onto zero, four times over, so that what folds onto the
//      low frequencies that the gaussian lets pass is tiny. Averaging over two pixels, then over every other
//      pixel of the result, is averaging over four: so factors 2, 3 and 4 are shrunk from the bytes, in
//      whole numbers without any rounding, and further halvings follow on what is left.
//   2. The nodes are blurred by a plain gaussian.
//   3. Each pixel is put between its four nearest nodes in x and y by the cubic B-spline, which smooths as it
//      interpolates.
//
// Variances of convolved kernels add. The moving averages have 4 (factor^2 - 1) / 12, the interpolation has
// factor^2 / 3 wherever the pixel lies between its nodes; the gaussian in between makes up the rest of
// sigma^2. Averages so often repeated, with a gaussian, are very nearly a gaussian: the differences between
// the whole chain's weights and a gaussian's, summed up over all pixels, bound the error for every picture.
// With nodes half a sigma apart, the widest that is used, that is 0.1 of one of 255 levels in each direction.
//
// The B-spline as a sampling and interpolating kernel is from M. Unser, "Splines: a perfect fit for signal
// and image processing", IEEE Signal Processing Magazine 16 (6), 1999; shrinking and enlarging step by step
// with the weights 1 4 6 4 1 from P. Burt and E. Adelson, "The Laplacian pyramid as a compact image code",
// IEEE Transactions on Communications 31 (4), 1983.

#include "platform/imaging/filters/GaussianPasses.h"
#include "platform/imaging/filters/GaussianRows.h"
#include "platform/imaging/png/Bands.h"
#include "platform/imaging/png/LargeMemory.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <new>

namespace platform {
namespace {

/// Neighbouring pixels or nodes in one direction, counted from the picture's first pixel, which is node 0
/// too.
struct Span {
  int first;
  int last;

  [[nodiscard]] int count() const { return last - first + 1; }
  [[nodiscard]] Span widened(int by) const { return {first - by, last + by}; }
  [[nodiscard]] Span within(const Span& other) const {
    return {std::clamp(first, other.first, other.last), std::clamp(last, other.first, other.last)};
  }
};

struct Area {
  Span columns;
  Span rows;
};

/// The nodes around pixels that aren't negative.
Span nodesAround(const Span& pixels, int factor) {
  return {pixels.first / factor - 1, pixels.last / factor + 2};
}

/// The nodes that need be worked out in a direction of the picture: any further ones only see the edge, as
/// the outermost of these do already.
Span differentNodes(int pixels, int factor) {
  return {-2, (pixels - 1) / factor + 3};
}

/// The nodes that the nodes of twice the distance are made from.
Span finerNodes(const Span& nodes) {
  return {2 * nodes.first - 2, 2 * nodes.last + 2};
}

/// Nodes as floats, four channels each, a channel's values scaled to 0 to 255 * 256.
class Nodes {
 public:
  /// With room for rows beside those of the area, at least those.
  Nodes(const Area& of, const Span& rowsWithRoom)
      : area(of),
        room(rowsWithRoom),
        stride(static_cast<std::size_t>(of.columns.count()) * 4),
        values(allocateLarge<float>(stride * static_cast<std::size_t>(room.count()))) {
    if (!values)
      throw std::bad_alloc();
  }

  [[nodiscard]] float* row(int node) const {
    return values.get() + stride * static_cast<std::size_t>(node - room.first);
  }
  [[nodiscard]] const float* nearestRow(int node) const {
    return row(std::clamp(node, area.rows.first, area.rows.last));
  }

  Area area;
  Span room;
  std::size_t stride;

 private:
  LargeMemory<float> values;
};

/// A row with `wanted` pixels or nodes, of which `present` ones are there to be filled in; the others repeat
/// the first and the last.
template <typename Channel>
class PaddedRow {
 public:
  PaddedRow(const Span& wanted, const Span& available)
      : present(wanted.within(available)),
        before(present.first - wanted.first),
        after(wanted.last - present.last),
        values(static_cast<std::size_t>(wanted.count()) * 4) {}

  [[nodiscard]] Channel* presentPart() { return values.data() + 4 * before; }
  [[nodiscard]] std::size_t presentChannels() const { return static_cast<std::size_t>(present.count()) * 4; }
  [[nodiscard]] std::size_t channels() const { return values.size(); }
  [[nodiscard]] const Channel* padded() {
    repeatEdges(values.data(), before, present.count(), after);
    return values.data();
  }

  const Span present;

 private:
  int before;
  int after;
  std::vector<Channel> values;
};

template <int factor>
Nodes shrunk(const SourceRows& source, const Area& area, const Span& room, const Effort& effort) {
  constexpr int reach = 2 * (factor - 1);
  constexpr float scale = 256.0F / (factor * factor * factor * factor) / (factor * factor * factor * factor);
  const Span columns = area.columns;
  const Span rows = area.rows;
  const Span pixels{columns.first * factor - reach, columns.last * factor + reach};
  Nodes nodes(area, room);
  forEachBand(rows.count(), smallestBand(source.width * factor), effort.cores, [&](int first, int end) {
    PaddedRow<std::uint16_t> sums(pixels, {0, source.width - 1});
    std::vector<float> floats(sums.channels());
    for (int node = rows.first + first; node < rows.first + end; ++node) {
      std::array<const std::uint8_t*, 4 * factor - 3> taps;
      for (int tap = 0; tap < 4 * factor - 3; ++tap)
        taps[static_cast<std::size_t>(tap)] =
            source.row(node * factor - reach + tap) + std::ptrdiff_t{4} * sums.present.first;
      shrinkDown<factor>(taps, sums.presentPart(), sums.presentChannels(), effort.instructions);
      toFloats(sums.padded(), floats.data(), floats.size(), effort.instructions);
      shrinkAcross<factor>(floats.data(), nodes.row(node), static_cast<std::size_t>(columns.count()), scale,
                           effort.instructions);
    }
  });
  return nodes;
}

Nodes halved(const Nodes& fine, const Area& area, const Span& room, const Effort& effort) {
  const Span columns = area.columns;
  const Span rows = area.rows;
  Nodes nodes(area, room);
  forEachBand(rows.count(), smallestBand(columns.count() * 4), effort.cores, [&](int first, int end) {
    PaddedRow<float> sums(finerNodes(columns), fine.area.columns);
    for (int node = rows.first + first; node < rows.first + end; ++node) {
      std::array<const float*, 5> taps;
      for (int tap = 0; tap < 5; ++tap)
        taps[static_cast<std::size_t>(tap)] = fine.nearestRow(2 * node - 2 + tap);
      halveDown(taps, sums.presentPart(), sums.presentChannels(), effort.instructions);
      shrinkAcross<2>(sums.padded(), nodes.row(node), static_cast<std::size_t>(columns.count()), 1.0F / 256,
                      effort.instructions);
    }
  });
  return nodes;
}

/// The nodes `factor` pixels apart. `area` has no nodes beyond the different ones.
Nodes nodesOf(const SourceRows& source, int factor, const Area& area, const Span& room,
              const Effort& effort) {
  switch (factor) {
    case 2:
      return shrunk<2>(source, area, room, effort);
    case 3:
      return shrunk<3>(source, area, room, effort);
    case 4:
      return shrunk<4>(source, area, room, effort);
    default:
      const Area finer{finerNodes(area.columns).within(differentNodes(source.width, factor / 2)),
                       finerNodes(area.rows).within(differentNodes(source.height, factor / 2))};
      return halved(nodesOf(source, factor / 2, finer, finer.rows, effort), area, room, effort);
  }
}

/// Blurs each row for `columns`, from nodes that go as far as the kernel or as they differ, and repeats the
/// first and last rows where there is room.
void blurAcross(Nodes& nodes, const Span& columns, const GaussianKernel& kernel, const Effort& effort) {
  const Span rows = nodes.area.rows;
  forEachBand(rows.count(), smallestBand(columns.count() * 4), effort.cores, [&](int first, int end) {
    PaddedRow<float> row(columns.widened(kernel.radius), nodes.area.columns);
    for (int node = rows.first + first; node < rows.first + end; ++node) {
      std::memcpy(row.presentPart(), nodes.row(node), row.presentChannels() * sizeof(float));
      convolve(row.padded() + std::ptrdiff_t{4} * kernel.radius, 4, kernel.weights.data(), kernel.radius,
               nodes.row(node), static_cast<std::size_t>(columns.count()) * 4, effort.instructions);
    }
  });
  nodes.area.columns = columns;
  const auto copyRow = [&](int from, int to) {
    std::memcpy(nodes.row(to), nodes.row(from), nodes.stride * sizeof(float));
  };
  for (int node = nodes.room.first; node < rows.first; ++node)
    copyRow(rows.first, node);
  for (int node = rows.last + 1; node <= nodes.room.last; ++node)
    copyRow(rows.last, node);
}

/// The cubic B-spline's weights of the nodes -1 to 2 for a pixel `fraction` of the way from node 0 to node 1.
std::array<double, 4> splineWeights(double fraction) {
  const double t = fraction;
  const double u = 1 - fraction;
  return {u * u * u / 6, (4 - 3 * t * t * (2 - t)) / 6, (4 - 3 * u * u * (2 - u)) / 6, t * t * t / 6};
}

std::array<std::uint16_t, 4> wholeWeights(const std::array<double, 4>& weights) {
  const auto whole = [](double weight) { return static_cast<std::uint16_t>(std::lround(weight * 65536)); };
  std::array<std::uint16_t, 4> result{whole(weights[0]), 0, whole(weights[2]), whole(weights[3])};
  result[1] = static_cast<std::uint16_t>(65536 - result[0] - result[2] - result[3]);
  return result;
}

/// Blurs the columns and enlarges, row by row: the four rows of nodes around a row of pixels are kept,
/// blurred and enlarged to full width.
class Enlarger {
 public:
  Enlarger(const Nodes& from, const GaussianKernel& with, int factorOfNodes, const QRect& into,
           Instructions use)
      : nodes(from),
        kernel(with),
        factor(factorOfNodes),
        region(into),
        instructions(use),
        blurred(nodes.stride),
        enlarged(static_cast<std::size_t>(region.width()) * 4) {
    for (std::vector<std::uint16_t>& row : rows)
      row.resize(enlarged.size());
    for (int phase = 0; phase < factor; ++phase) {
      const std::array<double, 4> weights = splineWeights(static_cast<double>(phase) / factor);
      weightsDown.push_back(wholeWeights(weights));
      weightsAcross.push_back({static_cast<float>(weights[0]), static_cast<float>(weights[1]),
                               static_cast<float>(weights[2]), static_cast<float>(weights[3])});
    }
  }

  /// Rows are counted from the region's first.
  void enlarge(int first, int end, const ResultRows& result) {
    int next = (region.top() + first) / factor - 1;
    for (int row = first; row < end; ++row) {
      const int y = region.top() + row;
      const int above = y / factor;
      for (; next <= above + 2; ++next)
        prepare(next);
      mixDown({slot(above - 1).data(), slot(above).data(), slot(above + 1).data(), slot(above + 2).data()},
              weightsDown[static_cast<std::size_t>(y % factor)], result.row(row), enlarged.size(),
              instructions);
    }
  }

 private:
  [[nodiscard]] std::vector<std::uint16_t>& slot(int node) {
    return rows[static_cast<std::size_t>(node + 1) % 4];
  }

  void prepare(int node) {
    convolve(nodes.row(node), nodes.stride, kernel.weights.data(), kernel.radius, blurred.data(),
             static_cast<std::size_t>(nodes.area.columns.count()) * 4, instructions);
    enlargeAcross(blurred.data(), weightsAcross.data(), static_cast<std::size_t>(factor),
                  static_cast<std::size_t>(region.left() % factor), enlarged.data(), enlarged.size() / 4,
                  instructions);
    round(enlarged.data(), slot(node).data(), enlarged.size(), instructions);
  }

  const Nodes& nodes;
  const GaussianKernel& kernel;
  int factor;
  QRect region;
  Instructions instructions;
  std::vector<float> blurred;
  std::vector<float> enlarged;
  std::array<std::vector<std::uint16_t>, 4> rows;
  std::vector<std::array<std::uint16_t, 4>> weightsDown;
  std::vector<SplineWeights> weightsAcross;
};

}  // namespace

Reduction reductionFor(double sigma) {
  if (sigma < 4)
    return {};
  int factor = 2;
  while (sigma >= 4 * factor)
    factor *= 2;
  if (sigma >= 3 * factor)
    factor += factor / 2;
  const double square = static_cast<double>(factor) * factor;
  const double variance = sigma * sigma - (square - 1) / 3 - square / 3;
  return {factor, std::sqrt(variance / square)};
}

void blurReduced(const SourceRows& source, const Reduction& reduction, const QRect& region,
                 const ResultRows& result, const Effort& effort) {
  const int factor = reduction.factor;
  const GaussianKernel kernel = gaussianKernel(reduction.nodeSigma);
  const Area around{nodesAround({region.left(), region.right()}, factor),
                    nodesAround({region.top(), region.bottom()}, factor)};
  const Area different{around.columns.widened(kernel.radius).within(differentNodes(source.width, factor)),
                       around.rows.widened(kernel.radius).within(differentNodes(source.height, factor))};
  Nodes nodes = nodesOf(source, factor, different, around.rows.widened(kernel.radius), effort);
  blurAcross(nodes, around.columns, kernel, effort);
  forEachBand(region.height(), smallestBand(region.width()), effort.cores, [&](int first, int end) {
    Enlarger(nodes, kernel, factor, region, effort.instructions).enlarge(first, end, result);
  });
}

}  // namespace platform
