// What gestures do to the document: strokes, regions, crops, and taking them back.

#include "app/editor/model/EditorModel.h"
#include "app/editor/model/Painting.h"

namespace sorrel {

void EditorModel::begin(const QPointF& point) {
  current = PenStroke{.points = {point}, .colorHex = colorHex, .width = lineWidth};
}

void EditorModel::commit() {
  if (current.get() && current.get()->points.size() >= 2) {
    strokes.change([this](auto& committed) { committed.append(*current.get()); });
    tellRepainting(&strokes, boundsOf(*current.get()));
    undoStack.change([](auto& entries) { entries.append(EditAction::pen); });
  }
  current = std::nullopt;
}

void EditorModel::extendBlurBrush(const QPointF& point) {
  currentBlurStroke.change([&](auto& stroke) {
    if (!stroke)
      stroke.emplace();
    stroke->append(point);
  });
}

void EditorModel::commitBlur() {
  const auto add = [this](const BlurRegion& region) {
    blurRegions.change([&](auto& regions) { regions.append(region); });
    tellRepainting(&blurRegions, boundsOf(region));
  };
  const qsizetype before = blurRegions->size();
  if (const auto& stroke = currentBlurStroke.get(); stroke && stroke->size() >= 2)
    add({.kind = BlurRegion::Stroke{*stroke, blurBrushWidth}, .style = blurStyle});
  if (const auto& area = currentBlurRect.get(); area && area->width() > 4.0 && area->height() > 4.0)
    add({.kind = *area, .style = blurStyle});
  if (blurRegions->size() > before)
    undoStack.change([](auto& entries) { entries.append(EditAction::blur); });
  currentBlurStroke = std::nullopt;
  currentBlurRect = std::nullopt;
}

void EditorModel::applyCrop(const QRectF& rectangle) {
  const Document before = document();
  const QRect kept = before.keptPixels(rectangle);
  if (kept.isEmpty())
    return;
  const QImage picture = renderBitmap().copy(kept);
  if (picture.isNull())
    return;
  cropSnapshots.append(before);
  become(before.cropped(picture));
}

void EditorModel::undoLast() {
  if (undoStack->isEmpty())
    return;
  const EditAction last = undoStack->last();
  undoStack.change([](auto& entries) { entries.removeLast(); });
  switch (last) {
    case EditAction::pen:
      takeLast(strokes);
      break;
    case EditAction::blur:
      takeLast(blurRegions);
      break;
    case EditAction::crop:
      restoreCrop();
      break;
  }
}

template <typename Layer>
void EditorModel::takeLast(Own<QList<Layer>>& layers) {
  if (layers->isEmpty())
    return;
  const QRectF bounds = boundsOf(layers->last());
  layers.change([](auto& committed) { committed.removeLast(); });
  tellRepainting(&layers, bounds);
}

void EditorModel::restoreCrop() {
  if (!cropSnapshots.isEmpty())
    become(cropSnapshots.takeLast());
}

void EditorModel::become(const Document& next) {
  baseImage = next.baseImage;
  imagePixelSize = next.imagePixelSize;
  displaySize = next.displaySize;
  strokes = next.strokes;
  blurRegions = next.blurRegions;
  textWM = next.textWM;
  logoWM = next.logoWM;
  undoStack = next.undoStack;
  tellRepainting(&baseImage, {{0, 0}, displaySize.get()});
}

}  // namespace sorrel
