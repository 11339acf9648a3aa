#include "platform/imaging/drawing/LineMask.h"

#include <cmath>

namespace platform {
namespace {

using Samples = LineMask::Samples;

constexpr int tileSize = 64;
constexpr unsigned sampleCount = LineMask::samplesPerPixel;
constexpr Samples allSamples = ~Samples{0};

/// From a pixel's middle to its corners: an edge farther away leaves it full or empty.
constexpr float cornerDistance = 0.70711F;

/// Below this radius a pixel may see more of the line than one nearly straight edge.
constexpr double thinRadius = 2;

struct Place {
  float x;
  float y;
};

/// Where the samples lie, seen from the pixel's middle: a Hammersley set (J. M. Hammersley, Monte Carlo
/// methods for solving multivariable problems, 1960), of whose 64 digital shifts this one is never off by
/// more than 12 of 255 on either side of a straight edge.
constexpr std::array<Place, sampleCount> samplePlaces = [] {
  std::array<Place, sampleCount> places{};
  for (unsigned index = 0; index < sampleCount; ++index) {
    unsigned reversed = 0;
    for (unsigned bit = 0; bit < 6; ++bit)
      reversed |= (index >> bit & 1) << (5 - bit);
    constexpr unsigned shift = 38;
    places[index] = {(static_cast<float>(index) + 0.5F) / sampleCount - 0.5F,
                     (static_cast<float>(reversed ^ shift) + 0.5F) / sampleCount - 0.5F};
  }
  return places;
}();

/// The samples on the inner side of a straight edge, by the edge's direction and its distance from the
/// pixel's middle: as many as the edge leaves of the pixel's area.
class HalfPlanes {
 public:
  HalfPlanes() {
    for (unsigned direction = 0; direction < directions; ++direction)
      fill(direction);
  }

  /// `outward` (of any length but 0) points out of the shape, `inside` is how far the pixel's middle is from
  /// the edge, negative outside of the shape.
  [[nodiscard]] Samples at(Place outward, float inside) const {
    const float slope = outward.y / (std::abs(outward.x) + std::abs(outward.y));
    const auto direction = static_cast<int>(((outward.x < 0 ? 2 - slope : slope) + 1) * directions / 4);
    const auto distance = static_cast<int>((inside + cornerDistance) * (distances / (2 * cornerDistance)));
    return table[static_cast<unsigned>(direction) % directions]
                [static_cast<unsigned>(std::clamp(distance, 0, distances - 1))];
  }

 private:
  static constexpr int directions = 64;  // evenly around a diamond
  static constexpr int distances = 64;

  /// The part of a pixel that an edge leaves whose normal is (x, y).
  static double areaInside(double x, double y, double inside) {
    const double larger = std::max(std::abs(x), std::abs(y));
    const double smaller = std::min(std::abs(x), std::abs(y));
    const double away = std::abs(inside);
    const double toCorner = (larger + smaller) / 2 - away;
    const double less = toCorner <= 0        ? 0
                        : toCorner < smaller ? toCorner * toCorner / (2 * larger * smaller)
                                             : 0.5 - away / larger;
    return inside > 0 ? 1 - less : less;
  }

  void fill(unsigned direction) {
    const double around = (direction + 0.5) * 4 / directions - 1;  // from -1 to 3
    double y = around > 1 ? 2 - around : around;
    double x = (1 - std::abs(y)) * (around > 1 ? -1 : 1);
    const double length = std::hypot(x, y);
    x /= length;
    y /= length;
    std::array<unsigned, sampleCount> outwards{};
    for (unsigned index = 0; index < sampleCount; ++index)
      outwards[index] = index;
    const auto height = [&](unsigned index) {
      return x * double(samplePlaces[index].x) + y * double(samplePlaces[index].y);
    };
    std::stable_sort(outwards.begin(), outwards.end(),
                     [&](unsigned left, unsigned right) { return height(left) < height(right); });
    for (unsigned distance = 0; distance < distances; ++distance) {
      const double inside = ((distance + 0.5) / distances * 2 - 1) * double(cornerDistance);
      const auto count = static_cast<unsigned>(std::lround(areaInside(x, y, inside) * sampleCount));
      for (unsigned index = 0; index < count; ++index)
        table[direction][distance] |= Samples{1} << outwards[index];
    }
  }

  std::array<std::array<Samples, distances>, directions> table{};
};

/// A straight piece with round ends, in a tile's own space.
struct Capsule {
  Place from;
  Place direction;  // of length 1
  float length;
  float radius;
  bool isContinued;

  /// How far into the capsule the place is, negative outside, and which way leads out.
  [[nodiscard]] std::pair<float, Place> edgeSeenFrom(float x, float y) const {
    const float offX = x - from.x;
    const float offY = y - from.y;
    const float along = offX * direction.x + offY * direction.y;
    const float nearest = std::clamp(along, 0.0F, length);
    const Place outward{offX - nearest * direction.x, offY - nearest * direction.y};
    // A round end bends away from the straight edge, on average over a pixel by so much.
    const float bend = along == nearest ? 0 : 1 / (24 * radius);
    return {radius - std::sqrt(outward.x * outward.x + outward.y * outward.y) - bend, outward};
  }

