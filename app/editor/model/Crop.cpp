#include "app/editor/model/EditorModel.h"

#include <cmath>

namespace sorrel {
namespace {

/// The smallest whole rectangle around one of fractions.
QRectF integral(const QRectF& rectangle) {
  return {QPointF(std::floor(rectangle.left()), std::floor(rectangle.top())),
          QPointF(std::ceil(rectangle.right()), std::ceil(rectangle.bottom()))};
}

}  // namespace

void EditorModel::applyCrop(const QRectF& rectangle) {
  const QRectF kept = rectangle.intersected(QRectF({0, 0}, displaySize.get()));
  if (!(kept.width() > 8.0 && kept.height() > 8.0))  // also what isn't a number
    return;
  const QImage flattened = renderBitmap();
  if (flattened.isNull())
    return;
  const double ratio = outputScale();
  const QRect pixels =
      integral({ratio * kept.topLeft(), ratio * kept.size()}).intersected(QRectF(flattened.rect())).toRect();
  if (pixels.isEmpty())
    return;
  const QImage cut = flattened.copy(pixels);
  if (cut.isNull())
    return;

  cropSnapshots.append(
      {baseImage, imagePixelSize, displaySize, strokes, blurRegions, textWM, logoWM, undoStack});
  baseImage = cut;
  imagePixelSize = cut.size();
  displaySize = fitted(cut.size());
  strokes = QList<PenStroke>();
  blurRegions = QList<BlurRegion>();
  logoWM = std::nullopt;
  dropFilterCaches();
  textWM = TextWatermark::initial(displaySize);
  undoStack.change([](auto& entries) { entries.append(EditAction::crop); });
}

void EditorModel::restoreCrop() {
  if (cropSnapshots.isEmpty())
    return;
  const CropSnapshot before = cropSnapshots.takeLast();
  baseImage = before.baseImage;
  imagePixelSize = before.imagePixelSize;
  displaySize = before.displaySize;
  strokes = before.strokes;
  blurRegions = before.blurRegions;
  textWM = before.textWM;
  logoWM = before.logoWM;
  undoStack = before.undoStack;
  dropFilterCaches();
}

}  // namespace sorrel
