#include "platform/desktop/panel/X11PanelSurface.h"

#include "platform/desktop/ActivationToken.h"
#include "platform/desktop/WindowShape.h"
#include "platform/desktop/panel/PanelHints.h"
#include "platform/desktop/panel/PanelSheet.h"

#include <QEvent>
#include <QWidget>
#include <QWindow>

namespace platform {
namespace {

constexpr std::chrono::milliseconds landingTime(80);

}  // namespace

X11PanelSurface::X11PanelSurface(QWidget& panelWindow, PanelSheet& panelSheet, Handlers all)
    : window(panelWindow), sheet(panelSheet), handlers(std::move(all)), compositing([this] { fit(); }) {
  window.setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
}

bool X11PanelSurface::isSeenThrough() const {
  return isComposited() && window.windowHandle() && window.windowHandle()->format().hasAlpha();
}

bool X11PanelSurface::hasKeyboard() const {
  return platform::hasKeyboard(window);
}

void X11PanelSurface::open(const QRectF& place, const std::optional<QRectF>& start) {
  target = place;
  window.winId();  // makes it
  window.windowHandle()->installEventFilter(this);
  setMargin(isSeenThrough() ? PanelFrame::shadowRoom : 0);
  // Not seen yet, it first goes where it is to end, to learn whether it may stay there.
  move(start && margin == 0 ? *start : target);
  window.setWindowOpacity(start ? 0 : 1);
  window.show();
  window.raise();
  askForKeyboard(window);
}

void X11PanelSurface::didShow() {
  fit();  // the frame that the window manager may have put around it wants its shape, too
  if (margin == 0 || hasLanded()) {
    handlers.ready();
    return;
  }
  // Some window managers move the window only now. Others keep the shadow's room on the screen, too.
  landing = MainQueue::main().asyncAfter(landingTime, [this] {
    if (!hasLanded())
      setMargin(0);
    handlers.ready();
  });
}

bool X11PanelSurface::hasLanded() const {
  constexpr qreal rounding = 2;
  const QPointF asked = target.topLeft() - QPointF(margin, margin);
  const auto landed = placeOf(window);
  return !landed || (*landed - asked).manhattanLength() <= rounding;
}

void X11PanelSurface::setMargin(int points) {
  margin = points;
  window.setFixedSize(sheet.panelSize.grownBy({margin, margin, margin, margin}));
  tellWindowManager(window, margin);
  fit();
}

void X11PanelSurface::fit() {
  sheet.fit(margin, isSeenThrough());
  if (isSeenThrough()) {
    removeShape(window);
    isBlurred = canBlurBehind();
    // Who blurs counts from the panel, of which the margin is no part.
    if (isBlurred)
      blurBehind(window, QRect({}, sheet.panelSize), sheet.cornerRadius);
  } else {
    cutToRoundedShape(window, sheet.panel(), sheet.cornerRadius);
    isBlurred = false;
  }
  takeClicksOnlyIn(window, sheet.panel());
  window.update();
}

void X11PanelSurface::move(const QRectF& place) {
  window.move(place.topLeft().toPoint() - QPoint(margin, margin));
}

void X11PanelSurface::moveTo(const QRectF& place, double opacity) {
  move(place);
  window.setWindowOpacity(opacity);
}

bool X11PanelSurface::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Expose && !isShown && window.windowHandle()->isExposed()) {
    isShown = true;
    didShow();
  }
  return QObject::eventFilter(watched, event);
}

void X11PanelSurface::handleNative(const QByteArray& eventType, const void* message) {
  if (eventType != "xcb_generic_event_t")
    return;
  switch (keyboardNews(message)) {
    case KeyboardNews::None:
      break;
    case KeyboardNews::Held:
      isHeld = true;
      break;
    case KeyboardNews::GivenBack:
      isHeld = false;
      break;
    case KeyboardNews::Lost:
      isHeld = false;
      handlers.keyLost();
      break;
  }
}

}  // namespace platform
