#include "platform/desktop/wayland/LayerPanelSurface.h"

#include "platform/desktop/ActivationToken.h"
#include "platform/desktop/panel/PanelSheet.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <algorithm>

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
  output = screen;
  moveTo(start.value_or(target), start ? 0 : 1);
  window.show();
  [[maybe_unused]] const QByteArray unneeded = ActivationToken::take();  // a layer has the keyboard anyway
  handlers.ready();
  watchOtherOutputs();
}

void LayerPanelSurface::watchOtherOutputs() {
  const bool isWanted = layer && !isPanelStaying() && !isPanelDragging() &&
                        QGuiApplication::screens().size() > 1 && arePanesOffered();
  if (isWanted == pointer.has_value())
    return;
  pointer.reset();
  otherOutputs.clear();
  if (!isWanted)
    return;
  pointer.emplace(nullptr, [this] {
    if (isOnOtherOutput(pointer->surface()))
      handlers.keyLost();
  });
  for (const QScreen* const screen : QGuiApplication::screens())
    if (screen != output)
      otherOutputs.push_back(std::make_unique<Pane>(*screen, LayerRole::Extent::WholeOutput));
}

bool LayerPanelSurface::isOnOtherOutput(const wl_surface* surface) const {
  return std::ranges::any_of(otherOutputs, [&](const auto& pane) { return pane->surface() == surface; });
}

void LayerPanelSurface::close() {
  pointer.reset();
  otherOutputs.clear();
  layer.reset();  // before the toolkit ends the window's surface
}

QPoint LayerPanelSurface::origin() const {
  return window.pos();
}

void LayerPanelSurface::setStaying(bool stays) {
  CoveringPanelSurface::setStaying(stays);
  if (layer)
    layer->setKeyboard(stays && !sheet.underMouse() ? Keyboard::Elsewhere : Keyboard::Here);
  watchOtherOutputs();
}

void LayerPanelSurface::beginDrag() {
  CoveringPanelSurface::beginDrag();
  watchOtherOutputs();
}

void LayerPanelSurface::endDrag(bool isTaken) {
  CoveringPanelSurface::endDrag(isTaken);
  watchOtherOutputs();
  if (!layer || isPanelStaying() || QGuiApplication::focusWindow() == window.windowHandle())
    return;
  // There are compositors that give the keyboard to what something is dragged over. A program that has taken
  // it may ask what to do with it, in a menu that goes with the keyboard.
  if (isTaken) {
    handlers.keyLost();
    return;
  }
  layer->setKeyboard(Keyboard::Elsewhere);
  layer->setKeyboard(Keyboard::Here);
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
