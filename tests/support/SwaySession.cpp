#include "tests/support/SwaySession.h"

#include "platform/system/Descriptor.h"
#include "platform/wayland/WaylandGlobals.h"
#include "tests/support/Files.h"
#include "tests/support/Waiting.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <grp.h>
#include <pwd.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace testing_support {

namespace {

constexpr qint64 stillnessMilliseconds = 100;
constexpr auto displayName = "wayland-1";  // the first that the compositor tries
// The kinds of messages on its socket.
constexpr quint32 runCommand = 0;
const QHash<QString, quint32> questions{
    {u"get_outputs"_s, 3}, {u"get_tree"_s, 4}, {u"get_inputs"_s, 100}, {u"get_seats"_s, 101}};

QString nameOf(size_t output) {
  return u"HEADLESS-%1"_s.arg(output + 1);
}

QSize pointsOf(const SwayOutput& output) {
  // As the compositor rounds them.
  return {int(output.pixels.width() / output.scale), int(output.pixels.height() / output.scale)};
}

QByteArray configurationOf(const SwayOptions& options, const QString& displayFile) {
  QString text = u"xwayland %1\ndefault_border none\nseat seat0 xcursor_theme invisible\n"_s.arg(
      options.xwayland == XWayland::On ? u"enable"_s : u"disable"_s);
  if (options.xwayland == XWayland::On)
    text += u"exec echo $DISPLAY >%1\n"_s.arg(displayFile);
  for (size_t i = 0; i < options.outputs.size(); ++i) {
    const SwayOutput& output = options.outputs[i];
    text += u"output %1 resolution %2x%3 position %4 %5 scale %6\n"_s.arg(nameOf(i))
                .arg(output.pixels.width())
                .arg(output.pixels.height())
                .arg(output.position.x())
                .arg(output.position.y())
                .arg(output.scale);
  }
  return text.toUtf8() + options.configuration;
}

/// A theme of pointers that can't be seen: without hardware for them the compositor draws them into what an
/// output shows.
QByteArray invisiblePointer() {
  constexpr quint32 size = 24;
  constexpr quint32 image = 0xfffd0002;
  constexpr quint32 words[] = {
      0x72756358, 16,    0x10000, 1, image, size, 28,  // "Xcur"; the table of contents, with one image
      36,         image, size,    1, 1,     1,    0,  0, 0, 0};
  return {reinterpret_cast<const char*>(words), sizeof words};
}

void collectTitles(const QJsonObject& node, QStringList& titles) {
  if (node.contains(u"pid"_s))
    titles << node.value(u"name"_s).toString();
  for (const auto* const children : {"nodes", "floating_nodes"})
    for (const QJsonValue& child : node.value(QLatin1String(children)).toArray())
      collectTitles(child.toObject(), titles);
}

QRect rectangleOf(const QJsonObject& node) {
  const QJsonObject rect = node.value(u"rect"_s).toObject();
  return {rect.value(u"x"_s).toInt(), rect.value(u"y"_s).toInt(), rect.value(u"width"_s).toInt(),
          rect.value(u"height"_s).toInt()};
}

/// All of so many bytes; throws where the other side ends before.
QByteArray readExactly(int socket, qsizetype count) {
  QByteArray bytes(count, '\0');
  for (qsizetype done = 0; done < count;) {
    const ssize_t more = read(socket, bytes.data() + done, size_t(count - done));
    if (more <= 0)
      throw std::runtime_error("the compositor has hung up");
    done += more;
  }
  return bytes;
}

}  // namespace

SwaySession::SwaySession(const SwayOptions& options) : connection(nullptr, wl_display_disconnect) {
  for (const SwayOutput& output : options.outputs)
    space = space.expandedTo(QSize(output.position.x(), output.position.y()) + pointsOf(output));
  startSway(options);
  connectTo(options);
  for (size_t i = 0; i < outputs.size(); ++i) {
    QImage background(options.outputs[i].pixels, QImage::Format_RGB32);
    background.fill(options.outputs[i].background);
    setBackground(background, i);
  }
}

SwaySession::~SwaySession() {
  hand.reset();
  outputs.clear();
  globals.reset();
  connection.reset();
  sway.reset();
  endPrograms();
}

void SwaySession::startSway(const SwayOptions& options) {
  const QString displayFile = home(u".runtime/x11-display"_s);
  const QString configuration = write(u".config/sway/test"_s, configurationOf(options, displayFile));
  for (const auto* const name : {"left_ptr", "default"})
    write(u".icons/invisible/cursors/"_s + QLatin1String(name), invisiblePointer());
  setVariable("XCURSOR_PATH", home(u".icons"_s));
  setVariable("XCURSOR_THEME", u"invisible"_s);
  setVariable("XDG_SESSION_TYPE", u"wayland"_s);
  setVariable("XDG_CURRENT_DESKTOP", u"sway"_s);
  setVariable("SWAYSOCK", commandSocket());
  setVariable("WLR_BACKENDS", u"headless"_s);
  setVariable("WLR_LIBINPUT_NO_DEVICES", u"1"_s);
  setVariable("WLR_RENDERER", u"pixman"_s);
  setVariable("WLR_HEADLESS_OUTPUTS", QString::number(options.outputs.size()));
  sway = start({u"sway"_s, u"--config"_s, configuration});
  for (const auto* const own : {"WLR_BACKENDS", "WLR_LIBINPUT_NO_DEVICES", "WLR_HEADLESS_OUTPUTS"})
    variables.remove(QString::fromLatin1(own));
  setVariable("WAYLAND_DISPLAY", QString::fromLatin1(displayName));
  until("sway is there", [&] {
    if (!sway->isRunning())
      throw std::runtime_error("sway has ended at once: " + sway->errors().toStdString());
    return QFileInfo::exists(commandSocket()) &&
           QFileInfo::exists(home(u".runtime/"_s + QLatin1String(displayName)));
  });
  if (options.xwayland == XWayland::On) {
    until("sway has told where X programs go", [&] { return QFileInfo(displayFile).size() > 0; });
    setVariable("DISPLAY", QString::fromLatin1(contentsOf(displayFile).trimmed()));
  }
}

