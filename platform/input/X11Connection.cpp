#include "platform/input/X11Connection.h"

#include <QGuiApplication>

namespace platform {

xcb_connection_t* x11Connection() {
  const auto* const application = qGuiApp;
  const auto* const x11 =
      application ? application->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
  return x11 ? x11->connection() : nullptr;
}

}  // namespace platform
