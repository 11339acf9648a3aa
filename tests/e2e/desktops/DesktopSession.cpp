#include "tests/e2e/desktops/DesktopSession.h"

#include "tests/support/Waiting.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QElapsedTimer>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

constexpr int dragSteps = 20;
constexpr qint64 stillnessMilliseconds = 500;  // they move slowly without a graphics card
constexpr auto longStart = std::chrono::seconds(60);

}  // namespace

DesktopSession::DesktopSession() {
  setVariable("XDG_SESSION_TYPE", u"wayland"_s);
  setVariable("LIBGL_ALWAYS_SOFTWARE", u"1"_s);
  // Where the program is installed, with the entries that tell KDE what its tools may do.
  setVariable("XDG_DATA_DIRS",
              QStringLiteral(INSTALLED_DIR "/share:") + environment().value(u"XDG_DATA_DIRS"_s));
}

Program& DesktopSession::add(const QStringList& command) {
  programs.push_back(start(command));
  return *programs.back();
}

void DesktopSession::endDesktop() {
  while (!programs.empty())
    programs.pop_back();
  endPrograms();
}

void DesktopSession::startPortal(const QString& backEnd, const QString& service) {
  add({backEnd});
  waitForName(service);
  add({u"/usr/libexec/xdg-desktop-portal"_s});
  waitForName(u"org.freedesktop.portal.Desktop"_s);
}

void DesktopSession::waitForName(const QString& service) const {
  const QDBusConnection bus = QDBusConnection::connectToBus(busAddress(), service);
  until(
      service.toStdString() + " is there",
      [&] { return bus.interface()->isServiceRegistered(service).value(); }, longStart);
  QDBusConnection::disconnectFromBus(service);
}

QImage DesktopSession::settledPicture() {
  QImage last;
  QElapsedTimer since;
  until("the output is still", [&] {
    const QImage now = picture();
    if (now != last)
      since.start();
    last = now;
    return since.elapsed() > stillnessMilliseconds;
  });
  return last;
}

void DesktopSession::tapKey(int evdevCode) {
  turnKey(evdevCode, true);
  turnKey(evdevCode, false);
}

void DesktopSession::drag(QPoint from, QPoint to, const std::function<bool()>& hasArrived) {
  moveTo(from);
  turnButton(true);
  for (int step = 1; step <= dragSteps; ++step)
    moveTo(from + (to - from) * step / dragSteps);
  until("the drag has arrived", [&] {
    moveTo(to - QPoint(1, 0));
    moveTo(to);
    return hasArrived();
  });
  turnButton(false);
}

}  // namespace e2e
