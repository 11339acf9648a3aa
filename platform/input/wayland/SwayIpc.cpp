#include "platform/input/wayland/SwayIpc.h"

#include <QDeadlineTimer>

#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace platform {
namespace {

constexpr char magic[] = "i3-ipc";
constexpr qsizetype magicSize = sizeof magic - 1;
constexpr qsizetype headSize = magicSize + 2 * sizeof(quint32);
constexpr quint32 longestText = 16 << 20;

quint32 numberAt(const QByteArray& bytes, qsizetype place) {
  quint32 number = 0;
  std::memcpy(&number, bytes.constData() + place, sizeof number);
  return number;
}

void append(QByteArray& bytes, quint32 number) {
  bytes.append(reinterpret_cast<const char*>(&number), sizeof number);
}

}  // namespace

Result<std::unique_ptr<SwayIpc>> SwayIpc::connect(const QByteArray& path) {
  sockaddr_un address{};
  if (path.isEmpty() || static_cast<size_t>(path.size()) >= sizeof address.sun_path)
    return Error{QStringLiteral("no place for a socket")};
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, path.constData(), static_cast<size_t>(path.size()));
  Descriptor connected(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (::connect(connected.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
    return Error::fromErrno(errno);
  return std::unique_ptr<SwayIpc>(new SwayIpc(std::move(connected)));
}

SwayIpc::SwayIpc(Descriptor connected)
    : socket(std::move(connected)), notifier(socket.get(), QSocketNotifier::Read) {
  QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [this] { readable(); });
}

void SwayIpc::listen(std::function<void(const Message&)> heard, std::function<void()> ended) {
  onMessage = std::move(heard);
  onEnd = std::move(ended);
}

/// What is sent is short and rare; a compositor that doesn't take it has stopped.
void SwayIpc::send(Type type, const QByteArray& text) {
  QByteArray bytes(magic, magicSize);
  append(bytes, static_cast<quint32>(text.size()));
  append(bytes, static_cast<quint32>(type));
  bytes += text;
  if (::send(socket.get(), bytes.constData(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL) ==
      bytes.size())
    ++open;
}

void SwayIpc::finish(std::chrono::milliseconds patience) {
  notifier.setEnabled(false);
  const QDeadlineTimer deadline(patience);
  pollfd waited{socket.get(), POLLIN, 0};
  while (open > 0 && poll(&waited, 1, static_cast<int>(deadline.remainingTime())) > 0 && fill())
    while (take()) {
    }
}

void SwayIpc::readable() {
  const std::weak_ptr<const bool> mark = living;
  const bool isWhole = fill();
  while (const auto message = take()) {
    if (onMessage)
      onMessage(*message);
    if (mark.expired())
      return;
  }
  if (isWhole)
    return;
  notifier.setEnabled(false);
  if (const auto ended = std::exchange(onEnd, nullptr))
    ended();
}

bool SwayIpc::fill() {
  char part[4096];
  ssize_t count = 0;
  while ((count = recv(socket.get(), part, sizeof part, 0)) > 0)
    received.append(part, count);
  const bool isAtEnd = count == 0 || (errno != EAGAIN && errno != EINTR);
  return !isAtEnd && isInOrder();
}

bool SwayIpc::isInOrder() const {
  return received.size() < headSize ||
         (received.startsWith(magic) && numberAt(received, magicSize) <= longestText);
}

std::optional<SwayIpc::Message> SwayIpc::take() {
  if (received.size() < headSize || !isInOrder())
    return std::nullopt;
  const qsizetype size = headSize + numberAt(received, magicSize);
  if (received.size() < size)
    return std::nullopt;
  const Message message{static_cast<Type>(numberAt(received, magicSize + sizeof(quint32))),
                        received.mid(headSize, size - headSize)};
  received.remove(0, size);
  if (static_cast<quint32>(message.type) < static_cast<quint32>(Type::WorkspaceEvent))
    --open;
  return message;
}

}  // namespace platform
