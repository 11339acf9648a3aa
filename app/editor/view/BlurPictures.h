#pragma once

#include "app/editor/model/Painting.h"
#include "app/editor/view/CanvasView.h"
#include "platform/imaging/drawing/ScaledPart.h"

#include <QRegion>

#include <array>
#include <optional>

namespace sorrel {

class EditorModel;

/// The base image and what it looks like under the blur styles' filters, at the size at which it is shown and
/// no farther than it is needed. Where the whole picture is shown the document's own copies serve; of one
/// that is zoomed into only the parts are worked out.
class BlurPictures {
 public:
  explicit BlurPictures(EditorModel& document) : model(document) {}

  /// For another view, or the same one of another picture.
  void show(const CanvasView& next);

  /// All of the base image that the layer shows. Shared with the document if it has the same.
  [[nodiscard]] QImage base() const;
  /// Writes the base image into a rectangle of the layer.
  void paintBase(QImage& layer, const QRect& part) const;
  /// The filtered picture, on the layer; only within `part` its pixels are of use.
  [[nodiscard]] PlacedPicture filtered(BlurStyle style, const QRegion& part);
  /// All that the layer may show of it, which is kept.
  [[nodiscard]] PlacedPicture filtered(BlurStyle style);

 private:
  [[nodiscard]] bool isModelsOwn() const;
  [[nodiscard]] QImage scaled(const platform::PicturePart& picture, const QRect& part) const;

  EditorModel& model;
  CanvasView view;
  double keptIntensity = 0;
  std::array<std::optional<PlacedPicture>, 2> kept;
};

}  // namespace sorrel
