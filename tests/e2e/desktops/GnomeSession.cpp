#include "tests/e2e/desktops/GnomeSession.h"

#include "tests/support/Waiting.h"

#include <QDir>
#include <QRegularExpression>

#include <linux/input-event-codes.h>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace e2e {

GnomeSession::GnomeSession(XWayland xwayland) {
  setVariable("XDG_CURRENT_DESKTOP", u"GNOME"_s);
  setVariable("GSETTINGS_BACKEND", u"keyfile"_s);
  setVariable("DBUS_SYSTEM_BUS_ADDRESS", busAddress());  // it dies without one
  setVariable("MUTTER_DEBUG_DUMMY_MODE_SPECS", u"%1x%2"_s.arg(size.width()).arg(size.height()));
  write(u".config/glib-2.0/settings/keyfile"_s,
        "[org/gnome/shell]\nenabled-extensions=['ubuntu-appindicators@ubuntu.com']\n"
        "disable-user-extensions=false\nwelcome-dialog-last-shown-version='99'\n"
        "[org/gnome/desktop/notifications]\nshow-banners=false\n");  // such as one on locking the screen
  setVariable("DISPLAY", QString::fromStdString(server.display()));
  QStringList command{u"gnome-shell"_s, u"--wayland"_s, u"--nested"_s, u"--wayland-display"_s, displayName};
  if (xwayland == XWayland::Off)
    command << u"--no-x11"_s;
  Program& shell = add(command);
  setVariable("WAYLAND_DISPLAY", displayName);
  variables.remove(u"DISPLAY"_s);
  if (xwayland == XWayland::On)
    findXDisplay(shell);
  waitForName(u"org.gnome.Shell.Portal"_s);
  add({u"/usr/libexec/xdg-permission-store"_s});
  waitForName(u"org.freedesktop.impl.portal.PermissionStore"_s);
  setScreenshotsAllowed(true);
  startPortal(u"/usr/libexec/xdg-desktop-portal-gnome"_s, u"org.freedesktop.impl.portal.desktop.gnome"_s);
  add({u"/usr/libexec/gsd-media-keys"_s});  // runs what is bound to the user's own hot keys
  // It begins with the overview of all windows.
  (void)settledPicture();
  tapKey(KEY_ESC);
  (void)settledPicture();
}

void GnomeSession::findXDisplay(Program& shell) {
  static const QRegularExpression told(u"Using public X11 display (:[0-9]+)"_s);
  until("GNOME Shell tells where X programs go", [&] {
    const auto match = told.match(QString::fromUtf8(shell.errors() + shell.output()));
    if (match.hasMatch())
      setVariable("DISPLAY", match.captured(1));
    return match.hasMatch();
  });
  // It tells the session's programs how X lets them in.
  const QString runtime = home(u".runtime"_s);
  const QStringList keys = QDir(runtime).entryList({u".mutter-Xwaylandauth.*"_s}, QDir::Files | QDir::Hidden);
  if (keys.isEmpty())
    throw std::runtime_error("GNOME Shell leaves no key to X");
  setVariable("XAUTHORITY", runtime + u'/' + keys.first());
}

void GnomeSession::setScreenshotsAllowed(bool areAllowed) {
  const QString store = u"org.freedesktop.impl.portal.PermissionStore"_s;
  run({u"gdbus"_s, u"call"_s, u"--session"_s, u"--dest"_s, store, u"--object-path"_s,
       u"/org/freedesktop/impl/portal/PermissionStore"_s, u"--method"_s, store + u".SetPermission"_s,
       u"screenshot"_s, u"true"_s, u"screenshot"_s, QString(), areAllowed ? u"['yes']"_s : u"['no']"_s});
}

GnomeSession::~GnomeSession() {
  endDesktop();
}

void GnomeSession::turnButton(bool isDown) {
  if (isDown)
    hand.pressButton(1);
  else
    hand.releaseButton(1);
}

void GnomeSession::turnKey(int evdevCode, bool isDown) {
  if (isDown)
    hand.pressKey(evdevCode);
  else
    hand.releaseKey(evdevCode);
}

}  // namespace e2e
