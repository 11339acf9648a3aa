#pragma once

#include "app/editor/model/BlurRegion.h"
#include "app/editor/model/PenStroke.h"
#include "app/editor/model/Placement.h"
#include "app/editor/model/Watermarks.h"

#include <QImage>
#include <QList>

#include <optional>

namespace sorrel {

/// What kind of edit happened; what it changed lies in the layers and snapshots.
enum class EditAction { pen, blur, crop };

/// The document as a value: the picture, all that lies on it, and what can be undone. It is what a crop puts
/// aside and its undoing brings back, and it is what is painted. Copies share their memory.
struct Document {
  QImage baseImage;
  QSize imagePixelSize;
  QSizeF displaySize;
  QList<PenStroke> strokes;
  QList<BlurRegion> blurRegions;
  TextWatermark textWM;
  std::optional<LogoWatermark> logoWM;
  QList<EditAction> undoStack;

  /// The largest size of this shape, of whole points, within 1000 by 640, and never larger than the pixels.
  [[nodiscard]] static QSizeF fitted(const QSize& pixels);

  /// Of display space in the picture's own pixels: one factor, of the two widths, for both axes. Absent for
  /// so narrow a picture that its display width rounds to nothing: it has no place for layers.
  [[nodiscard]] std::optional<Placement> placement() const;

  /// In display points; (0, 0) without a logo.
  [[nodiscard]] QSizeF logoSize() const;
  /// Where the logo lies in display space; null without one.
  [[nodiscard]] QRectF logoRect() const;

  /// The pixels that a crop to a rectangle in display space keeps, each as a whole. Empty if the rectangle
  /// leaves at most 8 points either way.
  [[nodiscard]] QRect keptPixels(const QRectF& rectangle) const;
  /// The document after a crop that left this picture.
  [[nodiscard]] Document cropped(const QImage& picture) const;

  bool operator==(const Document&) const = default;
};

}  // namespace sorrel
