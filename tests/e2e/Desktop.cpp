#include "tests/e2e/Desktop.h"

#include "tests/support/Files.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <signal.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

const QString dataFolder = QStringLiteral(E2E_DATA_DIR "/");

/// Nothing of the user's own session passes, only what a program needs to be found and to be examined.
QProcessEnvironment environmentOf(const QString& home, const QString& display,
                                  const DesktopOptions& options) {
  const QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
  QProcessEnvironment variables;
  for (const auto* kept : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"}) {
    const QString name = QString::fromLatin1(kept);
    if (own.contains(name))
      variables.insert(name, own.value(name));
  }
  const auto set = [&](const char* name, const QString& value) {
    variables.insert(QString::fromLatin1(name), value);
  };
  set("HOME", home);
  // A test puts its doubles of programs there.
  set("PATH", home + u"/.local/bin:"_s + own.value(u"PATH"_s));
  set("XDG_CONFIG_HOME", home + u"/.config"_s);
  set("XDG_DATA_HOME", home + u"/.local/share"_s);
  set("XDG_CACHE_HOME", home + u"/.cache"_s);
  set("XDG_RUNTIME_DIR", home + u"/.runtime"_s);
  set("XDG_DATA_DIRS", dataFolder + u":/usr/local/share:/usr/share"_s);
  set("XDG_SESSION_TYPE", u"x11"_s);
  set("DISPLAY", display);
  set("FONTCONFIG_FILE", dataFolder + u"fonts.conf"_s);
  set("NO_AT_BRIDGE", u"1"_s);
  if (options.scale != 1)
    set("QT_SCALE_FACTOR", QString::number(options.scale));
  const bool isKorean = options.language == Language::Korean;
  set("LANG", isKorean ? u"ko_KR.UTF-8"_s : u"en_US.UTF-8"_s);
  set("LANGUAGE", isKorean ? u"ko"_s : u"en"_s);
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
      variables(environmentOf(folder.path(), QString::fromStdString(server.display()), options)) {
  prctl(PR_SET_CHILD_SUBREAPER, 1);
  QDir(home()).mkdir(u".runtime"_s);
  QFile::setPermissions(home(u".runtime"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  view = std::make_unique<Screen>(server.display());
  hand = std::make_unique<XTestInput>(server.display());
  startBus();
  if (options.windowManager == WindowManager::Marco)
    startMarco();
  else
    startOpenbox(options.newWindows);
  if (options.compositor == Compositor::Running)
    startCompositor();
  startTray(options.tray);
  if (options.assistiveTechnology == AssistiveTechnology::Listening)
    startAssistiveTechnology();
  if (options.inputMethod == InputMethod::Hangul)
    startHangul();
}

Desktop::~Desktop() {
  host.reset();
  inputMethod.reset();
  accessibilityBus.reset();
  tray.reset();
  compositor.reset();
  windowManager.reset();
  hand.reset();
  view.reset();
  server.kill();
  bus.reset();
  endDescendants();
}

void Desktop::startBus() {
  bus = std::make_unique<PrivateBus>(variables);
  variables.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus->address());
}

void Desktop::startOpenbox(NewWindows newWindows) {
  QByteArray text = testing_support::contentsOf(dataFolder + u"openbox.xml"_s);
  if (newWindows == NewWindows::MustAsk)
    text.replace("<keyboard/>", "<focus><focusNew>no</focusNew></focus><keyboard/>");
  // It takes the screen over well before it takes care of windows; a window opened in between is lost. What
  // it starts itself comes after that.
  windowManager = start({u"openbox"_s, u"--sm-disable"_s, u"--config-file"_s,
                         write(u".config/openbox.xml"_s, text), u"--startup"_s, u"echo ready"_s});
  until("the window manager is there", [this] { return windowManager->output().contains("ready"); });
}

void Desktop::startMarco() {
  variables.insert(u"GSETTINGS_BACKEND"_s, u"memory"_s);
  windowManager = start({u"marco"_s, u"--sm-disable"_s, u"--no-composite"_s});
  until("the window manager is there",
        [this] { return view->hasProperty(view->root(), "_NET_SUPPORTING_WM_CHECK"); });
}

void Desktop::startCompositor() {
  compositor = start(u"picom --backend xrender --config /dev/null"_s.split(u' '));
  until("the compositor is there", [this] { return view->isSelectionOwned("_NET_WM_CM_S0"); });
}

void Desktop::stopCompositor() {
  compositor.reset();
  until("the compositor is gone", [this] { return !view->isSelectionOwned("_NET_WM_CM_S0"); });
}

void Desktop::startAssistiveTechnology() {
  variables.insert(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s);
  accessibilityBus = start({u"/usr/libexec/at-spi-bus-launcher"_s, u"--launch-immediately"_s});
  const QDBusConnection connection = QDBusConnection::connectToBus(bus->address(), u"assistive"_s);
  until("the bus of the assistive technology is there",
        [&] { return connection.interface()->isServiceRegistered(u"org.a11y.Bus"_s).value(); });
  QDBusConnection::disconnectFromBus(u"assistive"_s);
}

void Desktop::startHangul() {
  variables.insert(u"QT_IM_MODULE"_s, u"ibus"_s);
  variables.insert(u"GSETTINGS_BACKEND"_s, u"keyfile"_s);
  write(u".config/glib-2.0/settings/keyfile"_s,
        "[org/freedesktop/ibus/engine/hangul]\ninitial-input-mode='hangul'\n\n"
        "[desktop/ibus/general]\npreload-engines=['hangul']\n");
  inputMethod = start(u"ibus-daemon --panel=disable --emoji-extension=disable"_s.split(u' '));
  until("the input method is there",
        [this] { return start(u"timeout 5 ibus engine hangul"_s.split(u' '))->waitForEnd() == 0; });
}

void Desktop::leaveHangul() {
  run({u"ibus"_s, u"engine"_s, u"xkb:us::eng"_s});
}

void Desktop::changeTray(Tray kind) {
  host.reset();
  tray.reset();
  if (bar)
    view->closeWindow(std::exchange(bar, 0));
  startTray(kind);
}

void Desktop::startTray(Tray kind) {
  if (kind == Tray::StatusNotifier) {
    QImage grey(view->size().width(), statusNotifierBarHeight, QImage::Format_RGB32);
    grey.fill(Qt::darkGray);
    bar = view->openWindow(u"bar"_s, {}, grey, WindowKind::Bar);
    host = std::make_unique<StatusNotifierHost>(bus->address());
  }
  if (kind != Tray::XEmbedAtTop && kind != Tray::XEmbedAtBottom)
    return;
  const QString edge = kind == Tray::XEmbedAtTop ? u"top"_s : u"bottom"_s;
  tray = start(QStringLiteral("trayer --edge %1 --align right --widthtype percent --width 100 --height 28 "
                              "--SetDockType true --SetPartialStrut true --expand true "
                              "--transparent true --alpha 0 --tint 0x2E3440")
                   .arg(edge)
                   .split(u' '));
  until("the tray is there",
        [this] { return view->isSelectionOwned("_NET_SYSTEM_TRAY_S0") && view->find(u"trayer"_s); });
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
  testing_support::writeFile(path, contents);
  return path;
}

}  // namespace e2e
