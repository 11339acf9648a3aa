#include "app/editor/model/Painting.h"

#include "platform/imaging/drawing/SmoothImage.h"
#include "platform/imaging/filters/GaussianBlur.h"
#include "platform/imaging/filters/Pixellate.h"
#include "platform/imaging/png/Bands.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace sorrel {
namespace {

using platform::DrawingSurface;
using platform::RoundLine;

/// The gaussian's standard deviation or the mosaic's cells, in pixels of a picture `width` wide.
double filterSize(BlurStyle style, double intensity, double width) {
  return style == BlurStyle::gaussian ? std::max(width * (intensity * 0.02 + 0.004), 4.0)
                                      : std::max(width * (intensity * 0.03 + 0.008), 6.0);
}

RoundLine placed(const QList<QPointF>& points, double width, const Placement& placement) {
  return {points, width, placement.scale, placement.origin};
}

QImage nothing(const QSize& size) {
  QImage picture(size, QImage::Format_RGBA8888_Premultiplied);
  picture.fill(Qt::transparent);
  return picture;
}

/// What `paint` paints of a rectangle on a surface of its own, whose place it is told. All of it unless that
/// is large: where it is cut off can be seen in how a painter rounds.
template <typename Paint>
PlacedPicture painted(const QRectF& rectangle, const QRect& part, const Paint& paint) {
  constexpr double pixelsAtMost = 4e6;
  const QRectF seen = rectangle.intersected(QRectF(part));
  if (seen.isEmpty())
    return {{}, {}, rectangle.isEmpty()};
  const bool isLarge = rectangle.width() * rectangle.height() > pixelsAtMost;
  const QRect bounds = (isLarge ? seen : rectangle).toAlignedRect();
  DrawingSurface surface(nothing(bounds.size()));
  paint(surface, bounds.topLeft());
  return {surface.finish(), bounds.topLeft(), bounds.contains(rectangle.toAlignedRect())};
}

/// What `work` makes of a placement whose origin is less than a pixel away, put where it belongs: so the same
/// numbers are rounded wherever a surface begins.
template <typename Work>
PlacedPicture placedAfterwards(const Placement& placement, const QRect& part, const Work& work) {
  const QPoint origin(int(std::floor(placement.origin.x())), int(std::floor(placement.origin.y())));
  Placement near = placement;
  near.origin -= origin;
  PlacedPicture picture = work(near, part.translated(-origin));
  picture.topLeft += origin;
  return picture;
}

std::vector<platform::ColouredLine> colouredLines(const QList<PenStroke>& strokes,
                                                  const Placement& placement) {
  std::vector<platform::ColouredLine> lines;
  lines.reserve(size_t(strokes.size()));
  for (const PenStroke& stroke : strokes)
    lines.push_back({placed(stroke.points, stroke.width, placement), colorFromHex(stroke.colorHex)});
  return lines;
}

/// How far a style's filter looks around a pixel.
int reachOf(BlurStyle style, double size) {
  return style == BlurStyle::gaussian ? platform::gaussianReach(size) : platform::pixellateReach(size);
}

/// Adds a part that is to be filtered, as one with those so near that to filter both takes less: what a
/// filter looks at around them is the same.
void addPart(std::vector<QRect>& parts, QRect part, int reach) {
  const auto work = [reach](const QRect& rectangle) {
    return double(rectangle.width() + 2 * reach) * (rectangle.height() + 2 * reach);
  };
  for (auto other = parts.begin(); other != parts.end();) {
    const QRect both = part | *other;
    if (work(both) > work(part) + work(*other)) {
      ++other;
      continue;
    }
    part = both;
    parts.erase(other);
    other = parts.begin();  // what has grown may be near to those as well
  }
  parts.push_back(part);
}

/// The base image under a style's filter, worked out where regions show it.
std::vector<PlacedPicture> filteredParts(const Document& document, BlurStyle style, double intensity,
                                         const Placement& placement) {
  const double width = document.imagePixelSize.width();
  const int reach = reachOf(style, filterSize(style, intensity, width));
  std::vector<QRect> parts;
  for (const BlurRegion& region : document.blurRegions)
    if (const QRect part = pixelsOf(boundsOf(region), placement) & document.baseImage.rect();
        region.style == style && !part.isEmpty())
      addPart(parts, part, reach);
  std::vector<PlacedPicture> pictures;
  for (const QRect& part : parts)
    pictures.push_back({filtered(document.baseImage, style, intensity, width, part), part.topLeft()});
  return pictures;
}

void paintBlurRegions(DrawingSurface& surface, const Document& document, double intensity,
                      const Placement& placement) {
  const std::array parts{filteredParts(document, BlurStyle::gaussian, intensity, placement),
                         filteredParts(document, BlurStyle::mosaic, intensity, placement)};
  for (const BlurRegion& region : document.blurRegions) {
    const QRect seen = pixelsOf(boundsOf(region), placement) & surface.dirty();
    const auto& ofStyle = parts.at(size_t(region.style));
    const auto picture = std::find_if(ofStyle.begin(), ofStyle.end(), [&](const PlacedPicture& part) {
      return QRect(part.topLeft, part.image.size()).contains(seen);
    });
    if (!seen.isEmpty() && picture != ofStyle.end())
      paintBlurRegion(surface, region, *picture, placement);
  }
}

/// What the picture is replaced by isn't drawn over what is there: through a translucent picture's blur the
/// sharp pixels would still be seen.
template <typename Line>
void replaceAlong(DrawingSurface& surface, const Line& line, const PlacedPicture& picture,
                  const Placement& placement) {
  surface.replace(line, picture.image, picture.topLeft);
  if (const double below = placement.firstRowBelow(); below < placement.lowerEdge)
    surface.replaceBelow(int(below) - 1, line, picture.image, picture.topLeft);
}

}  // namespace

