#include "tests/e2e/Desktop.h"

#include "tests/e2e/Waiting.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <signal.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>

namespace e2e {
namespace {

const QString dataFolder = QStringLiteral(E2E_DATA_DIR "/");

/// Nothing of the user's own session passes, only what a program needs to be found and to be examined.
QProcessEnvironment environmentOf(const QString& home, const QString& display, Language language) {
  const QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
  QProcessEnvironment variables;
  for (const auto* kept : {"PATH", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"}) {
    const QString name = QString::fromLatin1(kept);
    if (own.contains(name))
      variables.insert(name, own.value(name));
  }
  const auto set = [&](const char* name, const QString& value) {
    variables.insert(QString::fromLatin1(name), value);
  };
  set("HOME", home);
  set("XDG_CONFIG_HOME", home + QStringLiteral("/.config"));
  set("XDG_DATA_HOME", home + QStringLiteral("/.local/share"));
  set("XDG_CACHE_HOME", home + QStringLiteral("/.cache"));
  set("XDG_RUNTIME_DIR", home + QStringLiteral("/.runtime"));
  set("XDG_DATA_DIRS", dataFolder + QStringLiteral(":/usr/local/share:/usr/share"));
  set("XDG_SESSION_TYPE", QStringLiteral("x11"));
  set("DISPLAY", display);
  set("FONTCONFIG_FILE", dataFolder + QStringLiteral("fonts.conf"));
  set("NO_AT_BRIDGE", QStringLiteral("1"));
  const bool isKorean = language == Language::Korean;
  set("LANG", isKorean ? QStringLiteral("ko_KR.UTF-8") : QStringLiteral("en_US.UTF-8"));
  set("LANGUAGE", isKorean ? QStringLiteral("ko") : QStringLiteral("en"));
  return variables;
}

/// Ends all processes below this one, also those whose own parent has ended before them.
void endDescendants() {
  for (;;) {
    const QList<qint64> children = childrenOf(getpid());
    if (children.isEmpty())
      return;
    for (const qint64 child : children) {
      kill(static_cast<pid_t>(child), SIGKILL);
      waitpid(static_cast<pid_t>(child), nullptr, 0);
    }
  }
}

}  // namespace

Desktop::Desktop(const DesktopOptions& options)
    : server(options.size.width(), options.size.height(), options.depth),
      variables(environmentOf(folder.path(), QString::fromStdString(server.display()), options.language)) {
  prctl(PR_SET_CHILD_SUBREAPER, 1);
  QDir(home()).mkdir(QStringLiteral(".runtime"));
  QFile::setPermissions(home(QStringLiteral(".runtime")),
                        QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  view = std::make_unique<Screen>(QString::fromStdString(server.display()));
  hand = std::make_unique<testing_support::XTestInput>(server.display());
  startBus();
  startWindowManager();
  startTray(options.tray);
}

Desktop::~Desktop() {
  host.reset();
  tray.reset();
  windowManager.reset();
  hand.reset();
  view.reset();
  server.kill();
  bus.reset();
  endDescendants();
}

void Desktop::startBus() {
  bus = start({QStringLiteral("dbus-daemon"), QStringLiteral("--nofork"), QStringLiteral("--print-address"),
               QStringLiteral("--config-file"), dataFolder + QStringLiteral("bus.conf")});
  until("the bus tells its address", [this] { return bus->output().endsWith('\n'); });
  address = QString::fromLatin1(bus->output().trimmed());
  variables.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address);
}

void Desktop::startWindowManager() {
  // It takes the screen over well before it takes care of windows; a window opened in between is lost. What
  // it starts itself comes after that.
  windowManager = start({QStringLiteral("openbox"), QStringLiteral("--sm-disable"),
                         QStringLiteral("--config-file"), dataFolder + QStringLiteral("openbox.xml"),
                         QStringLiteral("--startup"), QStringLiteral("echo ready")});
  until("the window manager is there", [this] { return windowManager->output().contains("ready"); });
}

void Desktop::startTray(Tray kind) {
  if (kind == Tray::StatusNotifier)
    host = std::make_unique<StatusNotifierHost>(address);
  if (kind != Tray::XEmbedAtTop && kind != Tray::XEmbedAtBottom)
    return;
  const QString edge = kind == Tray::XEmbedAtTop ? QStringLiteral("top") : QStringLiteral("bottom");
  tray = start(QStringLiteral("trayer --edge %1 --align right --widthtype percent --width 100 --height 28 "
                              "--SetDockType true --SetPartialStrut true --expand true "
                              "--transparent true --alpha 0 --tint 0x2E3440")
                   .arg(edge)
                   .split(u' '));
  until("the tray is there", [this] {
    return view->isSelectionOwned("_NET_SYSTEM_TRAY_S0") && view->find(QStringLiteral("trayer"));
  });
}

std::unique_ptr<Program> Desktop::start(const QStringList& command) const {
  return std::make_unique<Program>(command, variables);
}

QByteArray Desktop::run(const QStringList& command) const {
  const std::unique_ptr<Program> program = start(command);
  if (program->waitForEnd() != 0)
    throw std::runtime_error(command.first().toStdString() + " failed: " + program->errors().toStdString());
  return program->output();
}

QString Desktop::home(const QString& relative) const {
  return relative.isEmpty() ? folder.path() : folder.filePath(relative);
}

QString Desktop::write(const QString& relative, const QByteArray& contents) const {
  const QString path = home(relative);
  QDir().mkpath(QFileInfo(path).path());
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
    throw std::runtime_error("can't write " + path.toStdString());
  return path;
}

}  // namespace e2e
