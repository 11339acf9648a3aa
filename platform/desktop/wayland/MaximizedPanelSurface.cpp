#include "platform/desktop/wayland/MaximizedPanelSurface.h"

#include "platform/desktop/ActivationToken.h"
#include "platform/desktop/panel/PanelSheet.h"

#include <QEvent>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace platform {

MaximizedPanelSurface::MaximizedPanelSurface(QWidget& panelWindow, PanelSheet& panelSheet, Handlers all)
    : CoveringPanelSurface(panelWindow, panelSheet, std::move(all)) {
  window.setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
}

void MaximizedPanelSurface::open(const QRectF& target, const std::optional<QRectF>& start) {
  window.winId();  // makes it
  window.windowHandle()->installEventFilter(this);
  moveTo(start.value_or(target), start ? 0 : 1);
  window.showMaximized();
  askForKeyboard(window);
}

void MaximizedPanelSurface::setStaying(bool stays) {
  if (stays == isPanelStaying())
    return;
  CoveringPanelSurface::setStaying(stays);
  // For where the pointer is, compositors may go by what was the window's when it came there: the window has
  // to come anew.
  if (isReady) {
    window.hide();
    window.show();
  }
}

QPoint MaximizedPanelSurface::origin() const {
  // Nobody tells. Bars that aren't alone on their side stand above, as a rule, or on the left.
  const QRect screen = window.screen()->geometry();
  return screen.topLeft() +
         QPoint(std::max(screen.width() - window.width(), 0), std::max(screen.height() - window.height(), 0));
}

bool MaximizedPanelSurface::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Expose && window.windowHandle()->isExposed()) {
    fit();  // the size is known by now
    if (!std::exchange(isReady, true))
      handlers.ready();
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace platform
