// What it takes to hear of the hot keys that the desktop and other programs keep, which is asked for while a
// user waits for the answer to a key press; and to find what switches the keyboard's layout, at each start.
// On an X server of its own, by the clock: most of it is waiting for the server and for a tool.

#include "bench/Figures.h"
#include "platform/base/Environment.h"
#include "platform/input/HotKeyService.h"
#include "platform/input/KeyboardLayout.h"
#include "platform/input/SymbolicHotKeys.h"
#include "platform/input/XkbKeymap.h"
#include "platform/x11/X11Connection.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/XvfbServer.h"

#include <QGuiApplication>

namespace {

using namespace Qt::StringLiterals;

constexpr int hotKeys = 200;
constexpr int rounds = 31;

double millisecondsOf(const std::function<void()>& work) {
  return bench::secondsOf(work) * 1000;
}

QByteArray kdeFile() {
  QByteArray text("[kwin]\n");
  for (int number = 0; number < hotKeys; ++number)
    text += "Number " + QByteArray::number(number) + "=Meta+Ctrl+" + char('A' + number % 26) +
            ",none,Something\n";
  return text;
}

QByteArray xfceFile() {
  QByteArray text(
      "<channel><property name=\"xfwm4\" type=\"empty\"><property name=\"default\" type=\"empty\">\n");
  for (int number = 0; number < hotKeys; ++number)
    text += "<property name=\"&lt;Super&gt;F" + QByteArray::number(number % 12 + 1) +
            "\" type=\"string\" value=\"x\"/>\n";
  return text + "</property></property></channel>\n";
}

}  // namespace

int main(int argc, char** argv) {
  const testing_support::XvfbServer server(640, 480);
  const testing_support::ScratchHome home;
  qputenv("DISPLAY", QByteArray::fromStdString(server.display()));
  qputenv("QT_QPA_PLATFORM", "xcb");
  qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
  const QGuiApplication application(argc, argv);
  platform::Environment::provide(platform::HotKeyService::forDesktop());
  platform::Environment::provide(platform::symbolicHotKeysOfDesktop());
  home.write(u".config/kglobalshortcutsrc"_s, kdeFile());
  home.write(u".config/xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml"_s, xfceFile());

  bench::Figures figures(argc, argv);
  for (const char* const desktop : {"none", "KDE", "XFCE", "MATE", "GNOME"})
    figures.add(bench::Amount{std::string("other programs' hot keys, desktop ") + desktop,
                              [desktop] {
                                qputenv("XDG_CURRENT_DESKTOP", desktop);
                                return millisecondsOf([] { (void)platform::copySymbolicHotKeys(); });
                              },
                              "ms", 20, rounds});
  figures.add(bench::Amount{
      "what a key prints",
      [] { return millisecondsOf([] { (void)platform::KeyboardLayout::forDesktop()->translate(0); }); }, "ms",
      2, rounds});
  figures.add(bench::Amount{"what switches the layout",
                            [] {
                              return millisecondsOf([] {
                                const auto keymap = platform::readX11Keymap(platform::x11Connection());
                                (void)platform::modifiersThatSwitchLayout(keymap.get());
                              });
                            },
                            "ms", 5, rounds});
  return figures.run();
}