  [[nodiscard]] Samples samplesAround(float x, float y) const {
    Samples samples = 0;
    for (unsigned index = 0; index < sampleCount; ++index) {
      const float offX = x + samplePlaces[index].x - from.x;
      const float offY = y + samplePlaces[index].y - from.y;
      const float along = std::clamp(offX * direction.x + offY * direction.y, 0.0F, length);
      const float acrossX = offX - along * direction.x;
      const float acrossY = offY - along * direction.y;
      samples |= Samples{acrossX * acrossX + acrossY * acrossY <= radius * radius} << index;
    }
    return samples;
  }
};

/// In which columns the middles of each row's pixels lie: from `begins` up to but without `ends`.
struct Stretches {
  std::array<int, tileSize> begins;
  std::array<int, tileSize> ends;
};

/// Finds the pixels within some distance of a capsule's middle line. A row crosses that convex shape in one
/// stretch: from the outermost left to the outermost right of both ends' circles and both sides.
void findStretches(const Capsule capsule, float distance, int firstRow, int lastRow, Stretches& stretches) {
  constexpr float nowhere = 1e6F;
  const float reachX = capsule.length * capsule.direction.x;
  const float reachY = capsule.length * capsule.direction.y;
  const float sideX = -capsule.direction.y * distance;
  const float sideY = capsule.direction.x * distance;
  const float upper = std::min(0.0F, reachY);
  const float lower = std::max(0.0F, reachY);
  const float lean = std::abs(capsule.direction.y) > 1e-6F ? capsule.direction.x / capsule.direction.y : 0;
  // What lies behind a continued piece's beginning is covered already: a line across it bounds the rest.
  const bool isBounded = capsule.isContinued && std::abs(capsule.direction.x) > 0.01F;
  const float bound = isBounded ? -cornerDistance / capsule.direction.x : 0;
  const float boundLean = isBounded ? -capsule.direction.y / capsule.direction.x : 0;
  const float leftBound = isBounded && capsule.direction.x > 0 ? bound : -nowhere;
  const float rightBound = isBounded && capsule.direction.x < 0 ? bound : nowhere;
  int* const begins = stretches.begins.data();
  int* const ends = stretches.ends.data();
  for (int row = firstRow; row <= lastRow; ++row) {
    const float y = static_cast<float>(row) + 0.5F - capsule.from.y;
    const float fromSquare = distance * distance - y * y;
    const float toSquare = distance * distance - (y - reachY) * (y - reachY);
    const float fromHalf = fromSquare >= 0 ? std::sqrt(std::max(fromSquare, 0.0F)) : -nowhere;
    const float toHalf = toSquare >= 0 ? std::sqrt(std::max(toSquare, 0.0F)) : -nowhere;
    const bool meetsOne = y - sideY >= upper && y - sideY <= lower;
    const bool meetsOther = y + sideY >= upper && y + sideY <= lower;
    const float one = sideX + (y - sideY) * lean;
    const float other = (y + sideY) * lean - sideX;
    float left = std::min(-fromHalf, reachX - toHalf);
    left = std::min(left, std::min(meetsOne ? one : nowhere, meetsOther ? other : nowhere));
    left = std::max(left, leftBound + y * boundLean) + capsule.from.x;
    float right = std::max(fromHalf, reachX + toHalf);
    right = std::max(right, std::max(meetsOne ? one : -nowhere, meetsOther ? other : -nowhere));
    right = std::min(right, rightBound + y * boundLean) + capsule.from.x;
    // Rounded up and down to pixels' middles.
    constexpr float size = tileSize;
    begins[row] = static_cast<int>(std::min(std::max(left, 0.0F), size) + 1.49999F) - 1;
    ends[row] = static_cast<int>(std::min(std::max(right, 0.0F), size - 0.5F) + 0.5F);
  }
}

void coverThinly(const Capsule& capsule, Samples* samples, int begin, int end, float y) {
  for (int x = begin; x < end; ++x)
    if (samples[x] != allSamples)
      samples[x] |= capsule.samplesAround(static_cast<float>(x) + 0.5F, y);
}

void coverEdge(const Capsule& capsule, Samples* samples, int begin, int end, float y) {
  static const HalfPlanes halfPlanes;
  for (int x = begin; x < end; ++x) {
    if (samples[x] == allSamples)
      continue;
    const auto [inside, outward] = capsule.edgeSeenFrom(static_cast<float>(x) + 0.5F, y);
    samples[x] |= halfPlanes.at(outward, inside);
  }
}

}  // namespace

/// A straight piece of the line.
struct LineMask::Piece {
  QPointF from;
  QPointF direction;  // of length 1
  double length;
  bool isContinued;  // from another, which has covered all around its beginning
};

void LineMask::restart(double width, const QRect& kept) {
  for (auto& tile : tiles) {
    if (!tile)
      continue;
    for (std::size_t row = 0; row < tileSize; ++row) {
      Extent& extent = tile->extents[row];
      if (extent.begin < extent.end)
        std::fill(tile->rows[row].begin() + extent.begin, tile->rows[row].begin() + extent.end, Samples{0});
      extent = {};
    }
    spare.push_back(std::move(tile));
  }
  radius = width / 2;
  area = kept;
  last.reset();
  columns = (area.width() + tileSize - 1) / tileSize;
  tiles.clear();
  tiles.resize(indexOf(0, (area.height() + tileSize - 1) / tileSize));
}

QRect LineMask::append(const QPointF& point) {
  if (!std::isfinite(point.x()) || !std::isfinite(point.y()) || !(radius > 0))
    return {};
  const QPointF from = last.value_or(point);
  const bool isContinued = last.has_value();
  last = point;

  const double reach = radius + 1;
  const double left = std::max(std::min(from.x(), point.x()) - reach, double(area.left()));
  const double right = std::min(std::max(from.x(), point.x()) + reach, double(area.right()) + 1);
  const double top = std::max(std::min(from.y(), point.y()) - reach, double(area.top()));
  const double bottom = std::min(std::max(from.y(), point.y()) + reach, double(area.bottom()) + 1);
  if (!(left < right && top < bottom))
    return {};
  const QRect pixels(QPoint(int(std::floor(left)), int(std::floor(top))),
                     QPoint(int(std::ceil(right)) - 1, int(std::ceil(bottom)) - 1));
  const QPointF step = point - from;
  const double length = std::hypot(step.x(), step.y());
  cover({from, length > 0 ? step / length : QPointF(1, 0), length, isContinued}, pixels);
  return pixels;
}

/// Each tile sees only the part of the piece near it: so numbers stay small however far away the ends are.
void LineMask::cover(const Piece& piece, const QRect& pixels) {
  const QRect inArea = pixels.translated(-area.topLeft());
  const double reach = radius + 1 + tileSize * double(cornerDistance);
  for (int row = inArea.top() / tileSize; row <= inArea.bottom() / tileSize; ++row)
    for (int column = inArea.left() / tileSize; column <= inArea.right() / tileSize; ++column) {
      const QPointF corner = area.topLeft() + QPointF(column * tileSize, row * tileSize);
      const QPointF toMiddle = corner + QPointF(tileSize, tileSize) / 2 - piece.from;
      const double across = toMiddle.x() * piece.direction.y() - toMiddle.y() * piece.direction.x();
      const double along = QPointF::dotProduct(toMiddle, piece.direction);
      const double begin = std::max(along - reach, 0.0);
      const double end = std::min(along + reach, piece.length);
      if (std::abs(across) <= reach && begin <= end)
        coverInTile(tileAt(column, row),
                    {piece.from + begin * piece.direction - corner, piece.direction, end - begin,
                     piece.isContinued && begin == 0},
                    radius);
    }
}

LineMask::Tile& LineMask::tileAt(int column, int row) {
  auto& tile = tiles[indexOf(column, row)];
  if (!tile && !spare.empty()) {
    tile = std::move(spare.back());
    spare.pop_back();
  } else if (!tile) {
    tile = std::make_unique<Tile>();
  }
  return *tile;
}

void LineMask::coverInTile(Tile& tile, const Piece& piece, double reach) {
  const auto place = [](const QPointF& point) {
    return Place{static_cast<float>(point.x()), static_cast<float>(point.y())};
  };
  const Capsule capsule{place(piece.from), place(piece.direction), static_cast<float>(piece.length),
                        static_cast<float>(reach), piece.isContinued};
  const bool isThin = reach < thinRadius;
  const float grown = capsule.radius + cornerDistance;
  const float toY = capsule.from.y + capsule.length * capsule.direction.y;
  const int firstRow = std::max(0, static_cast<int>(std::min(capsule.from.y, toY) - grown));
  const int lastRow = std::min(tileSize - 1, static_cast<int>(std::max(capsule.from.y, toY) + grown));
  Stretches touched;
  Stretches full;
  findStretches(capsule, grown, firstRow, lastRow, touched);
  if (!isThin)
    findStretches(capsule, capsule.radius - cornerDistance, firstRow, lastRow, full);
  for (int row = firstRow; row <= lastRow; ++row) {
    const auto index = static_cast<std::size_t>(row);
    const int begin = touched.begins[index];
    const int end = touched.ends[index];
    if (begin >= end)
      continue;
    tile.extents[index] = {std::min(tile.extents[index].begin, begin),
                           std::max(tile.extents[index].end, end)};
    Samples* const samples = tile.rows[index].data();
    const float y = static_cast<float>(row) + 0.5F;
    if (isThin) {
      coverThinly(capsule, samples, begin, end, y);
    } else if (full.begins[index] >= full.ends[index]) {
      coverEdge(capsule, samples, begin, end, y);
    } else {
      coverEdge(capsule, samples, begin, full.begins[index], y);
      std::fill(samples + full.begins[index], samples + full.ends[index], allSamples);
      coverEdge(capsule, samples, full.ends[index], end, y);
    }
  }
}

}  // namespace platform
