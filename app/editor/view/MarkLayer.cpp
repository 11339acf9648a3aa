#include "app/editor/view/MarkLayer.h"

namespace sorrel {

const PlacedPicture& MarkLayer::show(const QPointF& center, const QRect& layer, bool isCarried,
                                     const Paint& paint) {
  if (isKnown && isCarried && carry(center, layer))
    return shown;
  // Carried along, more of it will come into view.
  const int beyond = isCarried ? layer.width() / 4 : 0;
  paintedPart = layer.adjusted(-beyond, -beyond, beyond, beyond);
  painted = paint(paintedPart);
  paintedAt = center;
  isKnown = true;
  return shown = painted;
}

bool MarkLayer::carry(const QPointF& center, const QRect& layer) {
  const QPoint way = (center - paintedAt).toPoint();
  if (!painted.isWhole && !paintedPart.translated(way).contains(layer))
    return false;
  shown = painted;
  shown.topLeft += way;
  return true;
}

}  // namespace sorrel
