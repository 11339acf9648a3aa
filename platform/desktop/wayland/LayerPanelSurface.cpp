#include "platform/desktop/wayland/LayerPanelSurface.h"

#include "platform/desktop/ActivationToken.h"
#include "platform/desktop/panel/PanelSheet.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

namespace platform {

using Keyboard = OutputLayer::Keyboard;

LayerPanelSurface::LayerPanelSurface(QWidget& panelWindow, PanelSheet& panelSheet, Handlers all)
    : CoveringPanelSurface(panelWindow, panelSheet, std::move(all)) {
  window.setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | OutputLayer::windowFlags());
}

void LayerPanelSurface::open(const QRectF& target, const std::optional<QRectF>& start) {
  QScreen* screen = QGuiApplication::screenAt(target.center().toPoint());
  if (!screen)
    screen = QGuiApplication::primaryScreen();
  layer.emplace(window, *screen, Keyboard::Here, OutputLayer::Handlers{[this] { fit(); }, handlers.keyLost});
  window.windowHandle()->installEventFilter(this);
  moveTo(start.value_or(target), start ? 0 : 1);
  window.show();
  [[maybe_unused]] const QByteArray unneeded = ActivationToken::take();  // a layer has the keyboard anyway
  handlers.ready();
}

void LayerPanelSurface::close() {
  layer.reset();  // before the toolkit ends the window's surface
}

QPoint LayerPanelSurface::origin() const {
  return window.pos();
}

void LayerPanelSurface::setStaying(bool stays) {
  CoveringPanelSurface::setStaying(stays);
  if (layer)
    layer->setKeyboard(stays && !sheet.underMouse() ? Keyboard::Elsewhere : Keyboard::Here);
}

void LayerPanelSurface::setDragging(bool drags) {
  CoveringPanelSurface::setDragging(drags);
  // There are compositors that give the keyboard to what something is dragged over.
  if (!drags && layer && !isPanelStaying() && QGuiApplication::focusWindow() != window.windowHandle()) {
    layer->setKeyboard(Keyboard::Elsewhere);
    layer->setKeyboard(Keyboard::Here);
  }
}

void LayerPanelSurface::setSelecting(bool isSelecting) {
  if (layer)
    layer->setSelecting(isSelecting);
}

bool LayerPanelSurface::eventFilter(QObject* watched, QEvent* event) {
  // What is clicked beside a panel that stays nobody tells: so it leaves the keyboard to others, until it is
  // clicked, and then for as long as the pointer is on it.
  if (isPanelStaying() && layer) {
    if (event->type() == QEvent::MouseButtonPress)
      layer->setKeyboard(Keyboard::Here);
    else if (event->type() == QEvent::Leave)
      layer->setKeyboard(Keyboard::Elsewhere);
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace platform
