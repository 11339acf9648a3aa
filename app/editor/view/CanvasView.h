#pragma once

#include "app/editor/model/Placement.h"

#include <QImage>
#include <QRect>
#include <QSize>

namespace sorrel {

/// Which part of the shown picture a layer holds, and how large the picture is shown; in device pixels.
///
/// The part begins and ends on multiples of 64 pixels, or at the picture's end: so a pixel is worked out
/// alike however the picture is scrolled, and most scrolling needs no new pixels.
struct CanvasView {
  QSize shown;       // the whole picture
  QRect area;        // of it, what the layer holds
  double scale = 1;  // pixels of it for a display unit
  QSizeF displaySize;

  /// The least view that holds all of `visible`, a part of the shown picture.
  [[nodiscard]] static CanvasView of(const QSize& shown, const QRect& visible, double scale,
                                     const QSizeF& displaySize);

  [[nodiscard]] bool isWhole() const { return area.size() == shown; }
  /// Whether what both hold has the same pixels. Those of a whole picture are the document's own.
  [[nodiscard]] bool isScrolledFrom(const CanvasView& other) const {
    return shown == other.shown && displaySize == other.displaySize && scale == other.scale &&
           isWhole() == other.isWhole();
  }
  /// On the layer.
  [[nodiscard]] Placement placement() const;
  [[nodiscard]] QRect layerRect() const { return {{0, 0}, area.size()}; }
  /// What of this layer another holds too, on this layer.
  [[nodiscard]] QRect sharedWith(const CanvasView& other) const {
    return (area & other.area).translated(-area.topLeft());
  }

  bool operator==(const CanvasView&) const = default;
};

/// Copies a rectangle of pixels from one picture of 4 bytes a pixel to another, to the place `to`.
void copyPixels(QImage& target, const QPoint& to, const QImage& source, const QRect& rectangle);
/// Pixels that aren't set to anything.
[[nodiscard]] QImage newLayer(const QSize& size);
/// A layer for a view with what an older one holds of it; the rest isn't set to anything.
[[nodiscard]] QImage scrolledLayer(const QImage& layer, const CanvasView& from, const CanvasView& to);

}  // namespace sorrel
