#include "app/editor/view/Canvas.h"

#include "platform/imaging/drawing/SmoothImage.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace sorrel {

Canvas::Canvas(EditorModel& shown, QWidget* parent) : QAbstractScrollArea(parent), model(shown) {
  setFrameShape(NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::ClickFocus);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  viewport()->setMouseTracking(true);
  changes = model.observe([this](EditorModel::Field field) { modelChanges(field); });
  repainting = model.observeRepainting([this](EditorModel::Field field, const QRectF&) {
    if (field == &model.baseImage)
      fitAnew();
    viewport()->update();
  });
  fitAnew();
}

Canvas::~Canvas() = default;

void Canvas::setTool(EditorModel::Tool which, std::unique_ptr<CanvasTool> tool) {
  tools[which] = std::move(tool);
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
  if (field == &model.tool || field == &model.textWM)
    reaction = platform::MainQueue::main().asyncAfter({}, [this] { react(); });
}

void Canvas::react() {
  (void)toolNow();
  if (model.tool != EditorModel::Tool::watermark && model.isEditingText)
    model.isEditingText = false;
  if (model.textWM->text != knownText) {
    knownText = model.textWM->text;
    model.maybeTriggerBurst(knownText);
  }
}

void Canvas::fitAnew() {
  show(place.resized(viewport()->size(), viewport()->devicePixelRatioF(), model.displaySize,
                     model.imagePixelSize));
}

void Canvas::show(const CanvasFit& next) {
  if (next == place)
    return;
  place = next;
  viewport()->update();
}

void Canvas::resizeEvent(QResizeEvent*) {
  fitAnew();
}

/// In points, and large enough for each device pixel that is touched.
QRect Canvas::pointsOf(const QRectF& pixels) const {
  return QRectF(pixels.topLeft() / place.ratio, pixels.size() / place.ratio)
      .toAlignedRect()
      .adjusted(-1, -1, 1, 1);
}

void Canvas::updateOver(const QRectF& rectangle) {
  viewport()->update(QRectF(place.toCanvas(rectangle.topLeft()), place.toCanvas(rectangle.bottomRight()))
                         .toAlignedRect()
                         .adjusted(-1, -1, 1, 1));
}

void Canvas::updateCursor() {
  CanvasTool* const now = toolNow();
  viewport()->setCursor(now && hoverLocation ? now->cursorAt(*hoverLocation) : QCursor(Qt::ArrowCursor));
}

bool Canvas::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave && !isDragging)
    hover(std::nullopt);
  return QAbstractScrollArea::viewportEvent(event);
}

void Canvas::hover(const std::optional<QPointF>& point) {
  hoverLocation.reset();
  if (point && QRectF(place.picture()).contains(*point * place.ratio))
    hoverLocation = place.toDisplay(*point);
  if (CanvasTool* const now = toolNow())
    now->hovered(hoverLocation);
  if (!isDragging)
    updateCursor();
}

void Canvas::press(const QPointF& point, bool isDouble) {
  hover(point);
  CanvasTool* const now = toolNow();
  if (!now || !hoverLocation)
    return;
  if (model.isEditingText) {  // a click beside the text ends it, and nothing else
    model.isEditingText = false;
    return;
  }
  isDragging = true;
  if (isDouble)
    now->doublePressed(*hoverLocation);
  else
    now->pressed(*hoverLocation);
}

void Canvas::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton)
    press(event->position(), false);
}

void Canvas::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton)
    press(event->position(), true);
}

void Canvas::mouseMoveEvent(QMouseEvent* event) {
  if (isDragging)
    if (CanvasTool* const now = toolNow(); now && isDragging)
      now->dragged(place.toDisplay(event->position()));
  hover(event->position());
}

void Canvas::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton)
    return;
  endDrag();
  hover(event->position());
}

void Canvas::endDrag() {
  if (!isDragging)
    return;
  isDragging = false;
  if (chosen)
    chosen->released();
}

void Canvas::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  // From here on a unit is a device pixel, also where the canvas itself doesn't begin on one.
  const QTransform toDevice = painter.deviceTransform();
  const QTransform whole =
      QTransform::fromTranslate(std::round(toDevice.dx()), std::round(toDevice.dy())) * toDevice.inverted();
  painter.setTransform(whole);
  const QRectF exposed(QPointF(event->rect().topLeft()) * place.ratio,
                       QSizeF(event->rect().size()) * place.ratio);
  paintPicture(painter, exposed.toAlignedRect());
}

void Canvas::paintPicture(QPainter& painter, const QRect& exposed) {
  const QRect picture = place.picture();
  backdrop.paint(painter, exposed, picture, place.ratio);
  platform::drawSmoothly(painter, model.baseImage, picture);
  if (chosen) {
    painter.save();
    painter.setClipRect(picture, Qt::IntersectClip);
    painter.translate(picture.topLeft());
    painter.scale(place.pixelsPerUnit(), place.pixelsPerUnit());
    painter.setRenderHint(QPainter::Antialiasing);
    chosen->paintOver(painter, canvasScale());
    painter.restore();
  }
  backdrop.paintAroundCorners(painter, exposed, picture, place.ratio);
}

}  // namespace sorrel
