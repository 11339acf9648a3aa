#include "app/editor/view/UnderLayer.h"

#include "app/editor/model/EditorModel.h"

#include <utility>

namespace sorrel {
namespace {

using platform::DrawingSurface;

/// The pixels that a rectangle touches, and those that it covers wholly.
QRect outside(const QRectF& rectangle) {
  return rectangle.toAlignedRect();
}
QRect inside(const QRectF& rectangle) {
  const QRect covered = outside(rectangle).adjusted(1, 1, -1, -1);
  return covered.isValid() ? covered : QRect();
}

}  // namespace

void UnderLayer::reset() {
  view = {};
  gesture = {};
  under = {};
}

void UnderLayer::show(const CanvasView& next) {
  if (next == view)
    return;
  (void)dropGesture();
  const CanvasView last = std::exchange(view, next);
  pictures.show(view);
  if (view.isScrolledFrom(last)) {
    under = scrolledLayer(under, last, view);
    for (const QRect& strip : QRegion(view.layerRect()) - view.sharedWith(last))
      paint(strip);
  } else {
    under = pictures.base();
    paintRegions(view.layerRect());
  }
  (void)followGesture();
}

void UnderLayer::repaint(const QRegion& part) {
  (void)dropGesture();
  for (const QRect& rectangle : part& view.layerRect())
    paint(rectangle);
  (void)followGesture();
}

/// Without the gesture.
void UnderLayer::paint(const QRect& part) {
  if (part.isEmpty())
    return;
  pictures.paintBase(under, part);
  paintRegions(part);
}

void UnderLayer::paintRegions(const QRect& part) {
  const Placement placement = view.placement();
  std::array<QRegion, 2> needed;
  for (const BlurRegion& region : model.blurRegions.get())
    needed.at(size_t(region.style)) |= pixelsOf(boundsOf(region), placement) & part;
  FilteredPictures filtered;
  for (const BlurStyle style : {BlurStyle::gaussian, BlurStyle::mosaic})
    if (const QRegion& piece = needed.at(size_t(style)); !piece.isEmpty())
      filtered.at(size_t(style)) = pictures.filtered(style, piece);
  DrawingSurface surface(std::move(under), part);
  paintBlurRegions(surface, model.blurRegions, filtered, placement);
  under = surface.finish();
}

template <typename Work>
void UnderLayer::overwrite(const QRect& part, const Work& work) {
  if (part.isEmpty())
    return;
  gesture.before.save(under, part);
  gesture.before.restore(under, part);
  DrawingSurface surface(std::move(under), part);
  work(surface, pictures.filtered(gesture.style));
  under = surface.finish();
}

QRegion UnderLayer::followGesture() {
  const auto& stroke = model.currentBlurStroke.get();
  QRegion changed;
  const bool isSame = gesture.style == model.blurStyle && gesture.width == model.blurBrushWidth &&
                      (stroke ? stroke->size() : 0) >= gesture.points;
  if (!isSame || (!stroke && !model.currentBlurRect.get()))
    changed = dropGesture();
  gesture.style = model.blurStyle;
  gesture.width = model.blurBrushWidth;
  if (stroke)
    changed |= lengthenBrush();
  if (model.currentBlurRect.get() || gesture.area)
    changed |= stretchArea();
  return changed;
}

QRect UnderLayer::lengthenBrush() {
  const auto& points = *model.currentBlurStroke.get();
  if (gesture.points == 0)
    gesture.mask.restart(gesture.width * view.scale, view.layerRect());
  const Placement placement = view.placement();
  QRect changed;
  for (; gesture.points < points.size(); ++gesture.points)
    changed |= gesture.mask.append(placement.point(points[gesture.points]));
  if (!changed.isEmpty() && changed.bottom() + 1 >= int(placement.firstRowBelow()))
    changed.setBottom(view.layerRect().bottom());
  overwrite(changed, [&](DrawingSurface& surface, const PlacedPicture& picture) {
    paintBlurStroke(surface, gesture.mask, picture, placement);
  });
  return changed;
}

/// Only what isn't in both the old and the new rectangle changes.
QRegion UnderLayer::stretchArea() {
  const Placement placement = view.placement();
  const QRectF last = placement.rectangle(gesture.area.value_or(QRectF()));
  gesture.area = model.currentBlurRect.get();
  const QRectF next = placement.rectangle(gesture.area.value_or(QRectF()));
  const QRegion changed =
      ((QRegion(outside(last)) | outside(next)) - (inside(last) & inside(next))) & view.layerRect();
  for (const QRect& part : changed)
    overwrite(part, [&](DrawingSurface& surface, const PlacedPicture& picture) {
      surface.replace(next, picture.image, picture.topLeft);
    });
  return changed;
}

QRect UnderLayer::dropGesture() {
  const QRect changed = gesture.before.restoreAll(under);
  gesture = {};
  return changed;
}

}  // namespace sorrel
