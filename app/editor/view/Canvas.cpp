#include "app/editor/view/Canvas.h"

#include "app/editor/view/CanvasTextEditor.h"
#include "app/look/SlimScrollBar.h"
#include "app/settings/SettingsKeys.h"
#include "platform/base/UserDefaults.h"
#include "platform/system/FreeMemory.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <cmath>

namespace sorrel {
namespace {

constexpr std::chrono::milliseconds zoomDuration(150);
/// How long a pinch or a wheel has to rest before the pixels are painted anew.
constexpr std::chrono::milliseconds settlingDelay(120);
/// How long the zoom has to rest before its memory goes back.
constexpr std::chrono::milliseconds givingBackDelay(200);
/// How long the watermarks have to rest.
constexpr std::chrono::milliseconds settlingMarksDelay(120);

}  // namespace

Canvas::Canvas(EditorModel& document, QWidget* parent)
    : QAbstractScrollArea(parent),
      model(document),
      layers(document),
      zoomMotion(zoomDuration, platform::Easing::Out, [this](double factor) { stepZoom(factor); }),
      burst(document, [this](const QRectF& part) { updateOver(part); }),
      knownText(model.textWM->text) {
  setFrameShape(NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::ClickFocus);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  viewport()->setMouseTracking(true);
  new SlimScrollBar(*this, Qt::Horizontal);
  new SlimScrollBar(*this);
  changes = model.observe([this](EditorModel::Field field) { modelChanges(field); });
  repainting = model.observeRepainting(
      [this](EditorModel::Field field, const QRectF& rectangle) { modelRepaints(field, rectangle); });
  fontChanges = platform::UserDefaults::standard().observe(SettingsKeys::watermarkFontFamily, [this] {
    updatePicture(layers.followText());
    followTextEditing();
  });
  fitAnew();
}

Canvas::~Canvas() = default;

void Canvas::setTool(EditorModel::Tool which, std::unique_ptr<CanvasTool> tool) {
  tools[which] = std::move(tool);
  (void)toolNow();
}

CanvasTool* Canvas::toolNow() {
  const auto found = tools.find(model.tool);
  CanvasTool* const now = found == tools.end() ? nullptr : found->second.get();
  if (now == chosen)
    return chosen;
  endDrag();
  if (chosen)
    chosen->left();
  chosen = now;
  if (chosen) {
    chosen->chosen();
    chosen->hovered(hoverLocation);
  }
  updateCursor();
  return chosen;
}

/// The new value isn't in place yet.
void Canvas::modelChanges(EditorModel::Field field) {
  if (field == &model.tool || field == &model.textWM || field == &model.isEditingText)
    reaction = platform::MainQueue::main().asyncAfter({}, [this] { react(); });
}

void Canvas::react() {
  (void)toolNow();
  if (model.tool != EditorModel::Tool::watermark && model.isEditingText)
    model.isEditingText = false;
  updatePicture(layers.followEditing());
  followTextEditing();
  if (model.textWM->text != knownText) {
    knownText = model.textWM->text;
    model.maybeTriggerBurst(knownText);
  }
}

/// Until the editing ends no click takes the keyboard from the text, whatever it does to the canvas.
void Canvas::followTextEditing() {
  if (model.isEditingText && textEditor)
    return textEditor->follow();
  if (model.isEditingText) {
    setFocusPolicy(Qt::NoFocus);
    textEditor = std::make_unique<CanvasTextEditor>(model, *this, [this] {
      if (model.isEditingText)
        model.isEditingText = false;
    });
  } else if (textEditor) {
    setFocusPolicy(Qt::ClickFocus);
    if (window()->focusWidget() == textEditor.get())
      setFocus();
    textEditor.reset();
    viewport()->update();
  }
}

void Canvas::modelRepaints(EditorModel::Field field, const QRectF& rectangle) {
  const QRegion changed = layers.follow(field, rectangle);
  if (field == &model.baseImage) {
    settle();
    fitAnew();
    viewport()->update();
  } else {
    updatePicture(changed);
  }
}

void Canvas::fitAnew() {
  if (model.baseImage->isNull())
    return;  // it is still being read
  showAt(place.resized(viewport()->size(), viewport()->devicePixelRatioF(), model.displaySize,
                       model.imagePixelSize));
}

void Canvas::showAt(const CanvasFit& next) {
  if (next == place)
    return;
  place = next;
  fitScrollBars();
  if (textEditor)
    textEditor->follow();
  viewport()->update();
}

void Canvas::resizeEvent(QResizeEvent*) {
  settle();
  fitAnew();
}

/// In device pixels, so that no rounding keeps the picture from where the user drags it.
void Canvas::fitScrollBars() {
  isFittingScrollBars = true;
  const QPoint limit = place.isZoomed() ? place.scrollLimit() : QPoint();
  const QSize area = place.areaPixels();
  const auto fit = [](QScrollBar* bar, int most, int page, int value) {
    bar->setPageStep(page);
    bar->setSingleStep(page / 20);
    bar->setRange(0, most);
    bar->setValue(value);
  };
  fit(horizontalScrollBar(), limit.x(), area.width(), place.scrolled.x());
  fit(verticalScrollBar(), limit.y(), area.height(), place.scrolled.y());
  isFittingScrollBars = false;
}

void Canvas::scrollContentsBy(int, int) {
  if (isFittingScrollBars)
    return;
  settle();
  showAt(place.scrolledTo(QPointF(horizontalScrollBar()->value(), verticalScrollBar()->value())));
}

platform::Subscription Canvas::observeZoom(std::function<void()> observer) {
  return zoomObservers.add(std::move(observer));
}

void Canvas::zoomIn() {
  zoomBy(&CanvasZoom::in);
}

void Canvas::zoomOut() {
  zoomBy(&CanvasZoom::out);
}

void Canvas::zoomToFit() {
  zoomBy(&CanvasZoom::fit);
}

void Canvas::zoomBy(void (CanvasZoom::*command)()) {
  (zoom.*command)();
  zoomObservers.tell();
  if (place.zoom == zoom.factor)
    return settle();
  beginStretching();
  zooming = {place, QPointF(place.area.width() / 2, place.area.height() / 2)};
  zoomMotion.jumpTo(place.zoom);
  zoomMotion.moveTo(zoom.factor);
}

void Canvas::stepZoom(double factor) {
  showAt(zooming.start.zoomedTo(factor, zooming.anchor));
  if (factor == zoom.factor)
    settle();
}

void Canvas::zoomAtOnce(const QPointF& anchor) {
  zoomObservers.tell();
  if (place.zoom == zoom.factor)
    return;
  beginStretching();
  zoomMotion.stop();
  showAt(place.zoomedTo(zoom.factor, anchor));
  settling = platform::MainQueue::main().asyncAfter(settlingDelay, [this] { settle(); });
}

void Canvas::beginStretching() {
  settling.cancel();
  givingBack.cancel();
  if (stretched.isShown() || place.area.isEmpty())
    return;
  CanvasFit whole = place;
  whole.zoom = 1;
  layers.show(place);
  stretched.begin(layers.picture(marksAre).image, layers.shownView(), model.baseImage, whole.shown());
}

void Canvas::settle() {
  settling.cancel();
  zoomMotion.stop();
  if (!stretched.isShown())
    return;
  stretched.end();
  // The layers of the old zoom, and what the new ones took to be made, have left holes in the heap.
  givingBack = platform::MainQueue::main().asyncAfter(givingBackDelay, &platform::giveBackFreeMemory);
  showAt(place.zoomedTo(zoom.factor, zooming.anchor));
  viewport()->update();
}

/// A point more on each side: a device pixel may belong to two of them.
void Canvas::updatePicture(const QRegion& inPicture) {
  const QPoint corner = place.picture().topLeft();
  for (const QRect& part : inPicture) {
    const QRect pixels = part.translated(corner);
    viewport()->update(QRectF(QPointF(pixels.topLeft()) / place.ratio, QSizeF(pixels.size()) / place.ratio)
                           .toAlignedRect()
                           .adjusted(-1, -1, 1, 1));
  }
}

void Canvas::updateOver(const QRectF& rectangle) {
  viewport()->update(QRectF(place.toCanvas(rectangle.topLeft()), place.toCanvas(rectangle.bottomRight()))
                         .toAlignedRect()
                         .adjusted(-1, -1, 1, 1));
}

void Canvas::reveal(const QRectF& rectangle) {
  if (!place.isZoomed() || stretched.isShown())
    return;
  constexpr double margin = 24;  // in points
  const QRectF wanted = QRectF(place.toCanvas(rectangle.topLeft()), place.toCanvas(rectangle.bottomRight()))
                            .adjusted(-margin, -margin, margin, margin);
  const QPointF beyond(std::max(0.0, wanted.right() - place.area.width()),
                       std::max(0.0, wanted.bottom() - place.area.height()));
  const QPointF before(std::min(0.0, wanted.left()), std::min(0.0, wanted.top()));
  showAt(place.scrolledTo(place.scrolled + (beyond + before) * place.ratio));
}

void Canvas::carryMarks() {
  layers.carryMarks();
  settlingMarks = platform::MainQueue::main().asyncAfter(settlingMarksDelay, [this] {
    if (!isDragging)
      settleMarks();
  });
}

void Canvas::settleMarks() {
  settlingMarks.cancel();
  updatePicture(layers.settleMarks());
}

void Canvas::paintEvent(QPaintEvent* event) {
  if (place.ratio != viewport()->devicePixelRatioF())  // the window has come to another screen
    fitAnew();
  QPainter painter(viewport());
  // From here on a unit is a device pixel, also where the canvas itself doesn't begin on one.
  const QTransform toDevice = painter.deviceTransform();
  painter.setTransform(QTransform::fromTranslate(std::round(toDevice.dx()), std::round(toDevice.dy())) *
                       toDevice.inverted());
  if (!stretched.isShown())
    layers.show(place);
  CanvasTool* const tool = chosen;  // another, chosen just now, takes its place in a turn of its own
  if (!stretched.isShown())
    marksAre = marksFor(tool);
  const QRect picture = place.picture();
  const QRegion& region = event->region();
  const auto pixelsOf = [this](const QRect& points) {
    return QRectF(QPointF(points.topLeft()) * place.ratio, QSizeF(points.size()) * place.ratio)
        .toAlignedRect();
  };
  for (const QRect& points : region)
    paintPicture(painter, pixelsOf(points));
  paintOver(painter, tool);
  backdrop.paintAroundCorners(painter, pixelsOf(region.boundingRect()), picture, place.ratio);
}

void Canvas::paintPicture(QPainter& painter, const QRect& exposed) {
  const QRect picture = place.picture();
  for (const QRect& seen : model.isOpaque() ? QRegion(exposed) - picture : QRegion(exposed))
    backdrop.paint(painter, seen, picture, place.ratio);
  if (stretched.isShown())
    return stretched.paint(painter, picture, exposed);
  painter.translate(picture.topLeft());
  layers.paint(painter, exposed.translated(-picture.topLeft()), marksAre);
  painter.translate(-picture.topLeft());
}

/// Painted into the picture they are exactly what the file will have; over a tool's part, or while they are
/// moved, only nearly so, and at less cost.
CanvasLayers::Marks Canvas::marksFor(const CanvasTool* tool) const {
  return layers.isCarryingMarks() || (tool && tool->isOver()) ? CanvasLayers::Marks::apart
                                                              : CanvasLayers::Marks::within;
}

void Canvas::paintOver(QPainter& painter, const CanvasTool* tool) {
  painter.save();
  painter.setClipRect(place.picture(), Qt::IntersectClip);
  painter.translate(place.picture().topLeft());
  const QTransform pixels = painter.transform();
  painter.scale(place.pixelsPerUnit(), place.pixelsPerUnit());
  const QTransform display = painter.transform();
  painter.setRenderHint(QPainter::Antialiasing);
  if (tool)
    tool->paintOver(painter, canvasScale());
  if (marksAre == CanvasLayers::Marks::apart) {
    painter.setTransform(pixels);
    paintMarks(painter);
    painter.setTransform(display);
  }
  if (textEditor)
    textEditor->paint(painter, canvasScale());
  burst.paint(painter);
  painter.restore();
}

void Canvas::paintMarks(QPainter& painter) const {
  const QSizeF shown = layers.shownView().shown;
  const QSizeF picture = place.picture().size();
  painter.scale(picture.width() / shown.width(), picture.height() / shown.height());
  for (const PlacedPicture& mark : layers.marks())
    painter.drawImage(mark.topLeft, mark.image);
}

}  // namespace sorrel
