#include "app/editor/model/Repainting.h"

#include "app/editor/model/EditorModel.h"
#include "app/editor/model/Painting.h"

#include <utility>

namespace sorrel {

QRectF LineRepainting::shown(const QList<QPointF>& points, double width, bool isSame) {
  const bool hasGrown = isSame && count > 0 && points.size() > count && width == shownWidth;
  const QRectF fresh = boundsOf(hasGrown ? points.sliced(count - 1) : points, width);
  const QRectF repainted = hasGrown ? fresh : fresh | bounds;
  bounds = hasGrown ? bounds | fresh : fresh;
  count = points.size();
  shownWidth = width;
  return repainted;
}

void EditorModel::repaintStroke() {
  const auto& stroke = current.get();
  const QUuid id = stroke ? stroke->id : QUuid();
  tellRepainting(&current, shownStroke.shown(stroke ? stroke->points : QList<QPointF>(),
                                             stroke ? stroke->width : 0, id == shownStrokeId));
  shownStrokeId = id;
}

void EditorModel::repaintBlurGesture(Field field) {
  const auto& stroke = currentBlurStroke.get();
  const QRectF area = currentBlurRect->value_or(QRectF());
  const bool isStyle = field == &blurStyle;
  const QRectF line = shownBlurStroke.shown(stroke.value_or(QList<QPointF>()), blurBrushWidth, !isStyle);
  tellRepainting(field, isStyle || area != shownBlurRect ? line | area | shownBlurRect : line);
  shownBlurRect = area;
}

void EditorModel::repaintText() {
  const QRectF before = std::exchange(
      shownText, textWM->isBlank() ? QRectF() : textBlock().inkRect().translated(textRect().topLeft()));
  tellRepainting(&textWM, before | shownText);
}

void EditorModel::repaintLogo() {
  const QRectF before = std::exchange(shownLogo, logoRect());
  tellRepainting(&logoWM, before | shownLogo);
}

void EditorModel::intensityChanged() {
  dropProcessed();
  QRectF bounds = boundsOf(currentBlurStroke->value_or(QList<QPointF>()), blurBrushWidth) |
                  currentBlurRect->value_or(QRectF());
  for (const BlurRegion& region : blurRegions.get())
    bounds |= boundsOf(region);
  tellRepainting(&blurIntensity, bounds);
}

}  // namespace sorrel
