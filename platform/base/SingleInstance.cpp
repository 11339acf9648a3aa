#include "platform/base/SingleInstance.h"

#include "platform/base/Locations.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QUrl>

#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace platform {
namespace {

QString runtimeFolder() {
  return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + u'/';
}

/// Absent (no family) if the path doesn't fit a socket's address.
sockaddr_un addressOf(const QByteArray& path) {
  sockaddr_un address{};
  if (static_cast<size_t>(path.size()) < sizeof address.sun_path) {
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.constData(), static_cast<size_t>(path.size()));
  }
  return address;
}

void ring(const QByteArray& socketPath) {
  const sockaddr_un address = addressOf(socketPath);
  const Descriptor descriptor(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  // Without an answer: an instance that is just starting or ending hears nothing, and needs nothing.
  const char anything = 0;
  sendto(descriptor.get(), &anything, 1, 0, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

}  // namespace

QString SingleInstance::sessionName(const QString& display, const QString& waylandDisplay) {
  if (!waylandDisplay.isEmpty()) {
    const QString folder = runtimeFolder();  // which a name without a folder is meant in
    return waylandDisplay.startsWith(folder) ? waylandDisplay.sliced(folder.size()) : waylandDisplay;
  }
  // "protocol/host:display.screen", of which only the display must be there
  static const QRegularExpression form(QStringLiteral("^(?:([^/]*)/)?(.*):([0-9]+)(?:[.][0-9]+)?$"));
  const auto match = form.match(display);
  if (!match.hasMatch())
    return display;
  const QString unix = QStringLiteral("unix"), host = match.captured(2).toLower();
  // "localhost" is another matter: where the screen of a remote session is passed on, it has such a name.
  const bool isLocal = host.isEmpty() || host == unix || match.captured(1) == unix;
  return (isLocal ? QString() : host) + u':' + match.captured(3);
}

SingleInstance::SingleInstance() {
  const QString folder = Locations::runtime();
  QDir().mkpath(folder);
  const QString session =
      sessionName(qEnvironmentVariable("DISPLAY"), qEnvironmentVariable("WAYLAND_DISPLAY"));
  const QByteArray base = QFile::encodeName(folder + u'/') + QUrl::toPercentEncoding(session);
  const QByteArray socketPath = base + ".socket";
  lock = Descriptor(open((base + ".lock").constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (!lock.isOpen())
    return;
  if (flock(lock.get(), LOCK_EX | LOCK_NB) != 0) {
    first = false;
    ring(socketPath);
    return;
  }
  listen(socketPath);
}

void SingleInstance::listen(const QByteArray& socketPath) {
  const sockaddr_un address = addressOf(socketPath);
  bell = Descriptor(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  unlink(socketPath.constData());  // left behind by an instance that was killed; the lock says that it's gone
  if (bind(bell.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
    return;
  notifier = std::make_unique<QSocketNotifier>(bell.get(), QSocketNotifier::Read);
  QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] {
    char anything;
    while (recv(bell.get(), &anything, 1, 0) >= 0) {
    }
    if (onRung)
      onRung();
  });
}

SingleInstance::~SingleInstance() = default;

void SingleInstance::setRungHandler(std::function<void()> handler) {
  onRung = std::move(handler);
}

}  // namespace platform
