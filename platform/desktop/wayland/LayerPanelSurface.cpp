#include "platform/desktop/wayland/LayerPanelSurface.h"

#include "platform/desktop/ActivationToken.h"
#include "platform/desktop/panel/PanelSheet.h"
#include "platform/wayland/WaylandConnection.h"

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
  raiseIfHidden();
  [[maybe_unused]] const QByteArray unneeded = ActivationToken::take();  // a layer has the keyboard anyway
  handlers.ready();
}

void LayerPanelSurface::raiseIfHidden() {
  // The compositor asks for the next picture only of what can be seen.
  constexpr std::chrono::milliseconds patience(300);
  seen.reset(wl_surface_frame(waylandSurface(*window.windowHandle())));
  static constexpr wl_callback_listener listener{
      [](void* self, wl_callback*, std::uint32_t) { static_cast<LayerPanelSurface*>(self)->seen.reset(); }};
  wl_callback_add_listener(seen.get(), &listener, this);
  fit();
  raising = MainQueue::main().asyncAfter(patience, [this] {
    if (seen && layer)
      layer->raise();
  });
}

void LayerPanelSurface::close() {
  raising.cancel();
  seen.reset();
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
