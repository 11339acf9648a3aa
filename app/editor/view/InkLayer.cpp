#include "app/editor/view/InkLayer.h"

#include "app/editor/model/EditorModel.h"
#include "app/editor/model/Painting.h"

#include <algorithm>

namespace sorrel {
namespace {

using platform::DrawingSurface;

/// How many strokes are painted one by one, so that they can be taken back, when all have to be.
constexpr qsizetype rememberedStrokes = 32;

void clear(QImage& layer, const QRect& part) {
  for (int y = part.top(); y <= part.bottom(); ++y)
    std::fill_n(reinterpret_cast<quint32*>(layer.scanLine(y)) + part.left(), part.width(), 0U);
}

}  // namespace

InkLayer::InkLayer(const EditorModel& document) : model(document) {
}

void InkLayer::reset() {
  view = {};
  gesture.id = {};
  gesture.before.clear();
}

void InkLayer::show(const CanvasView& next) {
  if (next == view)
    return;
  (void)dropGesture();
  forget();
  const CanvasView last = std::exchange(view, next);
  const qsizetype count = model.strokes->size();
  if (!ink.isNull() && count > 0 && view.isScrolledFrom(last) && painted == count) {
    ink = scrolledLayer(ink, last, view);
    for (const QRect& strip : QRegion(view.layerRect()) - view.sharedWith(last)) {
      clear(ink, strip);
      paintCommitted(0, painted, strip);
    }
  } else {
    ink = {};
    painted = count;
    paintCommitted(0, painted, view.layerRect());
  }
  (void)followGesture();
}

void InkLayer::needPixels() {
  if (!ink.isNull())
    return;
  ink = newLayer(view.area.size());
  clear(ink, view.layerRect());
}

void InkLayer::paintCommitted(qsizetype from, qsizetype count, const QRect& part) {
  if (part.isEmpty() || count == 0)
    return;
  needPixels();
  DrawingSurface surface(std::move(ink), part);
  const auto& strokes = model.strokes.get();
  paintStrokes(surface, from == 0 && count == strokes.size() ? strokes : strokes.sliced(from, count),
               view.placement());
  ink = surface.finish();
}

QRect InkLayer::followStrokes() {
  const auto& strokes = model.strokes.get();
  const qsizetype count = strokes.size();
  if (count == painted + 1 && !gesture.id.isNull() && strokes.last().id == gesture.id) {
    const QRect changed = lengthen(strokes.last());  // it shows already, but perhaps for its last points
    gesture.id = {};
    ++painted;
    remember(std::exchange(gesture.before, {}));
    return changed;
  }
  QRect changed = dropGesture();
  changed |= takeBack(count);
  for (; painted < count; ++painted) {
    const QRect bounds = pixelsOf(boundsOf(strokes[painted]), view.placement()) & view.layerRect();
    SavedTiles tiles;
    needPixels();
    tiles.save(ink, bounds);
    paintCommitted(painted, 1, bounds);
    remember(std::move(tiles));
    changed |= bounds;
  }
  return changed | followGesture();
}

/// Down to that many strokes. Where it isn't known what was there before the last of them, all are painted
/// anew, and it is known for some more.
QRect InkLayer::takeBack(qsizetype count) {
  QRect changed;
  while (painted > count && !before.empty()) {
    changed |= before.back().restoreAll(ink);
    rememberedBytes -= before.back().bytes();
    before.pop_back();
    --painted;
  }
  if (painted > count) {
    ink = {};
    painted = std::max<qsizetype>(count - rememberedStrokes, 0);
    paintCommitted(0, painted, view.layerRect());
    changed = view.layerRect();
  }
  return changed;
}

void InkLayer::remember(SavedTiles tiles) {
  rememberedBytes += tiles.bytes();
  before.push_back(std::move(tiles));
  while (rememberedBytes > 2 * ink.sizeInBytes() && before.size() > 1) {
    rememberedBytes -= before.front().bytes();
    before.pop_front();
  }
}

void InkLayer::forget() {
  before.clear();
  rememberedBytes = 0;
}

QRect InkLayer::followGesture() {
  const auto& current = model.current.get();
  if (!current)
    return dropGesture();
  if (current->id == gesture.id && current->points.size() >= gesture.points)
    return lengthen(*current);
  QRect changed = dropGesture();
  gesture.id = current->id;
  gesture.points = 0;
  gesture.mask.restart(current->width * view.scale, view.layerRect());
  return changed | lengthen(*current);
}

QRect InkLayer::lengthen(const PenStroke& stroke) {
  const Placement placement = view.placement();
  QRect changed;
  for (; gesture.points < stroke.points.size(); ++gesture.points)
    changed |= gesture.mask.append(placement.point(stroke.points[gesture.points]));
  if (changed.isEmpty())
    return changed;
  needPixels();
  gesture.before.save(ink, changed);
  gesture.before.restore(ink, changed);
  DrawingSurface surface(std::move(ink), changed);
  surface.draw(gesture.mask, colorFromHex(stroke.colorHex));
  ink = surface.finish();
  return changed;
}

QRect InkLayer::dropGesture() {
  gesture.id = {};
  const QRect changed = gesture.before.restoreAll(ink);
  gesture.before.clear();
  return changed;
}

}  // namespace sorrel