QImage filtered(const QImage& picture, BlurStyle style, double intensity, double width, const QRect& part) {
  const double size = filterSize(style, intensity, width);
  return style == BlurStyle::gaussian ? platform::gaussianBlur(picture, size, part)
                                      : platform::pixellate(picture, size, part);
}

QImage filteredCopy(const QImage& copy, BlurStyle style, double intensity, double width) {
  const double factor = copy.width() / width;
  const double size = factor * filterSize(style, intensity, width);
  return style == BlurStyle::gaussian
             ? platform::gaussianBlur(copy, size)
             : platform::pixellate(copy, size, {}, {}, factor * platform::pixellateGridPoint);
}

QRectF boundsOf(const QList<QPointF>& points, double width) {
  if (points.isEmpty())
    return {};
  QPointF least = points.first();
  QPointF most = least;
  for (const QPointF& point : points) {
    least = {std::min(least.x(), point.x()), std::min(least.y(), point.y())};
    most = {std::max(most.x(), point.x()), std::max(most.y(), point.y())};
  }
  const QPointF reach(width / 2, width / 2);
  return {least - reach, most + reach};
}

QRectF boundsOf(const PenStroke& stroke) {
  return boundsOf(stroke.points, stroke.width);
}

QRectF boundsOf(const BlurRegion& region) {
  if (const auto* stroke = std::get_if<BlurRegion::Stroke>(&region.kind))
    return boundsOf(stroke->points, stroke->width);
  return std::get<QRectF>(region.kind);
}

/// With a pixel for soft edges.
QRect pixelsOf(const QRectF& rectangle, const Placement& placement) {
  QRectF bounds = placement.rectangle(rectangle).adjusted(-1, -1, 1, 1);
  if (bounds.bottom() >= placement.firstRowBelow() - 1)
    bounds.setBottom(std::max(bounds.bottom(), placement.lowerEdge));
  constexpr double farAway = 1e8;
  return bounds.intersected({-farAway, -farAway, 2 * farAway, 2 * farAway}).toAlignedRect();
}

void paintBlurStroke(DrawingSurface& surface, const platform::LineMask& line, const PlacedPicture& picture,
                     const Placement& placement) {
  if (!picture.image.isNull())
    replaceAlong(surface, line, picture, placement);
}

void paintBlurRegion(DrawingSurface& surface, const BlurRegion& region, const PlacedPicture& picture,
                     const Placement& placement) {
  if (picture.image.isNull())
    return;
  if (const auto* stroke = std::get_if<BlurRegion::Stroke>(&region.kind))
    replaceAlong(surface, placed(stroke->points, stroke->width, placement), picture, placement);
  else
    surface.replace(placement.rectangle(std::get<QRectF>(region.kind)), picture.image, picture.topLeft);
}

void paintBlurRegions(DrawingSurface& surface, const QList<BlurRegion>& regions,
                      const FilteredPictures& pictures, const Placement& placement) {
  for (const BlurRegion& region : regions)
    paintBlurRegion(surface, region, pictures.at(size_t(region.style)), placement);
}

void paintStrokes(DrawingSurface& surface, const QList<PenStroke>& strokes, const Placement& placement) {
  surface.draw(colouredLines(strokes, placement));
}

QImage logoPixels(const Document& document, double scale) {
  return document.logoWM ? platform::withEnoughPixels(document.logoWM->image, scale * document.logoSize())
                         : QImage();
}

PlacedPicture logoPicture(const Document& document, const QImage& pixels, const Placement& placement,
                          const QRect& part) {
  return placedAfterwards(placement, part, [&](const Placement& near, const QRect& nearPart) {
    const QRectF display = document.logoRect();
    const QRectF rectangle(near.point(display.topLeft()), near.scale * display.size());
    return painted(rectangle, nearPart, [&](DrawingSurface& surface, const QPoint& at) {
      surface.draw(pixels, rectangle.translated(-at), document.logoWM->opacity);
    });
  });
}

PlacedPicture textPicture(const TextWatermark& text, const QString& fontFamily, const Placement& placement,
                          const QRect& part) {
  if (text.isBlank())
    return {};
  const platform::TextBlock block(text.text, text.style(placement.scale, fontFamily));
  return placedAfterwards(placement, part, [&](const Placement& near, const QRect& nearPart) {
    const QPointF topLeft =
        near.point(text.center) - QPointF(block.size().width(), block.size().height()) / 2;
    return painted(block.inkRect().translated(topLeft), nearPart,
                   [&](DrawingSurface& surface, const QPoint& at) { surface.draw(block, topLeft - at); });
  });
}

QImage flattened(const Document& document, double blurIntensity, const QString& fontFamily) {
  const auto placement = document.placement();
  if (!placement)
    return document.baseImage;
  DrawingSurface surface(document.baseImage);
  std::array<PlacedPicture, 2> marks;
  const auto paintMarks = [&] {
    const QRect whole = document.baseImage.rect();
    marks = {logoPicture(document, *placement, whole),
             textPicture(document.textWM, fontFamily, *placement, whole)};
  };
  const auto paintBelow = [&] {
    paintBlurRegions(surface, document, blurIntensity, *placement);
    surface.lay(colouredLines(document.strokes, *placement));
  };
  // At the same time. The first is the calling core's, whose thread keeps the fonts that it has loaded.
  platform::forEachBand(2, 1, platform::Cores::All, [&](int first, int end) {
    for (int work = first; work < end; ++work)
      work == 0 ? paintMarks() : paintBelow();
  });
  for (const PlacedPicture& mark : marks)
    surface.lay(mark.image, mark.topLeft);
  return surface.finish();
}

}  // namespace sorrel
