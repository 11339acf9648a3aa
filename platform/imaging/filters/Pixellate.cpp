#include "platform/imaging/filters/Pixellate.h"

#include "platform/imaging/filters/FilterFrame.h"
#include "platform/imaging/filters/PixelSums.h"
#include "platform/imaging/png/Bands.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace platform {
namespace {

bool isCellSize(double cellSize) {
  return cellSize > 0 && std::isfinite(cellSize);
}

/// The pixels of one direction that cells share: from `first` up to but without `end`.
struct Run {
  int first;
  int end;
};

/// The runs of a row or column that touch the pixels from `first` to `last`; `centre` gives a pixel's place
/// in the grid's space.
template <typename Centre>
std::vector<Run> runsOf(int pixels, int first, int last, double cellSize, double gridPoint,
                        const Centre& centre) {
  const auto cellOf = [&](int pixel) { return std::floor((centre(pixel) - gridPoint) / cellSize); };
  std::vector<Run> runs;
  for (int start = 0; start < pixels && start <= last;) {
    int end = start + 1;
    while (end < pixels && cellOf(end) == cellOf(start))
      ++end;
    if (end > first)
      runs.push_back({start, end});
    start = end;
  }
  return runs;
}

class Cells {
 public:
  Cells(const SourceRows& from, double cellSize, double gridPoint, const QRect& into, const Effort& use)
      : source(from),
        region(into),
        effort(use),
        columns(runsOf(source.width, region.left(), region.right(), cellSize, gridPoint,
                       [](int x) { return x + 0.5; })),
        rows(runsOf(source.height, region.top(), region.bottom(), cellSize, gridPoint,
                    [&](int y) { return source.height - (y + 0.5); })) {}

  void draw(const ResultRows& result) const {
    const int cellHeight = rows.front().end - rows.front().first;
    forEachBand(static_cast<int>(rows.size()), 1 + smallestBand(region.width()) / cellHeight, effort.cores,
                [&](int first, int end) {
                  for (int row = first; row < end; ++row)
                    drawRow(rows[static_cast<size_t>(row)], result);
                });
  }

 private:
  /// One row of cells.
  void drawRow(const Run& row, const ResultRows& result) const {
    const int left = columns.front().first;
    std::vector<std::uint32_t> sums(static_cast<size_t>(columns.back().end - left) * 4);
    addRows(source.row(row.first) + std::ptrdiff_t{4} * left, source.stride,
            static_cast<size_t>(row.end - row.first), sums.data(), sums.size(), effort.instructions);
    std::vector<std::array<std::uint8_t, 4>> line(static_cast<size_t>(region.width()));
    for (const Run& column : columns) {
      const auto pixels = static_cast<std::uint64_t>(column.end - column.first) *
                          static_cast<std::uint64_t>(row.end - row.first);
      std::fill(
          line.begin() + std::max(column.first - region.left(), 0),
          line.begin() + std::min(column.end - region.left(), region.width()),
          mean(sums.data() + std::ptrdiff_t{4} * (column.first - left), column.end - column.first, pixels));
    }
    for (int y = std::max(row.first, region.top()); y < std::min(row.end, region.bottom() + 1); ++y)
      std::copy_n(line.front().data(), line.size() * 4, result.row(y - region.top()));
  }

  static std::array<std::uint8_t, 4> mean(const std::uint32_t* sums, int columns, std::uint64_t pixels) {
    std::array<std::uint64_t, 4> total{};
    for (int column = 0; column < columns; ++column)
      for (size_t channel = 0; channel < 4; ++channel)
        total[channel] += sums[static_cast<size_t>(column) * 4 + channel];
    std::array<std::uint8_t, 4> result{};
    for (size_t channel = 0; channel < 4; ++channel)
      result[channel] = static_cast<std::uint8_t>((2 * total[channel] + pixels) / (2 * pixels));
    return result;
  }

  SourceRows source;
  QRect region;
  Effort effort;
  std::vector<Run> columns;
  std::vector<Run> rows;
};

}  // namespace

QImage pixellate(QImage source, double cellSize, const QRect& regionOfInterest, const Effort& effort,
                 double gridPoint) {
  const std::optional<QRect> region = regionToFilter(source, regionOfInterest);
  if (!region || !isCellSize(cellSize))
    return {};
  return filtered(std::move(source), *region, Destination::SourceIfUnshared,
                  [&](const SourceRows& from, const ResultRows& to) {
                    Cells(from, std::max(cellSize, 1.0), gridPoint, *region, effort).draw(to);
                  });
}

int pixellateReach(double cellSize) {
  constexpr double beyondAnyPicture = 1 << 30;
  return isCellSize(cellSize) ? static_cast<int>(std::ceil(std::clamp(cellSize, 1.0, beyondAnyPicture))) - 1
                              : 0;
}

}  // namespace platform
