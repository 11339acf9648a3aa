#include "platform/imaging/drawing/DrawingSurface.h"

#include "platform/imaging/drawing/SmoothImage.h"
#include "platform/imaging/drawing/TextBlock.h"
#include "platform/imaging/filters/BlankPicture.h"
#include "platform/imaging/png/Bands.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

namespace platform {
namespace {

using Samples = LineMask::Samples;

constexpr int tileSize = LineMask::tileSize;
int onTile(int pixel) {
  return pixel / tileSize * tileSize;
}

/// What the painter would do by itself, in memory whose fresh pages cost less.
QImage copied(const QImage& source) {
  QImage copy = blankLike(source, source.size());
  if (copy.isNull())
    return source.copy();
  const auto bytes = 4 * static_cast<std::size_t>(source.width());
  for (int y = 0; y < source.height(); ++y)
    std::memcpy(copy.scanLine(y), source.constScanLine(y), bytes);
  return copy;
}

std::uint32_t alphaOf(std::uint32_t pixel) {
  return std::endian::native == std::endian::little ? pixel >> 24 : pixel & 255;
}

/// `share` of 64 parts of `above`, the rest of `below`, each channel rounded to the nearest.
std::uint32_t mixed(std::uint32_t below, std::uint32_t above, std::uint32_t share) {
  static_assert(LineMask::samplesPerPixel == 64);
  constexpr std::uint32_t even = 0x00ff00ff;
  constexpr std::uint32_t halves = 0x00200020;
  const std::uint32_t rest = 64 - share;
  const std::uint32_t low = ((below & even) * rest + (above & even) * share + halves) >> 6 & even;
  const std::uint32_t high = ((below >> 8 & even) * rest + (above >> 8 & even) * share + halves) >> 6 & even;
  return low | high << 8;
}

/// Each channel rounded to the nearest.
std::uint32_t laidOver(std::uint32_t below, std::uint32_t above) {
  constexpr std::uint32_t even = 0x00ff00ff;
  constexpr std::uint32_t halves = 0x00800080;
  const std::uint32_t rest = 255 - alphaOf(above);
  const auto share = [rest](std::uint32_t pair) {
    const std::uint32_t product = pair * rest + halves;
    return (product + (product >> 8 & even)) >> 8 & even;
  };
  return above + (share(below & even) | share(below >> 8 & even) << 8);
}

void layRow(std::uint32_t* below, const std::uint32_t* above, int count) {
  for (int x = 0; x < count; ++x)
    if (const std::uint32_t alpha = alphaOf(above[x]))
      below[x] = alpha == 255 ? above[x] : laidOver(below[x], above[x]);
}

/// `above(x)` gives what is to be seen where a sample is covered.
template <typename Above>
void mixIn(std::uint32_t* pixels, const Samples* samples, int count, const Above& above) {
  for (int x = 0; x < count; ++x) {
    if (samples[x] == ~Samples{0})
      pixels[x] = above(x);
    else if (samples[x] != 0)
      pixels[x] = mixed(pixels[x], above(x), static_cast<std::uint32_t>(std::popcount(samples[x])));
  }
}

std::uint32_t pixelOf(const QColor& opaque) {
  const std::uint8_t bytes[] = {static_cast<std::uint8_t>(opaque.red()),
                                static_cast<std::uint8_t>(opaque.green()),
                                static_cast<std::uint8_t>(opaque.blue()), 255};
  std::uint32_t pixel = 0;
  std::memcpy(&pixel, bytes, sizeof pixel);
  return pixel;
}

/// An image in the place of the pixels that a line covers.
class Replacement {
 public:
  Replacement(const QImage& replacing, const QPoint& at) : image(replacing), origin(at) {}

  void mixInto(std::uint32_t* pixels, int x, int y, const Samples* samples, int count) const {
    const int row = y - origin.y();
    const int skipped = std::max(origin.x() - x, 0);
    const int end = std::min(count, origin.x() + image.width() - x);
    if (row < 0 || row >= image.height() || skipped >= end)
      return;
    const uchar* const from = image.constScanLine(row) + 4 * std::ptrdiff_t(x - origin.x());
    mixIn(pixels + skipped, samples + skipped, end - skipped, [&](int at) {
      std::uint32_t pixel = 0;
      std::memcpy(&pixel, from + 4 * std::ptrdiff_t(skipped + at), sizeof pixel);
      return pixel;
    });
  }

 private:
  const QImage& image;
  QPoint origin;
};

std::vector<RoundLine> shapesOf(const std::vector<ColouredLine>& lines) {
  std::vector<RoundLine> shapes;
  for (const ColouredLine& line : lines)
    shapes.push_back(line.line);
  return shapes;
}

/// The rows that the line can touch, as far as they lie between two rows: from `first` up to but without
/// `second`.
std::pair<int, int> rowsOf(const RoundLine& line, int top, int bottom) {
  double least = bottom;
  double most = top;
  for (const QPointF& point : line.points) {
    const double y = line.onSurface(point).y();
    least = std::min(least, y);
    most = std::max(most, y);
  }
  const double reach = line.width * line.scale / 2 + 1;
  return {int(std::clamp(least - reach, double(top), double(bottom))),
          int(std::clamp(most + reach + 1, double(top), double(bottom)))};
}

}  // namespace

/// Lines on nothing, of one row of tiles at a time: so much fits the processor's cache, where a picture of
/// them all would have to be cleared and read as a whole.
class DrawingSurface::LineLayer {
 public:
  LineLayer(DrawingSurface& below, const std::vector<ColouredLine>& all) : surface(below), lines(all) {}

