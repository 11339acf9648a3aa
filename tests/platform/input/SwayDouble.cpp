#include "tests/platform/input/SwayDouble.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>

#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace testing_support {
namespace {

const QByteArray magic("i3-ipc");
constexpr qsizetype headSize = 14;
constexpr quint32 eventBit = 0x80000000;

QByteArray json(const QJsonObject& object) {
  return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

}  // namespace

SwayDouble::SwayDouble() : path(QFile::encodeName(folder.filePath(u"sway.sock"_s))) {
  listening = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, path.constData(), static_cast<size_t>(path.size()));
  bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address);
  listen(listening, 1);
  arrival = std::make_unique<QSocketNotifier>(listening, QSocketNotifier::Read);
  QObject::connect(arrival.get(), &QSocketNotifier::activated, arrival.get(), [this] { accept(); });
}

SwayDouble::~SwayDouble() {
  hangUp();
  arrival.reset();
  close(listening);
}

void SwayDouble::accept() {
  hangUp();
  connected = ::accept4(listening, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
  reading = std::make_unique<QSocketNotifier>(connected, QSocketNotifier::Read);
  QObject::connect(reading.get(), &QSocketNotifier::activated, reading.get(), [this] { read(); });
}

void SwayDouble::hangUp() {
  reading.reset();
  if (connected >= 0)
    close(connected);
  connected = -1;
  received.clear();
}

void SwayDouble::read() {
  char part[512];
  ssize_t count = 0;
  while ((count = recv(connected, part, sizeof part, 0)) > 0)
    received.append(part, count);
  if (count == 0)
    reading->setEnabled(false);
  while (received.size() >= headSize) {
    quint32 size = 0, type = 0;
    std::memcpy(&size, received.constData() + 6, sizeof size);
    std::memcpy(&type, received.constData() + 10, sizeof type);
    if (received.size() < headSize + size)
      return;
    const QByteArray text = received.mid(headSize, size);
    received.remove(0, headSize + size);
    answer(type, text);
  }
}

void SwayDouble::answer(quint32 type, const QByteArray& text) {
  if (type == 0)
    run(QString::fromUtf8(text));
  if (type == 7)
    send(type, json({{u"loaded_config_file_name"_s, folder.filePath(u"config"_s)}}));
  else if (type == 9)
    send(type, json({{u"config"_s, QString::fromUtf8(configuration)}}));
  else
    send(type, R"([{"success":true}])");
}

void SwayDouble::run(const QString& command) {
  QStringList words = command.split(u' ');
  const QString verb = words.takeFirst();
  words.removeAll(u"--no-warn"_s);
  QString keys = words.takeFirst();
  if (keys == u"--release")
    keys += u' ' + words.takeFirst();
  if (verb == u"bindcode")
    bindings.insert(keys, words.join(u' '));
  else if (verb == u"unbindcode")
    bindings.remove(keys);
}

void SwayDouble::send(quint32 type, const QByteArray& text) {
  const auto size = static_cast<quint32>(text.size());
  QByteArray bytes = magic;
  bytes.append(reinterpret_cast<const char*>(&size), sizeof size);
  bytes.append(reinterpret_cast<const char*>(&type), sizeof type);
  bytes += text;
  // In two parts, as it may come.
  sendJunk(bytes.first(9));
  sendJunk(bytes.sliced(9));
}

void SwayDouble::sendJunk(const QByteArray& bytes) {
  [[maybe_unused]] const auto sent =
      ::send(connected, bytes.constData(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL);
}

void SwayDouble::sendEvent(quint32 type, const QByteArray& text) {
  send(eventBit | type, text);
}

void SwayDouble::reload() {
  bindings.clear();
  sendEvent(0, json({{u"change"_s, u"reload"_s}}));
}

void SwayDouble::press(const QString& keys) {
  sendEvent(
      5, json({{u"change"_s, u"run"_s}, {u"binding"_s, QJsonObject{{u"command"_s, bindings.value(keys)}}}}));
}

}  // namespace testing_support
