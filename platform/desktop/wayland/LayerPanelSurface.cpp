#include "platform/desktop/wayland/LayerPanelSurface.h"

#include "platform/desktop/ActivationToken.h"
#include "platform/desktop/WindowShape.h"
#include "platform/desktop/panel/PanelSheet.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace platform {

using Keyboard = OutputLayer::Keyboard;

LayerPanelSurface::LayerPanelSurface(QWidget& panelWindow, PanelSheet& panelSheet, Handlers all)
    : window(panelWindow), sheet(panelSheet), handlers(std::move(all)) {
  window.setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | OutputLayer::windowFlags());
}

void LayerPanelSurface::open(const QRectF& target, const std::optional<QRectF>& start) {
  sheet.fit(PanelFrame::shadowRoom, true);
  QScreen* screen = QGuiApplication::screenAt(target.center().toPoint());
  if (!screen)
    screen = QGuiApplication::primaryScreen();
  const OutputLayer::Handlers heard{[this](const QSize&) { takeClicks(); }, handlers.keyLost};
  layer.emplace(window, *screen, Keyboard::Here, heard);
  window.windowHandle()->installEventFilter(this);
  moveTo(start.value_or(target), start ? 0 : 1);
  window.show();
  [[maybe_unused]] const QByteArray unneeded = ActivationToken::take();  // a layer has the keyboard anyway
  takeClicks();
  handlers.ready();
}

void LayerPanelSurface::moveTo(const QRectF& place, double opacity) {
  const QPoint room(sheet.margin(), sheet.margin());
  sheet.move(place.topLeft().toPoint() - window.pos() - room);
  sheet.setOpacity(opacity);
  if (isStaying || isDragging)
    takeClicks();
}

void LayerPanelSurface::close() {
  layer.reset();  // before the toolkit ends the window's surface
}

void LayerPanelSurface::setStaying(bool stays) {
  isStaying = stays;
  takeClicks();
  takeKeyboard();
}

void LayerPanelSurface::setDragging(bool drags) {
  isDragging = drags;
  takeClicks();
}

void LayerPanelSurface::takeClicks() {
  if (layer)
    takeClicksOnlyIn(window, isStaying || isDragging ? sheet.panel().translated(sheet.pos()) : window.rect());
}

void LayerPanelSurface::takeKeyboard() {
  if (layer)
    layer->setKeyboard(isStaying && !sheet.underMouse() ? Keyboard::Elsewhere : Keyboard::Here);
}

bool LayerPanelSurface::eventFilter(QObject* watched, QEvent* event) {
  // What is clicked beside a panel that stays nobody tells: so it leaves the keyboard to others, until it is
  // clicked, and then for as long as the pointer is on it.
  if (isStaying && layer) {
    if (event->type() == QEvent::MouseButtonPress)
      layer->setKeyboard(Keyboard::Here);
    else if (event->type() == QEvent::Leave)
      layer->setKeyboard(Keyboard::Elsewhere);
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace platform
