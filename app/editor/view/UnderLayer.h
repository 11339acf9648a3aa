#pragma once

#include "app/editor/view/BlurPictures.h"
#include "app/editor/view/SavedTiles.h"
#include "platform/imaging/drawing/LineMask.h"

#include <QImage>
#include <QRectF>
#include <QRegion>

#include <optional>

namespace sorrel {

/// The base image with the blur regions and the blur gesture under way: what lies under the ink. What changes
/// is told in the layer's pixels.
class UnderLayer {
 public:
  explicit UnderLayer(EditorModel& document) : model(document), pictures(document) {}

  void reset();
  /// Paints all anew, or what another part of the picture at the same size doesn't have in common.
  void show(const CanvasView& next);
  /// Paints a part anew.
  void repaint(const QRegion& part);
  /// The gesture has begun, gone on or gone, or has another style or width. What it costs goes by what has
  /// changed.
  [[nodiscard]] QRegion followGesture();

  [[nodiscard]] const QImage& pixels() const { return under; }

 private:
  struct Gesture {
    BlurStyle style = BlurStyle::gaussian;
    double width = 0;
    qsizetype points = 0;  // of the brush
    platform::LineMask mask;
    std::optional<QRectF> area;
    SavedTiles before;
  };

  void paint(const QRect& part);
  void paintRegions(const QRect& part);
  [[nodiscard]] QRect lengthenBrush();
  [[nodiscard]] QRegion stretchArea();
  [[nodiscard]] QRect dropGesture();
  /// What was below the gesture, with the gesture painted over it by `work`.
  template <typename Work>
  void overwrite(const QRect& part, const Work& work);

  EditorModel& model;
  BlurPictures pictures;
  CanvasView view;
  QImage under;  // the document's own until something is painted into it
  Gesture gesture;
};

}  // namespace sorrel
