#include "tests/e2e/desktops/KWinSession.h"

#include "platform/system/Descriptor.h"
#include "tests/support/Waiting.h"

#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>
#include <QFile>
#include <QFileInfo>

#include <fake-input.h>
#include <linux/input-event-codes.h>
#include <stdexcept>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

constexpr std::uint32_t inputVersion = 4;

}  // namespace

KWinSession::KWinSession()
    : bus(QDBusConnection::connectToBus(busAddress(), u"kwin"_s)),
      input(nullptr, {org_kde_kwin_fake_input_destroy}) {
  setVariable("XDG_CURRENT_DESKTOP", u"KDE"_s);
  setVariable("KWIN_COMPOSE", u"O2"_s);  // only OpenGL tells pixels
  // A copy, where the program's own capabilities are more than its user may have.
  const QString compositor = home(u"kwin_wayland"_s);
  if (!QFile::copy(u"/usr/bin/kwin_wayland"_s, compositor))
    throw std::runtime_error("there is no KWin");
  run({u"kbuildsycoca5"_s});
  setVariable("KWIN_WAYLAND_NO_PERMISSION_CHECKS", u"1"_s);
  setVariable("KWIN_SCREENSHOT_NO_PERMISSION_CHECKS", u"1"_s);
  add({compositor, u"--virtual"_s, u"--width"_s, QString::number(size.width()), u"--height"_s,
       QString::number(size.height()), u"--no-lockscreen"_s, u"--socket"_s, displayName});
  variables.remove(u"KWIN_WAYLAND_NO_PERMISSION_CHECKS"_s);
  variables.remove(u"KWIN_SCREENSHOT_NO_PERMISSION_CHECKS"_s);
  setVariable("WAYLAND_DISPLAY", displayName);
  const QString socket = home(u".runtime/"_s + displayName);
  waitForName(u"org.kde.KWin"_s);
  until("KWin is there", [&] { return QFileInfo::exists(socket); });
  display.reset(wl_display_connect(socket.toLocal8Bit().constData()));
  if (!display)
    throw std::runtime_error("KWin takes no connection");
  until("KWin lets us play its keyboard and pointer", [&] {
    globals = std::make_unique<platform::WaylandGlobals>(display.get());
    input.reset(globals->bind<org_kde_kwin_fake_input>(org_kde_kwin_fake_input_interface, inputVersion));
    return input != nullptr;
  });
  org_kde_kwin_fake_input_authenticate(input.get(), "tests", "a hand at the keyboard and the mouse");
  startPortal(u"/usr/lib/x86_64-linux-gnu/libexec/xdg-desktop-portal-kde"_s,
              u"org.freedesktop.impl.portal.desktop.kde"_s);
}

KWinSession::~KWinSession() {
  QDBusConnection::disconnectFromBus(u"kwin"_s);
  input.reset();
  globals.reset();
  display.reset();
  endDesktop();
}

QImage KWinSession::picture() {
  const platform::Pipe pipe = platform::makePipe();
  QDBusMessage question = QDBusMessage::createMethodCall(u"org.kde.KWin"_s, u"/org/kde/KWin/ScreenShot2"_s,
                                                         u"org.kde.KWin.ScreenShot2"_s, u"CaptureArea"_s);
  question << 0 << 0 << uint(size.width()) << uint(size.height()) << QVariantMap()
           << QVariant::fromValue(QDBusUnixFileDescriptor(pipe.writing.get()));
  const QDBusPendingReply<QVariantMap> answer = bus.asyncCall(question);
  until("KWin has a picture", [&] { return answer.isFinished(); });
  if (answer.isError())
    throw std::runtime_error("KWin gives no picture: " + answer.error().message().toStdString());
  const QVariantMap shape = answer.value();
  // KWin writes them after its answer.
  std::vector<std::uint8_t> bytes(shape[u"stride"_s].toUInt() * shape[u"height"_s].toUInt());
  for (size_t done = 0; done < bytes.size();) {
    const ssize_t more = read(pipe.reading.get(), bytes.data() + done, bytes.size() - done);
    if (more <= 0)
      throw std::runtime_error("KWin's picture has no end");
    done += static_cast<size_t>(more);
  }
  const QImage shown(bytes.data(), shape[u"width"_s].toInt(), shape[u"height"_s].toInt(),
                     shape[u"stride"_s].toInt(), QImage::Format(shape[u"format"_s].toInt()));
  return shown.convertToFormat(QImage::Format_RGB32).copy();
}

void KWinSession::moveTo(QPoint point) {
  org_kde_kwin_fake_input_pointer_motion_absolute(input.get(), wl_fixed_from_int(point.x()),
                                                  wl_fixed_from_int(point.y()));
  roundTrip();
}

void KWinSession::turnButton(bool isDown) {
  org_kde_kwin_fake_input_button(input.get(), BTN_LEFT, isDown ? 1 : 0);
  roundTrip();
}

void KWinSession::turnKey(int evdevCode, bool isDown) {
  org_kde_kwin_fake_input_keyboard_key(input.get(), static_cast<std::uint32_t>(evdevCode), isDown ? 1 : 0);
  roundTrip();
}

void KWinSession::roundTrip() {
  if (wl_display_roundtrip(display.get()) < 0)
    throw std::runtime_error("KWin is gone");
}

}  // namespace e2e