  void operator()(std::size_t line, int x, int y, const Samples* samples, int count) {
    top = onTile(y);
    const int begin = x - surface.clip.left();
    Row& row = rows.at(static_cast<std::size_t>(y - top));
    row.pixels.resize(static_cast<std::size_t>(surface.clip.width()));
    row.begin = std::min(row.begin, begin);
    row.end = std::max(row.end, begin + count);
    mixIn(row.pixels.data() + begin, samples, count,
          [pixel = pixelOf(lines[line].colour)](int) { return pixel; });
  }

  void endRowOfTiles() {
    for (std::size_t index = 0; index < rows.size(); ++index) {
      Row& row = rows[index];
      if (row.begin >= row.end)
        continue;
      layRow(surface.pixels(surface.clip.left() + row.begin, top + int(index)), row.pixels.data() + row.begin,
             row.end - row.begin);
      std::fill(row.pixels.begin() + row.begin, row.pixels.begin() + row.end, 0);
      row.begin = nowhere;
      row.end = 0;
    }
  }

 private:
  static constexpr int nowhere = std::numeric_limits<int>::max();
  /// Pixels are clear, but for those from `begin` up to but without `end`.
  struct Row {
    std::vector<std::uint32_t> pixels;
    int begin = nowhere;
    int end = 0;
  };

  DrawingSurface& surface;
  const std::vector<ColouredLine>& lines;
  int top = 0;
  std::array<Row, tileSize> rows;
};

DrawingSurface::DrawingSurface(QImage start, const QRect& dirty)
    : picture(std::move(start).convertToFormat(QImage::Format_RGBA8888_Premultiplied)),
      clip(dirty.isNull() ? picture.rect() : dirty & picture.rect()) {
}

DrawingSurface::~DrawingSurface() = default;

void DrawingSurface::beginPixels() {
  painter.reset();
  if (bits)
    return;
  if (!picture.isDetached())
    picture = copied(picture);
  bits = reinterpret_cast<std::uint32_t*>(picture.bits());
  stride = picture.bytesPerLine() / 4;
}

QPainter& DrawingSurface::brush() {
  if (!painter) {
    beginPixels();
    painter = std::make_unique<QPainter>(&picture);
    painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (clip != picture.rect())
      painter->setClipRect(clip);
  }
  return *painter;
}

void DrawingSurface::draw(const QImage& image, const QRectF& rectangle, double opacity) {
  brush().setOpacity(opacity);
  drawSmoothly(brush(), image, rectangle);
  brush().setOpacity(1);
}

void DrawingSurface::draw(const TextBlock& text, const QPointF& topLeft) {
  text.draw(brush(), topLeft);
}

void DrawingSurface::lay(const QImage& image, const QPoint& topLeft) {
  const QRect part = QRect(topLeft, image.size()) & clip;
  if (part.isEmpty())
    return;
  beginPixels();
  constexpr int rowsWorthAThread = 128;
  forEachBand(part.height(), rowsWorthAThread, Cores::All, [&](int first, int end) {
    for (int y = part.top() + first; y < part.top() + end; ++y) {
      const auto* const above = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y - topLeft.y())) +
                                (part.left() - topLeft.x());
      layRow(pixels(part.left(), y), above, part.width());
    }
  });
}

void DrawingSurface::replace(const QRectF& shape, const QImage& image, const QPoint& origin) {
  const QRectF covered = shape & QRectF(QRect(origin, image.size()));
  const QRect part = covered.toAlignedRect() & QRect(origin, image.size()) & clip;
  if (covered.isEmpty() || part.isEmpty())
    return;
  beginPixels();
  const auto share = [](double begin, double end, int pixel) {
    return std::max(std::min(end, pixel + 1.0) - std::max(begin, double(pixel)), 0.0);
  };
  std::vector<double> across;
  for (int x = part.left(); x <= part.right(); ++x)
    across.push_back(share(covered.left(), covered.right(), x));
  for (int y = part.top(); y <= part.bottom(); ++y) {
    const double down = share(covered.top(), covered.bottom(), y);
    const auto* const above = reinterpret_cast<const std::uint32_t*>(image.constScanLine(y - origin.y())) +
                              (part.left() - origin.x());
    std::uint32_t* const below = pixels(part.left(), y);
    const auto mixIn = [&](int x) {
      const auto of64 = static_cast<std::uint32_t>(std::lround(64 * down * across[std::size_t(x)]));
      below[x] = mixed(below[x], above[x], of64);
    };
    // Only the outermost may be covered in part.
    const int last = part.width() - 1;
    if (down < 1) {
      for (int x = 0; x <= last; ++x)
        mixIn(x);
      continue;
    }
    if (last > 1)
      std::memcpy(below + 1, above + 1, 4 * std::size_t(last - 1));
    mixIn(0);
    if (last > 0)
      mixIn(last);
  }
}

