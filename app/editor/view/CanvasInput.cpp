// What the pointer, the wheel and the keyboard do to the canvas.

#include "app/editor/view/Canvas.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QScrollBar>
#include <QWheelEvent>

namespace sorrel {
namespace {

constexpr double notch = 120;          // of a wheel, in the toolkit's unit
constexpr double pointsPerNotch = 60;  // of scrolling

}  // namespace

bool Canvas::viewportEvent(QEvent* event) {
  switch (event->type()) {
    case QEvent::Leave:
      if (!isDragging)
        hover(std::nullopt);
      break;
    case QEvent::NativeGesture:
      pinch(static_cast<const QNativeGestureEvent&>(*event));
      return true;
    default:
      break;
  }
  return QAbstractScrollArea::viewportEvent(event);
}

/// The window opens without a focus, so Space comes to it.
void Canvas::showEvent(QShowEvent* event) {
  QAbstractScrollArea::showEvent(event);
  window()->installEventFilter(this);
  if (!event->spontaneous())
    model.beginReducing(place.shown());  // the window has its size, and is yet to come to the screen
}

bool Canvas::eventFilter(QObject* watched, QEvent* event) {
  if (watched != window())
    return QAbstractScrollArea::eventFilter(watched, event);
  const auto isSpace = [event] {
    const auto* const key = static_cast<const QKeyEvent*>(event);
    return key->key() == Qt::Key_Space && key->modifiers() == Qt::NoModifier;
  };
  const bool wasHeld = isSpaceHeld;
  if (event->type() == QEvent::KeyPress && isSpace())
    isSpaceHeld = place.isZoomed() && !model.isEditingText;
  else if (event->type() == QEvent::WindowDeactivate ||
           (event->type() == QEvent::KeyRelease && isSpace() &&
            !static_cast<const QKeyEvent*>(event)->isAutoRepeat()))
    isSpaceHeld = false;
  if (wasHeld != isSpaceHeld)
    updateCursor();
  return false;
}

void Canvas::updateCursor() {
  CanvasTool* const tool = toolNow();
  QCursor cursor(Qt::ArrowCursor);
  if (pan)
    cursor = Qt::ClosedHandCursor;
  else if (isSpaceHeld)
    cursor = Qt::OpenHandCursor;
  else if (tool && hoverLocation)
    cursor = tool->cursorAt(*hoverLocation);
  viewport()->setCursor(cursor);
}

void Canvas::hover(const std::optional<QPointF>& point) {
  hoverLocation.reset();
  if (point && QRectF(place.picture()).contains(*point * place.ratio))
    hoverLocation = place.toDisplay(*point);
  if (CanvasTool* const tool = toolNow())
    tool->hovered(hoverLocation);
  if (!isDragging)
    updateCursor();
}

void Canvas::press(const QPointF& point, bool isDouble) {
  settle();
  hover(point);
  CanvasTool* const tool = toolNow();
  if (!hoverLocation || model.displaySize->width() < 1)
    return;
  if (model.isEditingText || textEditor) {  // a click beside the text ends that, and does nothing else
    model.isEditingText = false;
    return;
  }
  if (!tool)
    return;
  isDragging = true;
  if (isDouble)
    tool->doublePressed(*hoverLocation);
  else
    tool->pressed(*hoverLocation);
}

bool Canvas::beginPan(const QMouseEvent& event) {
  if (isDragging || !place.isZoomed() ||
      !(event.button() == Qt::MiddleButton || (event.button() == Qt::LeftButton && isSpaceHeld)))
    return false;
  settle();
  pan = Pan{event.position(), place.scrolled, event.button()};
  hover(std::nullopt);
  return true;
}

/// A display unit with each arrow key, or ten; where the tool moves nothing the keys scroll.
void Canvas::keyPressEvent(QKeyEvent* event) {
  constexpr double step = 1, longStep = 10;
  const std::map<int, QPointF> directions = {
      {Qt::Key_Left, {-1, 0}}, {Qt::Key_Right, {1, 0}}, {Qt::Key_Up, {0, -1}}, {Qt::Key_Down, {0, 1}}};
  const auto direction = directions.find(event->key());
  const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
  CanvasTool* const tool = toolNow();
  if (tool && !isDragging && direction != directions.end() &&
      (modifiers == Qt::NoModifier || modifiers == Qt::ShiftModifier) &&
      tool->movedBy((modifiers ? longStep : step) * direction->second))
    return;
  QAbstractScrollArea::keyPressEvent(event);
}

void Canvas::mousePressEvent(QMouseEvent* event) {
  if (!beginPan(*event) && !pan && event->button() == Qt::LeftButton)
    press(event->position(), false);
}

void Canvas::mouseDoubleClickEvent(QMouseEvent* event) {
  if (!beginPan(*event) && !pan && event->button() == Qt::LeftButton)
    press(event->position(), true);
}

/// A release doesn't arrive if the window is put away before it.
void Canvas::endUnlessHeld(Qt::MouseButtons held) {
  if (pan && !held.testFlag(pan->button))
    pan.reset();
  if (!held.testFlag(Qt::LeftButton))
    endDrag();
}

void Canvas::mouseMoveEvent(QMouseEvent* event) {
  endUnlessHeld(event->buttons());
  if (pan) {
    showAt(place.scrolledTo(pan->scrolled - (event->position() - pan->from) * place.ratio));
    return;
  }
  CanvasTool* const tool = toolNow();
  if (tool && isDragging)
    tool->dragged(place.toDisplay(event->position()));
  hover(event->position());
}

void Canvas::mouseReleaseEvent(QMouseEvent* event) {
  if (pan && pan->button == event->button())
    pan.reset();
  else if (event->button() == Qt::LeftButton)
    endDrag();
  hover(event->position());
}

void Canvas::endDrag() {
  if (!isDragging)
    return;
  isDragging = false;
  if (chosen)
    chosen->released();
  settleMarks();
}

void Canvas::wheelEvent(QWheelEvent* event) {
  event->accept();
  QPointF turned = QPointF(event->angleDelta()) / notch;
  if (event->modifiers() & Qt::ControlModifier) {
    zoom.turnWheel(turned.y());
    return zoomAtOnce(event->position());
  }
  if (!place.isZoomed())
    return;
  if (event->modifiers() & Qt::ShiftModifier)
    turned = turned.transposed();
  settle();
  const QPointF wanted = place.scrolled + beyondPixel - turned * pointsPerNotch * place.ratio;
  beyondPixel = wanted - wanted.toPoint();
  showAt(place.scrolledTo(wanted));
  hover(event->position());
}

/// The magnification is 1 and the sum of all that a pinch tells.
void Canvas::pinch(const QNativeGestureEvent& event) {
  switch (event.gestureType()) {
    case Qt::BeginNativeGesture:
      pinched = 1;
      break;
    case Qt::ZoomNativeGesture:
      pinched += event.value();
      zoom.pinch(pinched);
      zoomAtOnce(event.position());
      break;
    case Qt::EndNativeGesture:
      zoom.endPinch();
      settle();
      break;
    default:
      break;
  }
}

}  // namespace sorrel
