#include "platform/base/SingleInstance.h"

#include "platform/base/Locations.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QUrl>

#include <algorithm>
#include <cerrno>
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

constexpr qsizetype longestAction = 64;
constexpr qsizetype longestMessage = 4096;
constexpr char taken = 1;  // the first instance's answer

/// Absent (no family) if the path doesn't fit a socket's address.
sockaddr_un addressOf(const QByteArray& path) {
  sockaddr_un address{};
  if (static_cast<size_t>(path.size()) < sizeof address.sun_path) {
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.constData(), static_cast<size_t>(path.size()));
  }
  return address;
}

Descriptor makeSocket(int flags = 0) {
  // Connected, so that who waits for an answer sees the other one go; in messages, which come whole.
  return Descriptor(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | flags, 0));
}

/// Whether the instance that listens there has taken the message. False at once where none listens, or where
/// it goes without having taken it.
bool deliver(const QByteArray& message, const sockaddr_un& address, std::chrono::milliseconds patience) {
  using std::chrono::duration_cast, std::chrono::seconds, std::chrono::microseconds;
  const auto whole = duration_cast<seconds>(patience);
  const timeval limit{whole.count(), duration_cast<microseconds>(patience - whole).count()};
  const Descriptor connection = makeSocket();
  for (const int waiting : {SO_SNDTIMEO, SO_RCVTIMEO})  // the former holds for connecting, too
    setsockopt(connection.get(), SOL_SOCKET, waiting, &limit, sizeof limit);
  char answer = 0;
  return connect(connection.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
         send(connection.get(), message.constData(), static_cast<size_t>(message.size()), MSG_NOSIGNAL) >=
             0 &&
         recv(connection.get(), &answer, 1, 0) == 1 && answer == taken;
}

}  // namespace

QByteArray encoded(const LaunchRequest& request) {
  const bool fits = request.activationToken.size() < longestMessage - longestAction;
  return request.action + '\0' + (fits ? request.activationToken : QByteArray());
}

std::optional<LaunchRequest> decodedLaunchRequest(const QByteArray& message) {
  const qsizetype end = message.indexOf('\0');
  if (end < 0 || end > longestAction || message.size() > longestMessage ||
      message.indexOf('\0', end + 1) >= 0)
    return std::nullopt;
  const QByteArray action = message.first(end);
  const auto isOfNames = [](char letter) { return (letter >= 'a' && letter <= 'z') || letter == '-'; };
  if (!std::all_of(action.begin(), action.end(), isOfNames))
    return std::nullopt;
  return LaunchRequest{action, message.sliced(end + 1)};
}

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

SingleInstance::SingleInstance(const LaunchRequest& request, std::chrono::milliseconds limit) {
  const QString folder = Locations::runtime();
  QDir().mkpath(folder);
  const QString session =
      sessionName(qEnvironmentVariable("DISPLAY"), qEnvironmentVariable("WAYLAND_DISPLAY"));
  const QByteArray base = QFile::encodeName(folder + u'/') + QUrl::toPercentEncoding(session);
  const QByteArray socketPath = base + ".socket";
  lock = Descriptor(open((base + ".lock").constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (!lock.isOpen())
    return;
  const sockaddr_un address = addressOf(socketPath);
  const QByteArray message = encoded(request);
  const QDeadlineTimer deadline(limit);
  while (flock(lock.get(), LOCK_EX | LOCK_NB) != 0) {
    const std::chrono::milliseconds left(deadline.remainingTime());
    if (address.sun_family != AF_UNIX || left.count() == 0) {
      result = Standing::Unanswered;
      return;
    }
    if (deliver(message, address, left)) {
      result = Standing::Delivered;
      return;
    }
    usleep(10'000);  // it has the lock and doesn't listen yet, or not any more
  }
  listen(socketPath);
}

void SingleInstance::listen(const QByteArray& socketPath) {
  const sockaddr_un address = addressOf(socketPath);
  listener = makeSocket(SOCK_NONBLOCK);
  unlink(socketPath.constData());  // left behind by an instance that was killed; the lock says that it's gone
  if (bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(listener.get(), SOMAXCONN) != 0)
    listener = {};
}

SingleInstance::~SingleInstance() = default;

void SingleInstance::Later::operator()(QSocketNotifier* notifier) const {
  notifier->setEnabled(false);
  notifier->deleteLater();  // it may be the one that is telling just now
}

void SingleInstance::setRequestHandler(std::function<void(const LaunchRequest&)> handler) {
  onRequest = std::move(handler);
  if (notifier || !listener.isOpen())
    return;
  notifier = std::make_unique<QSocketNotifier>(listener.get(), QSocketNotifier::Read);
  QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] { acceptCallers(); });
}

void SingleInstance::acceptCallers() {
  constexpr size_t mostCallers = 256;  // of whom each says what it wants at once, or is none of ours
  for (;;) {
    Descriptor connection(accept4(listener.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (!connection.isOpen())
      return;
    if (callers.size() == mostCallers)
      callers.erase(callers.begin());
    const int number = connection.get();
    auto* const notice = new QSocketNotifier(number, QSocketNotifier::Read);
    QObject::connect(notice, &QSocketNotifier::activated, notice, [this, number] { hear(number); });
    callers.push_back({std::move(connection), std::unique_ptr<QSocketNotifier, Later>(notice)});
  }
}

void SingleInstance::hear(int connection) {
  QByteArray message(longestMessage + 1, Qt::Uninitialized);
  const ssize_t length = recv(connection, message.data(), static_cast<size_t>(message.size()), 0);
  if (length < 0 && (errno == EAGAIN || errno == EINTR))
    return;
  message.truncate(std::max<qsizetype>(length, 0));
  const std::optional<LaunchRequest> request = decodedLaunchRequest(message);
  // Who has gone without waiting for the answer has told his user that nothing happened.
  const bool isAnswered = request && send(connection, &taken, 1, MSG_NOSIGNAL) == 1;
  std::erase_if(callers, [&](const Caller& caller) { return caller.connection.get() == connection; });
  if (isAnswered && onRequest)
    onRequest(*request);
}

}  // namespace platform