/// In bands, so that the mask of all lines fits the processor's cache and every core has a share. A mask's
/// tiles lie where they would lie for the whole surface, so that rounding is the same in every part of it.
/// Each core has a copy of `paint`, which is told the stretches, and the end of a band if it wants to know.
template <typename Paint>
void DrawingSurface::rasterise(const std::vector<RoundLine>& lines, const Paint& paint) const {
  constexpr int bandHeight = tileSize;
  qsizetype points = 0;
  int top = clip.bottom() + 1;
  int bottom = clip.top();
  std::vector<std::pair<int, int>> rows;
  for (const RoundLine& line : lines) {
    rows.push_back(rowsOf(line, clip.top(), clip.bottom() + 1));
    points += line.points.size();
    top = std::min(top, rows.back().first);
    bottom = std::max(bottom, rows.back().second);
  }
  if (top >= bottom || clip.isEmpty())
    return;
  top = onTile(top);
  const int left = onTile(clip.left());
  constexpr qsizetype pointsWorthAThread = 500;
  forEachBand((bottom - top + bandHeight - 1) / bandHeight, 1,
              points < pointsWorthAThread ? Cores::One : Cores::All, [&](int first, int end) {
                LineMask mask;
                Paint painter = paint;
                for (int band = first; band < end; ++band) {
                  const int begin = top + band * bandHeight;
                  const QRect area(left, begin, clip.right() + 1 - left,
                                   std::min(bandHeight, bottom - begin));
                  for (std::size_t index = 0; index < lines.size(); ++index) {
                    if (rows[index].first >= begin + bandHeight || rows[index].second <= begin)
                      continue;
                    const RoundLine& line = lines[index];
                    mask.restart(line.width * line.scale, area);
                    for (const QPointF& point : line.points)
                      mask.append(line.onSurface(point));
                    mask.forEachStretch(area & clip, [&](int x, int y, const Samples* samples, int count) {
                      painter(index, x, y, samples, count);
                    });
                  }
                  if constexpr (requires { painter.endRowOfTiles(); })
                    painter.endRowOfTiles();
                }
              });
}

void DrawingSurface::draw(const std::vector<ColouredLine>& lines) {
  if (lines.empty())
    return;
  beginPixels();
  rasterise(shapesOf(lines), [&](std::size_t line, int x, int y, const Samples* samples, int count) {
    mixIn(pixels(x, y), samples, count, [pixel = pixelOf(lines[line].colour)](int) { return pixel; });
  });
}

void DrawingSurface::lay(const std::vector<ColouredLine>& lines) {
  if (lines.empty())
    return;
  beginPixels();
  rasterise(shapesOf(lines), LineLayer(*this, lines));
}

void DrawingSurface::draw(const LineMask& line, const QColor& opaque) {
  beginPixels();
  line.forEachStretch(clip, [&](int x, int y, const Samples* samples, int count) {
    mixIn(pixels(x, y), samples, count, [pixel = pixelOf(opaque)](int) { return pixel; });
  });
}

void DrawingSurface::replace(const RoundLine& shape, const QImage& image, const QPoint& origin) {
  beginPixels();
  const Replacement replacement(image, origin);
  rasterise({shape}, [&](std::size_t, int x, int y, const Samples* samples, int count) {
    replacement.mixInto(pixels(x, y), x, y, samples, count);
  });
}

void DrawingSurface::replace(const LineMask& shape, const QImage& image, const QPoint& origin) {
  beginPixels();
  const Replacement replacement(image, origin);
  shape.forEachStretch(clip, [&](int x, int y, const Samples* samples, int count) {
    replacement.mixInto(pixels(x, y), x, y, samples, count);
  });
}

void DrawingSurface::replaceBelow(int row, const RoundLine& shape, const QImage& image,
                                  const QPoint& origin) {
  LineMask mask(shape.width * shape.scale,
                QRect(QPoint(onTile(clip.left()), onTile(row)), QPoint(clip.right(), row)));
  for (const QPointF& point : shape.points)
    mask.append(shape.onSurface(point));
  replaceBelow(row, mask, image, origin);
}

void DrawingSurface::replaceBelow(int row, const LineMask& shape, const QImage& image, const QPoint& origin) {
  beginPixels();
  const Replacement replacement(image, origin);
  shape.forEachStretch({clip.left(), row, clip.width(), 1},
                       [&](int x, int, const Samples* samples, int count) {
                         for (int y = std::max(row + 1, clip.top()); y <= clip.bottom(); ++y)
                           replacement.mixInto(pixels(x, y), x, y, samples, count);
                       });
}

QImage DrawingSurface::finish() {
  painter.reset();
  bits = nullptr;
  return std::move(picture);
}

}  // namespace platform
