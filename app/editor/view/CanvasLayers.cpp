#include "app/editor/view/CanvasLayers.h"

#include "app/editor/model/EditorModel.h"

#include <utility>

namespace sorrel {
namespace {

/// Of a picture in 8-bit premultiplied RGBA.
bool isOpaquePicture(const QImage& picture) {
  for (int y = 0; y < picture.height(); ++y) {
    const uchar* const row = picture.constScanLine(y);
    uchar all = 255;
    for (int x = 0; x < picture.width(); ++x)
      all &= row[4 * x + 3];
    if (all != 255)
      return false;
  }
  return true;
}

}  // namespace

CanvasLayers::CanvasLayers(EditorModel& document) : model(document), under(document), ink(document) {
}

bool CanvasLayers::isOpaque() {
  if (!opaque)
    opaque = isOpaquePicture(model.baseImage);
  return *opaque;
}

void CanvasLayers::show(const CanvasFit& place) {
  const CanvasView next =
      CanvasView::of(place.shown(), place.visible(), place.pixelsPerUnit(), model.displaySize);
  if (next == view)
    return;
  under.repaint(std::exchange(staleUnder, {}));
  const CanvasView last = std::exchange(view, next);
  under.show(view);
  ink.show(view);
  isLogoStale = isTextStale = true;
  if (view.isScrolledFrom(last)) {
    together = scrolledLayer(together, last, view);
    stale = stale.translated(last.area.topLeft() - view.area.topLeft()) & view.layerRect();
    stale |= QRegion(view.layerRect()) - view.sharedWith(last);
  } else {
    together = QImage(view.area.size(), QImage::Format_RGBA8888_Premultiplied);
    stale = view.layerRect();
  }
}

QRegion CanvasLayers::follow(const void* field, const QRectF& rectangle) {
  QRegion changed;
  if (field == &model.baseImage) {
    under.reset();
    ink.reset();
    view = {};
    staleUnder = stale = {};
    opaque.reset();
    return {};
  }
  if (field == &model.current)
    changed = ink.followGesture();
  else if (field == &model.strokes)
    changed = ink.followStrokes();
  else if (field == &model.blurRegions || field == &model.blurIntensity)
    staleUnder |= changed = pixelsOf(rectangle, view.placement());
  else if (field == &model.textWM || field == &model.logoWM) {
    (field == &model.textWM ? isTextStale : isLogoStale) = true;
    changed = pixelsOf(rectangle, view.placement());
  } else
    changed = under.followGesture();
  changed &= view.layerRect();
  stale |= changed;
  return inPicture(changed);
}

QRegion CanvasLayers::followText() {
  isTextStale = true;
  const QRect last(text.topLeft, text.image.size());
  const QRegion changed = QRegion(last | pixelsOf(model.textRect(), view.placement())) & view.layerRect();
  stale |= changed;
  return inPicture(changed);
}

QRegion CanvasLayers::followEditing() {
  if (isTextHidden == model.isEditingText)
    return {};
  isTextHidden = model.isEditingText;
  return followText();
}

PlacedPicture CanvasLayers::picture() {
  if (!staleUnder.isEmpty())
    under.repaint(std::exchange(staleUnder, {}));
  const Placement placement = view.placement();
  if (std::exchange(isLogoStale, false))
    logo = logoPicture(model.document(), placement, view.layerRect());
  if (std::exchange(isTextStale, false))
    text = isTextHidden ? PlacedPicture()
                        : textPicture(model.textWM, model.fontFamily(), placement, view.layerRect());
  for (const QRect& part : std::exchange(stale, {}))
    compose(part);
  return {together, view.area.topLeft()};
}

void CanvasLayers::compose(const QRect& part) {
  copyPixels(together, part.topLeft(), under.pixels(), part);
  platform::DrawingSurface surface(std::move(together), part);
  surface.lay(ink.pixels(), {0, 0});
  surface.lay(logo.image, logo.topLeft);
  surface.lay(text.image, text.topLeft);
  together = surface.finish();
}

}  // namespace sorrel
