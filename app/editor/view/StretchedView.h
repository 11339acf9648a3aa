#pragma once

#include "app/editor/view/CanvasView.h"

#include <QImage>

class QPainter;

namespace sorrel {

/// What the canvas showed when its zoom began to change: until that rests, the old pixels are stretched,
/// which costs the same whatever is on the picture.
class StretchedView {
 public:
  [[nodiscard]] bool isShown() const { return !pixels.isNull(); }
  /// `together`: of that view. `picture`: the base image, of which a copy of the size `fitted` serves for
  /// what comes into view from beyond.
  void begin(const QImage& together, const CanvasView& view, const QImage& picture, const QSize& fitted);
  void end() { pixels = whole = {}; }

  /// What is exposed, with the whole picture on that rectangle; in the painter's unit, a device pixel.
  void paint(QPainter& painter, const QRect& picture, const QRect& exposed) const;

 private:
  QImage pixels;
  QImage whole;
  CanvasView view;
};

}  // namespace sorrel
