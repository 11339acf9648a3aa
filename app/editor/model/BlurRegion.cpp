#include "app/editor/model/BlurRegion.h"

#include "app/editor/model/EditorModel.h"
#include "platform/imaging/drawing/DrawingSurface.h"
#include "platform/imaging/filters/GaussianBlur.h"
#include "platform/imaging/filters/Pixellate.h"

#include <QPolygonF>

#include <algorithm>

namespace sorrel {
namespace {

using platform::DrawingSurface;
using platform::RoundLine;

/// A region's shape in the output's space.
using OutputShape = std::variant<BlurRegion::Stroke, QRectF>;

/// Not drawn over what is there: through a translucent picture's blur the sharp pixels would still be seen.
void replace(DrawingSurface& surface, const OutputShape& shape, const QImage& image, const QPointF& origin) {
  if (const auto* line = std::get_if<BlurRegion::Stroke>(&shape))
    surface.replace(RoundLine{line->points, line->width}, image, origin);
  else
    surface.replace(std::get<QRectF>(shape), image, origin);
}

/// The rows and columns of pixels that the shape touches.
QRect touched(const DrawingSurface& surface, const OutputShape& shape) {
  QRectF bounds;
  if (const auto* line = std::get_if<BlurRegion::Stroke>(&shape)) {
    const double reach = line->width / 2 + 1;
    bounds = QPolygonF(line->points).boundingRect().adjusted(-reach, -reach, reach, reach);
  } else {
    bounds = std::get<QRectF>(shape);
  }
  return surface.inRows(bounds).intersected(QRectF({0, 0}, surface.size())).toAlignedRect();
}

}  // namespace

void EditorModel::extendBlurBrush(const QPointF& point) {
  currentBlurStroke.change([&](auto& stroke) {
    if (!stroke)
      stroke.emplace();
    stroke->append(point);
  });
}

void EditorModel::commitBlur() {
  const auto add = [this](const BlurRegion::Kind& kind) {
    blurRegions.change([&](auto& regions) { regions.append({.kind = kind, .style = blurStyle}); });
  };
  const qsizetype before = blurRegions->size();
  if (const auto& stroke = currentBlurStroke.get(); stroke && stroke->size() >= 2)
    add(BlurRegion::Stroke{*stroke, blurBrushWidth});
  if (const auto& area = currentBlurRect.get(); area && area->width() > 4.0 && area->height() > 4.0)
    add(*area);
  if (blurRegions->size() > before)
    undoStack.change([](auto& entries) { entries.append(EditAction::blur); });
  currentBlurStroke = std::nullopt;
  currentBlurRect = std::nullopt;
}

QImage EditorModel::processed(BlurStyle style) {
  QImage& cache = style == BlurStyle::gaussian ? gaussianCache : mosaicCache;
  if (cache.isNull())
    cache = makeProcessed(style, displayInput(), displaySize->width());
  return cache;
}

/// Within a thousandth the base image itself serves: scaling would only soften it.
QImage EditorModel::displayInput() {
  if (displaySize->width() / imagePixelSize->width() >= 0.999)
    return baseImage;
  if (baseCICache.isNull())
    baseCICache = baseImage->scaled(displaySize->toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  return baseCICache;
}

QImage EditorModel::makeProcessed(BlurStyle style, const QImage& input, double width,
                                  const QRect& part) const {
  if (input.isNull())
    return {};
  switch (style) {
    case BlurStyle::gaussian:
      return platform::gaussianBlur(input, std::max(width * (blurIntensity * 0.02 + 0.004), 4.0), part);
    case BlurStyle::mosaic:
      return platform::pixellate(input, std::max(width * (blurIntensity * 0.03 + 0.008), 6.0), part);
  }
  return {};
}

/// The regions of a style share one filtered picture, worked out no further than they reach together.
void EditorModel::drawBlurRegions(DrawingSurface& surface, double scale) const {
  std::vector<OutputShape> shapes;
  std::array<QRect, 2> parts;
  for (const BlurRegion& region : blurRegions.get()) {
    if (const auto* line = std::get_if<BlurRegion::Stroke>(&region.kind)) {
      shapes.emplace_back(BlurRegion::Stroke{inOutput(line->points, scale), scale * line->width});
    } else {
      const auto& area = std::get<QRectF>(region.kind);
      shapes.emplace_back(QRectF(inOutput(area.bottomLeft(), scale), scale * area.size()));
    }
    parts.at(size_t(region.style)) |= touched(surface, shapes.back());
  }

  std::array<QImage, 2> filtered;
  for (const BlurStyle style : {BlurStyle::gaussian, BlurStyle::mosaic})
    if (const QRect& part = parts.at(size_t(style)); !part.isEmpty())
      filtered.at(size_t(style)) = makeProcessed(style, baseImage, imagePixelSize->width(), part);

  for (size_t index = 0; index < shapes.size(); ++index) {
    const auto style = size_t(blurRegions->at(qsizetype(index)).style);
    if (!filtered.at(style).isNull())
      replace(surface, shapes[index], filtered.at(style), surface.inRows(parts.at(style)).topLeft());
  }
}

}  // namespace sorrel
