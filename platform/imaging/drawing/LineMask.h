#pragma once

#include <QPointF>
#include <QRect>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace platform {

/// Which part of each pixel a line of some width covers: straight from point to point, with round caps and
/// joins, and a dot while it has only one point. One unit is one pixel, y grows downwards.
///
/// Each pixel holds 64 samples, and each piece of the line adds those that it covers. So it doesn't matter
/// how often or in what order a place is passed, a line doesn't get thicker by being drawn back and forth,
/// and a point costs the same whatever is there already. No pixel is off by more than 16 of 255 from the
/// covered area, for widths from 1. Memory follows the line, in tiles of the kept rectangle; where tiles lie
/// decides how numbers round, so only masks whose tiles coincide are the same to the last sample.
class LineMask {
 public:
  using Samples = std::uint64_t;
  static constexpr int samplesPerPixel = 64;
  static constexpr int tileSize = 64;

  LineMask() = default;
  /// Only pixels inside `kept` count.
  LineMask(double width, const QRect& kept) { restart(width, kept); }

  /// Begins another line, in the memory of this one.
  void restart(double width, const QRect& kept);

  /// Leads the line on to the point, and returns the pixels that may be covered differently now. A point that
  /// isn't finite is left out.
  QRect append(const QPointF& point);

  /// Calls `work(x, y, samples, count)` for stretches of pixels that hold all that is covered in `part`.
  template <typename Work>
  void forEachStretch(const QRect& part, const Work& work) const;

 private:
  /// The columns of a tile's row in which something may be covered: from `begin` up to but without `end`.
  struct Extent {
    int begin = tileSize;
    int end = 0;
  };
  struct Tile {
    std::array<std::array<Samples, tileSize>, tileSize> rows{};
    std::array<Extent, tileSize> extents{};
  };
  struct Piece;

  void cover(const Piece& piece, const QRect& pixels);
  [[nodiscard]] std::size_t indexOf(int column, int row) const {
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
           static_cast<std::size_t>(column);
  }
  [[nodiscard]] Tile& tileAt(int column, int row);
  static void coverInTile(Tile& tile, const Piece& piece, double reach);

  double radius = 0;
  QRect area;
  int columns = 0;  // of tiles
  std::optional<QPointF> last;
  std::vector<std::unique_ptr<Tile>> tiles;
  std::vector<std::unique_ptr<Tile>> spare;  // nothing is covered in them
};

template <typename Work>
void LineMask::forEachStretch(const QRect& part, const Work& work) const {
  const QRect wanted = (part & area).translated(-area.topLeft());
  if (wanted.isEmpty())
    return;
  for (int row = wanted.top() / tileSize; row <= wanted.bottom() / tileSize; ++row)
    for (int column = wanted.left() / tileSize; column <= wanted.right() / tileSize; ++column) {
      const Tile* const tile = tiles[indexOf(column, row)].get();
      if (!tile)
        continue;
      const QPoint corner(column * tileSize, row * tileSize);
      const QRect inTile = wanted.translated(-corner) & QRect(0, 0, tileSize, tileSize);
      for (int y = inTile.top(); y <= inTile.bottom(); ++y) {
        const Extent& extent = tile->extents[static_cast<std::size_t>(y)];
        const int begin = std::max(inTile.left(), extent.begin);
        const int end = std::min(inTile.right() + 1, extent.end);
        if (begin < end)
          work(area.left() + corner.x() + begin, area.top() + corner.y() + y,
               tile->rows[static_cast<std::size_t>(y)].data() + begin, end - begin);
      }
    }
}

}  // namespace platform
