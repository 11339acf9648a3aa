#pragma once

#include "app/editor/model/Document.h"
#include "platform/imaging/drawing/DrawingSurface.h"

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>

#include <array>

namespace sorrel {

// How a document looks, on the screen as in the file: layer by layer, on surfaces on which display space lies
// somewhere at some scale, and only in a surface's dirty rectangle. Regions are painted into the picture.
// Strokes, the logo and the text are painted on nothing, each apart, and laid over what is below: so one may
// change while the others keep their pixels.

struct PlacedPicture {
  QImage image;
  QPoint topLeft;  // on the surface
  /// Nothing is missing, also where it isn't seen.
  bool isWhole = true;
};
/// The base image, or a part of it, under each BlurStyle's filter; one that no region needs may be null.
using FilteredPictures = std::array<PlacedPicture, 2>;

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
                     const PlacedPicture& picture, const Placement& placement);
/// A stroke's region whose line is drawn already, on the surface.
void paintBlurStroke(platform::DrawingSurface& surface, const platform::LineMask& line,
                     const PlacedPicture& picture, const Placement& placement);
void paintBlurRegions(platform::DrawingSurface& surface, const QList<BlurRegion>& regions,
                      const FilteredPictures& pictures, const Placement& placement);
/// The surface's pixels that change with a rectangle in display space, of a region, a stroke or a watermark.
[[nodiscard]] QRect pixelsOf(const QRectF& rectangle, const Placement& placement);

/// On a surface of their own.
void paintStrokes(platform::DrawingSurface& surface, const QList<PenStroke>& strokes,
                  const Placement& placement);
/// The logo's image with no more pixels than are seen at that scale, wherever it lies; null without one.
[[nodiscard]] QImage logoPixels(const Document& document, double scale);
/// As far as they are seen in `part` of the surface; null where there is nothing to see. `pixels`: those of
/// the logo at the placement's scale.
[[nodiscard]] PlacedPicture logoPicture(const Document& document, const QImage& pixels,
                                        const Placement& placement, const QRect& part);
[[nodiscard]] inline PlacedPicture logoPicture(const Document& document, const Placement& placement,
                                               const QRect& part) {
  return logoPicture(document, logoPixels(document, placement.scale), placement, part);
}
[[nodiscard]] PlacedPicture textPicture(const TextWatermark& text, const QString& fontFamily,
                                        const Placement& placement, const QRect& part);

/// The base image with all layers, at full size.
[[nodiscard]] QImage flattened(const Document& document, double blurIntensity, const QString& fontFamily);

}  // namespace sorrel
