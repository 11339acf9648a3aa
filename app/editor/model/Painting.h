#pragma once

#include "app/editor/model/Document.h"
#include "platform/imaging/drawing/DrawingSurface.h"

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>

#include <array>

namespace sorrel {

// How a document looks, on the screen as in the file: layer by layer, on a surface on which display space
// lies somewhere at some scale, and only in the surface's dirty rectangle.

/// The base image, or a part of it, under a blur style's filter.
struct FilteredPicture {
  QImage image;
  QPoint topLeft;  // on the surface
};
/// One for each BlurStyle; one that no region needs may be null.
using FilteredPictures = std::array<FilteredPicture, 2>;

/// A picture `width` wide under the style's filter, which grows with the width and the intensity, 0 to 1.
/// Null without a picture.
[[nodiscard]] QImage filtered(const QImage& picture, BlurStyle style, double intensity, double width,
                              const QRect& part = {});
/// The same for a smaller copy of the picture that is `width` wide: its gaussian is as wide in comparison,
/// and its mosaic has the same cells, smaller.
[[nodiscard]] QImage filteredCopy(const QImage& copy, BlurStyle style, double intensity, double width);

/// What a region covers or a stroke, in display space.
[[nodiscard]] QRectF boundsOf(const QList<QPointF>& points, double width);
[[nodiscard]] QRectF boundsOf(const PenStroke& stroke);
[[nodiscard]] QRectF boundsOf(const BlurRegion& region);

void paintBlurRegion(platform::DrawingSurface& surface, const BlurRegion& region,
                     const FilteredPicture& picture, const Placement& placement);
void paintBlurRegions(platform::DrawingSurface& surface, const QList<BlurRegion>& regions,
                      const FilteredPictures& pictures, const Placement& placement);
void paintStrokes(platform::DrawingSurface& surface, const QList<PenStroke>& strokes,
                  const Placement& placement);
void paintLogo(platform::DrawingSurface& surface, const Document& document, const Placement& placement);
void paintText(platform::DrawingSurface& surface, const TextWatermark& text, const QString& fontFamily,
               const Placement& placement);

/// The base image with all layers, at full size.
[[nodiscard]] QImage flattened(const Document& document, double blurIntensity, const QString& fontFamily);

}  // namespace sorrel
