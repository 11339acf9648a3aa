#include "tests/e2e/Desktop.h"

#include "tests/support/Files.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

const QString dataFolder = QStringLiteral(E2E_DATA_DIR "/");

}  // namespace

Desktop::Desktop(const DesktopOptions& options)
    : server(options.size.width(), options.size.height(), options.depth) {
  setVariable("XDG_SESSION_TYPE", u"x11"_s);
  setVariable("DISPLAY", QString::fromStdString(server.display()));
  if (options.scale != 1)
    setVariable("QT_SCALE_FACTOR", QString::number(options.scale));
  if (options.language == Language::Korean) {
    setVariable("LANG", u"ko_KR.UTF-8"_s);
    setVariable("LANGUAGE", u"ko"_s);
  }
  view = std::make_unique<Screen>(server.display());
  hand = std::make_unique<XTestInput>(server.display());
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
  setVariable("GSETTINGS_BACKEND", u"memory"_s);
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
  setVariable("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", u"1"_s);
  accessibilityBus = start({u"/usr/libexec/at-spi-bus-launcher"_s, u"--launch-immediately"_s});
  const QDBusConnection connection = QDBusConnection::connectToBus(busAddress(), u"assistive"_s);
  until("the bus of the assistive technology is there",
        [&] { return connection.interface()->isServiceRegistered(u"org.a11y.Bus"_s).value(); });
  QDBusConnection::disconnectFromBus(u"assistive"_s);
}

void Desktop::startHangul() {
  setVariable("QT_IM_MODULE", u"ibus"_s);
  setVariable("GSETTINGS_BACKEND", u"keyfile"_s);
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
    host = std::make_unique<StatusNotifierHost>(busAddress());
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

}  // namespace e2e
