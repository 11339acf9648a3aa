#include "platform/desktop/WindowFront.h"

#include "platform/base/Locations.h"
#include "platform/desktop/ActivationToken.h"
#include "platform/desktop/wayland/FramePalette.h"
#include "platform/wayland/FrameColors.h"
#include "platform/wayland/WaylandConnection.h"
#include "platform/x11/X11Connection.h"

#include <QFile>
#include <QWidget>

namespace platform {
namespace {

void setText(xcb_connection_t* connection, const QWidget& window, std::string_view property,
             std::string_view type, const QByteArray& text) {
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.internalWinId()),
                      x11Atom(connection, property), x11Atom(connection, type), 8,
                      static_cast<quint32>(text.size()), text.constData());
}

constexpr auto hasDarkFrame = "hasDarkFrame";

void showWithFrame(QWidget& window) {
  if (!waylandDisplay() || !window.property(hasDarkFrame).toBool())
    return window.show();
  // The same colours as in dark.colors.
  QPalette dark(QColor(33, 33, 36));
  dark.setColor(QPalette::WindowText, QColor(236, 233, 227));
  dark.setColor(QPalette::Disabled, QPalette::WindowText, QColor(150, 148, 144));
  const FrameColors colors(dark);
  window.show();
}

}  // namespace

void setDarkFrame(QWidget& window) {
  window.setProperty(hasDarkFrame, true);
  const QByteArray colors = QFile::encodeName(Locations::ownFile(QStringLiteral("dark.colors")));
  setFramePalette(window, colors);
  xcb_connection_t* const connection = x11Connection();
  if (!connection)
    return;
  window.winId();  // from now on there is a window to speak of
  // Two families of window managers, two ways: the name of a variant, and a file with the colours.
  setText(connection, window, "_GTK_THEME_VARIANT", "UTF8_STRING", "dark");
  setText(connection, window, "_KDE_NET_WM_COLOR_SCHEME", "STRING", colors);
}

void bringToFront(QWidget& window) {
  window.setWindowState((window.windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
  showWithFrame(window);
  window.raise();
  askForKeyboard(window);
}

}  // namespace platform
