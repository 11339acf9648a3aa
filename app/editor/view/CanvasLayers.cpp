#include "app/editor/view/CanvasLayers.h"

#include "app/editor/model/EditorModel.h"

#include <QPainter>

#include <utility>

namespace sorrel {
namespace {

/// Of what is worked on at a time, so that it stays near the processor.
constexpr int stripHeight = 32;

}  // namespace

CanvasLayers::CanvasLayers(EditorModel& document) : model(document), under(document), ink(document) {
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
  logo.forget();
  text.forget();
  isLogoStale = isTextStale = true;
  if (!together.isNull() && view.isScrolledFrom(last)) {
    const auto format = together.format();
    together = scrolledLayer(together, last, view);
    together.reinterpretAsFormat(format);
    stale = stale.translated(last.area.topLeft() - view.area.topLeft()) & view.layerRect();
    stale |= QRegion(view.layerRect()) - view.sharedWith(last);
  } else {
    together = {};
    stale = view.layerRect();
  }
}

QRegion CanvasLayers::follow(const void* field, const QRectF& rectangle) {
  if (field == &model.baseImage) {
    under.reset();
    ink.reset();
    view = {};
    staleUnder = stale = {};
    return {};
  }
  if (field == &model.textWM)
    return followText();
  QRegion changed;
  if (field == &model.current)
    changed = ink.followGesture();
  else if (field == &model.strokes)
    changed = ink.followStrokes();
  else if (field == &model.blurRegions || field == &model.blurIntensity)
    staleUnder |= changed = pixelsOf(rectangle, view.placement());
  else if (field == &model.logoWM) {
    isLogoStale = true;
    changed = pixelsOf(rectangle, view.placement());
    if (marksAre == Marks::apart)
      return inPicture(changed & view.layerRect());
  } else
    changed = under.followGesture();
  return willChange(changed);
}

QRegion CanvasLayers::willChange(const QRegion& part) {
  const QRegion changed = part & view.layerRect();
  stale |= changed;
  return inPicture(changed);
}

/// At once, since only what is drawn knows how far it reaches: a soft shadow of whole pixels reaches farther
/// where the text is small.
QRegion CanvasLayers::followText() {
  if (view.area.isEmpty())
    return {};
  const QRect last = text.area();
  isTextStale = true;
  showMarks();
  const QRegion changed = QRegion(last) | text.area();
  return marksAre == Marks::apart ? inPicture(changed & view.layerRect()) : willChange(changed);
}

QRegion CanvasLayers::followEditing() {
  if (isTextHidden == model.isEditingText)
    return {};
  isTextHidden = model.isEditingText;
  return followText();
}

QRegion CanvasLayers::settleMarks() {
  if (!std::exchange(isCarrying, false))
    return {};
  logo.forget();
  text.forget();
  isLogoStale = isTextStale = true;
  const QRegion carried = QRegion(logo.area()) | text.area();
  showMarks();
  return willChange(carried | logo.area() | text.area());
}

const QImage& CanvasLayers::shownLogo(const LogoWatermark& now, double scale) {
  const ReducedLogo wanted{now.image.cacheKey(), now.scale * scale * model.displaySize->width(), {}};
  if (wanted.of != reducedLogo.of || wanted.size != reducedLogo.size) {
    reducedLogo = wanted;
    reducedLogo.pixels = logoPixels(model.document(), scale);
  }
  return reducedLogo.pixels;
}

/// What the marks look like is compared without their places.
void CanvasLayers::showMarks() {
  const Placement placement = view.placement();
  if (std::exchange(isLogoStale, false)) {
    const LogoWatermark now = model.logoWM->value_or(LogoWatermark());
    LogoWatermark look = now;
    look.center = {};
    if (look != std::exchange(logoLook, look))
      logo.forget();
    logo.show(placement.point(now.center), view.layerRect(), isCarrying, [&](const QRect& part) {
      return logoPicture(model.document(), shownLogo(now, placement.scale), placement, part);
    });
  }
  if (std::exchange(isTextStale, false)) {
    TextLook look{model.textWM, model.fontFamily()};
    look.watermark.center = {};
    if (isTextHidden)
      look.watermark.text.clear();
    if (look != textLook)
      text.forget();
    textLook = look;
    text.show(placement.point(model.textWM->center), view.layerRect(), isCarrying, [&](const QRect& part) {
      return isTextHidden ? PlacedPicture() : textPicture(model.textWM, look.fontFamily, placement, part);
    });
  }
}

void CanvasLayers::place(Marks where) {
  if (marksAre == where)
    return;
  marksAre = where;
  stale |= (QRegion(logo.area()) | text.area()) & view.layerRect();
}

std::array<PlacedPicture, 2> CanvasLayers::marks() const {
  std::array marks = {logo.picture(), text.picture()};
  for (PlacedPicture& mark : marks)
    mark.topLeft += view.area.topLeft();
  return marks;
}

void CanvasLayers::prepare(Marks where) {
  if (!staleUnder.isEmpty())
    under.repaint(std::exchange(staleUnder, {}));
  place(where);
  showMarks();
}

bool CanvasLayers::isUnderAlone() const {
  return together.isNull() && ink.pixels().isNull() &&
         (marksAre == Marks::apart || (logo.area().isEmpty() && text.area().isEmpty()));
}

PlacedPicture CanvasLayers::picture(Marks where) {
  prepare(where);
  composeStale(view.layerRect());
  return {together, view.area.topLeft()};
}

/// As long as nothing lies on the base image there is no copy of it in the screen's format. It is turned into
/// that strip by strip: the painter would go a longer way.
void CanvasLayers::paint(QPainter& painter, const QRect& part, Marks where) {
  prepare(where);
  const QPoint corner = view.area.topLeft();
  const QRect wanted = part.translated(-corner) & view.layerRect();
  if (wanted.isEmpty())
    return;
  if (!isUnderAlone()) {
    composeStale(wanted);
    return painter.drawImage(wanted.topLeft() + corner, together, wanted);
  }
  for (int top = wanted.top(); top <= wanted.bottom(); top += stripHeight) {
    const QRect strip = QRect(wanted.left(), top, wanted.width(), stripHeight) & wanted;
    painter.drawImage(strip.topLeft() + corner, inScreenFormat(under.pixels().copy(strip)));
  }
}

QImage CanvasLayers::inScreenFormat(QImage pixels) {
  pixels = std::move(pixels).convertToFormat(QImage::Format_ARGB32_Premultiplied);
  if (model.isOpaque())
    pixels.reinterpretAsFormat(QImage::Format_RGB32);
  return pixels;
}

/// Whole rows, of which some at a time, so that what is left is always of few rectangles.
void CanvasLayers::composeStale(const QRect& part) {
  constexpr int rowsAtATime = 64;
  const QRect layer = view.layerRect();
  const int top = std::max(part.top(), 0) / rowsAtATime * rowsAtATime;
  const int end = (part.bottom() + rowsAtATime) / rowsAtATime * rowsAtATime;
  const QRect rows = QRect(layer.left(), top, layer.width(), end - top) & layer;
  if (together.isNull() && !layer.isEmpty()) {
    together = newLayer(layer.size());
    together.reinterpretAsFormat(model.isOpaque() ? QImage::Format_RGB32
                                                  : QImage::Format_ARGB32_Premultiplied);
  }
  for (const QRect& changed : stale& rows)
    compose(changed);
  stale -= rows;
}

/// The screen's own format is taken here once, not by each painting.
void CanvasLayers::compose(const QRect& part) {
  for (int top = part.top(); top <= part.bottom(); top += stripHeight) {
    const QRect strip = QRect(part.left(), top, part.width(), stripHeight) & part;
    QImage mixed = newLayer(strip.size());
    copyPixels(mixed, {0, 0}, under.pixels(), strip);
    platform::DrawingSurface surface(std::move(mixed));
    surface.lay(ink.pixels(), -strip.topLeft());
    if (marksAre == Marks::within)
      for (const MarkLayer* const mark : {&logo, &text})
        surface.lay(mark->picture().image, mark->picture().topLeft - strip.topLeft());
    mixed = inScreenFormat(surface.finish());
    copyPixels(together, strip.topLeft(), mixed, mixed.rect());
  }
}

}  // namespace sorrel
