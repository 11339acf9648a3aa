#pragma once

#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QSize>
#include <QSizeF>

namespace sorrel {

/// Where the picture lies on the canvas: fitted into it, zoomed by the user, and scrolled. A value; it paints
/// nothing.
///
/// Points are device-independent, as the canvas's own size and the pointer's places are. All that is drawn is
/// placed in whole device pixels, `ratio` of them a point: the picture, and how far it is scrolled.
struct CanvasFit {
  QSizeF area;  // of the canvas, in points
  double ratio = 1;
  QSizeF displaySize;
  QSize imagePixelSize;
  double zoom = 1;
  QPoint scrolled;  // of what lies in the canvas's top left corner, on the content, in device pixels

  static constexpr double leastZoom = 1;
  static constexpr double greatestZoom = 8;
  /// On both sides together, in points.
  static constexpr double margin = 48;

  /// Points for a display unit at zoom 1; a small picture is never enlarged.
  [[nodiscard]] double fit() const;
  /// The same at the present zoom.
  [[nodiscard]] double scale() const { return fit() * zoom; }
  [[nodiscard]] bool isZoomed() const { return zoom > 1.001; }

  /// The picture's size in device pixels, of its pixels' proportions. Where it has as many of them as the
  /// file, they are the file's.
  [[nodiscard]] QSize shown() const;
  /// What is scrolled: the picture in the middle of it, and at least as large as the canvas.
  [[nodiscard]] QSize content() const;
  [[nodiscard]] QSize areaPixels() const;
  /// The greatest values of `scrolled`. Only while zoomed does the user scroll.
  [[nodiscard]] QPoint scrollLimit() const;
  /// The picture on the canvas, and what of the canvas it covers as seen from its own corner; in device
  /// pixels.
  [[nodiscard]] QRect picture() const;
  [[nodiscard]] QRect visible() const;

  /// Device pixels for a display unit.
  [[nodiscard]] double pixelsPerUnit() const;
  /// From the canvas, in points, to display space, and back.
  [[nodiscard]] QPointF toDisplay(const QPointF& point) const;
  [[nodiscard]] QPointF toCanvas(const QPointF& display) const;

  /// As this one but scrolled there, as far as that goes.
  [[nodiscard]] CanvasFit scrolledTo(const QPointF& pixels) const;
  /// At another zoom, within the limits, with what is at `anchor` (on the canvas, in points) staying there as
  /// far as scrolling goes.
  [[nodiscard]] CanvasFit zoomedTo(double nextZoom, const QPointF& anchor) const;
  /// In a canvas or of a picture of another size: what was in the middle stays there, as far as that goes.
  [[nodiscard]] CanvasFit resized(const QSizeF& nextArea, double nextRatio, const QSizeF& nextDisplaySize,
                                  const QSize& nextPixelSize) const;

  bool operator==(const CanvasFit&) const = default;

 private:
  /// The picture's corner on the content.
  [[nodiscard]] QPoint inset() const;
  /// A place in the picture, of which (1, 1) is the lower right corner, put at a place on the canvas.
  [[nodiscard]] CanvasFit withPlaceAt(const QPointF& place, const QPointF& pixels) const;
  [[nodiscard]] QPointF placeAt(const QPointF& pixels) const;
};

/// The user's zoom, by commands and by pinching. Commands leave the zoom that a pinch multiplies as it is,
/// but for the one that fits.
struct CanvasZoom {
  double factor = 1;
  double pinchAnchor = 1;

  void in() { set(factor * step); }
  void out() { set(factor / step); }
  void fit() { factor = pinchAnchor = 1; }
  /// `magnification`: since the pinch began.
  void pinch(double magnification) { set(pinchAnchor * magnification); }
  void endPinch() { pinchAnchor = factor; }
  /// A wheel's notches, each a pinch of its own that goes on from what is shown.
  void turnWheel(double notches);

  bool operator==(const CanvasZoom&) const = default;

 private:
  static constexpr double step = 1.5;
  void set(double next);
};

}  // namespace sorrel