void SwaySession::connectTo(const SwayOptions& options) {
  const QString path = home(u".runtime/"_s + QLatin1String(displayName));
  connection.reset(wl_display_connect(path.toLocal8Bit().constData()));
  if (!connection)
    throw std::runtime_error("sway takes no connection");
  globals = std::make_unique<platform::WaylandGlobals>(connection.get());
  // They are told in the order in which they were made.
  for (const platform::WaylandGlobals::Global& global : globals->all()) {
    if (global.interface == wl_output_interface.name)
      outputs.push_back(std::make_unique<WaylandOutput>(connection.get(), *globals, global));
  }
  if (outputs.size() != options.outputs.size())
    throw std::runtime_error("sway has other outputs than were wished");
  hand = std::make_unique<WaylandInput>(connection.get(), *globals, options.keyboardLayout);
}

void SwaySession::drag(QPointF from, QPointF to) {
  moveTo(from);
  hand->pressButton(1);
  moveTo((from + to) / 2);
  moveTo(to);
  hand->releaseButton(1);
}

QImage SwaySession::picture(size_t output) const {
  return outputs.at(output)->picture();
}

QImage SwaySession::settledPicture(size_t output) const {
  QImage last;
  QElapsedTimer since;
  until("the output is still", [&] {
    const QImage now = picture(output);
    if (now != last)
      since.start();
    last = now;
    return since.elapsed() > stillnessMilliseconds;
  });
  return last;
}

void SwaySession::setBackground(const QImage& picture, size_t output) {
  outputs.at(output)->setBackground(picture);
  const QImage wanted = picture.convertToFormat(QImage::Format_RGB32);
  until("the output shows its background", [&] {
    const QRect free = freePart(output);
    return this->picture(output).copy(free) == wanted.copy(free);
  });
}

QRect SwaySession::freePart(size_t output) const {
  for (const QJsonValue node : ask(u"get_tree"_s)[u"nodes"_s].toArray()) {
    if (node[u"name"_s] != nameOf(output))
      continue;
    const QRect all = rectangleOf(node.toObject());
    const QRect workspace = rectangleOf(node[u"nodes"_s][0].toObject()).translated(-all.topLeft());
    const double scale = node[u"scale"_s].toDouble();
    return QRectF(QPointF(workspace.topLeft()) * scale, QSizeF(workspace.size()) * scale).toRect();
  }
  throw std::runtime_error("sway knows nothing of an output");
}

void SwaySession::command(const QString& line) const {
  for (const QJsonValue& result : exchange(runCommand, line.toUtf8()).array()) {
    if (!result[u"success"_s].toBool())
      throw std::runtime_error(line.toStdString() + ": " + result[u"error"_s].toString().toStdString());
  }
}

QJsonDocument SwaySession::ask(const QString& question) const {
  return exchange(questions.value(question), {});
}

QStringList SwaySession::windowTitles() const {
  QStringList titles;
  collectTitles(ask(u"get_tree"_s).object(), titles);
  return titles;
}

QJsonDocument SwaySession::exchange(quint32 type, const QByteArray& text) const {
  constexpr char magic[] = "i3-ipc";
  constexpr qsizetype lengthAt = sizeof magic - 1;
  constexpr qsizetype headerSize = lengthAt + 2 * sizeof(quint32);
  const platform::Descriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un address{AF_UNIX, {}};
  qstrncpy(address.sun_path, commandSocket().toLocal8Bit().constData(), sizeof address.sun_path);
  if (connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
    throw std::runtime_error("sway takes no commands");
  const auto number = [](quint32 value) {
    return QByteArray(reinterpret_cast<const char*>(&value), sizeof value);
  };
  const QByteArray message = magic + number(quint32(text.size())) + number(type) + text;
  (void)platform::writeAll(socket.get(), platform::bytesOf({message.constData(), size_t(message.size())}));
  const QByteArray header = readExactly(socket.get(), headerSize);
  quint32 length = 0;
  memcpy(&length, header.constData() + lengthAt, sizeof length);
  return QJsonDocument::fromJson(readExactly(socket.get(), length));
}

void becomeOrdinaryUser() {
  if (geteuid() != 0)
    return;
  const passwd* const nobody = getpwnam("nobody");
  if (!nobody || setgroups(0, nullptr) != 0 ||
      setresgid(nobody->pw_gid, nobody->pw_gid, nobody->pw_gid) != 0 ||
      setresuid(nobody->pw_uid, nobody->pw_uid, nobody->pw_uid) != 0)
    throw std::runtime_error("root can't go on as the user nobody");
  prctl(PR_SET_DUMPABLE, 1);  // compositors look up who their clients are
}

}  // namespace testing_support
