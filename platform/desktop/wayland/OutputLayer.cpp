#include "platform/desktop/wayland/OutputLayer.h"

#include "platform/desktop/wayland/FullScreenWindows.h"
#include "platform/wayland/WaylandConnection.h"

#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace platform {

Qt::WindowFlags OutputLayer::windowFlags() {
  // The toolkit leaves such windows without a role, once it is told to heed the flag.
  qputenv("QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT", "1");
  return Qt::BypassWindowManagerHint;
}

OutputLayer::OutputLayer(QWidget& widget, QScreen& screen, Keyboard first, const Handlers& handlers)
    : window(widget), keyboard(first), isAboveFullScreen(hasFullScreenWindow(screen)) {
  window.setGeometry(screen.geometry());
  window.winId();  // makes it
  QWindow& handle = *window.windowHandle();
  handle.setScreen(&screen);
  const auto resize = [this, resized = handlers.resized](const QSize& size) {
    window.resize(size);
    resized();
  };
  const auto extent =
      isAboveFullScreen ? LayerRole::Extent::WholeOutputAboveFullScreen : LayerRole::Extent::WholeOutput;
  role.emplace(*waylandSurface(handle), waylandOutput(screen), extent,
               LayerRole::Handlers{resize, handlers.closed});
  if (const auto size = role->size())
    window.resize(*size);
  role->setTakesKeyboard(keyboard == Keyboard::Here);
  popups.emplace(handle, role->object());
}

void OutputLayer::setSelecting(bool isSelecting) {
  if (isAboveFullScreen)
    role->setAboveFullScreen(!isSelecting);
}

void OutputLayer::setKeyboard(Keyboard wanted) {
  if (std::exchange(keyboard, wanted) != wanted)
    role->setTakesKeyboard(keyboard == Keyboard::Here);
}

}  // namespace platform
