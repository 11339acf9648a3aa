#include "platform/input/Accelerators.h"
#include "platform/input/DesktopHotKeys.h"
#include "platform/input/KdeHotKeys.h"
#include "platform/input/KeyCodes.h"
#include "platform/input/XfceHotKeys.h"
#include "platform/input/XkbKeymap.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

using namespace Qt::StringLiterals;

constexpr qint64 command = 0x100;
constexpr qint64 shift = 0x200;
constexpr qint64 option = 0x800;
constexpr qint64 control = 0x1000;

KeySymbols keyboard(const char* layouts) {
  const XkbContext context(xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES));
  const xkb_rule_names names{"evdev", "pc105", layouts, "", ""};
  const XkbKeymap keymap(xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
  return KeySymbols(keymap.get());
}

TEST(Accelerators, NameAKeyAndItsModifiers) {
  struct {
    QString text;
    int keyCode;
    qint64 modifiers;
  } const rows[] = {
      {u"<Primary><Alt>t"_s, KeyCode::t, control | option},
      {u"<Control><SHIFT>T"_s, KeyCode::t, control | shift},
      {u"<Super>F1"_s, KeyCode::f1, command},
      {u"<Mod4>Page_Up"_s, KeyCode::pageUp, command},
      {u"<Alt>Above_Tab"_s, KeyCode::backtick, option},
      {u"<Super>0x1f"_s, KeyCode::i, command},
      {u"<Super>exclam"_s, KeyCode::one, command | shift},
      {u"<Super>plus"_s, KeyCode::equal, command | shift},
      {u"<Alt>Print"_s, KeyCode::printScreen, option},
      {u"Print"_s, KeyCode::printScreen, 0},
      {u"XF86AudioMute"_s, KeyCode::mute, 0},
      {u"<Super>KP_5"_s, KeyCode::keypad5, command},
      {u"Menu"_s, KeyCode::contextMenu, 0},
      {u"Ctrl+Alt+T"_s, KeyCode::t, control | option},
      {u"Meta+Print"_s, KeyCode::printScreen, command},
      {u"Meta+PgDown"_s, KeyCode::pageDown, command},
      {u"Ctrl+Shift+Esc"_s, KeyCode::escape, control | shift},
      {u"Alt+Shift+Backtab"_s, KeyCode::tab, option | shift},
      {u"Meta++"_s, KeyCode::equal, command | shift},
      {u"Meta+-"_s, KeyCode::minus, command},
      {u"Meta+&"_s, KeyCode::seven, command | shift},
      {u"Ctrl+Num+5"_s, KeyCode::keypad5, control},
      {u"Num++"_s, KeyCode::keypadPlus, 0},
      {u"Volume Up"_s, KeyCode::volumeUp, 0},
      {u"ScrollLock"_s, KeyCode::scrollLock, 0},
  };
  const KeySymbols us = keyboard("us");
  for (const auto& row : rows)
    EXPECT_EQ(parseAccelerator(row.text, us), (SymbolicHotKey{true, row.keyCode, row.modifiers}))
        << qPrintable(row.text);
  for (const QString& none : {u""_s, u"disabled"_s, u"none"_s, u"<Alt>"_s, u"<Alt"_s, u"<>t"_s, u"<Hyper>t"_s,
                              u"<Alt>NoSuchKey"_s, u"<Alt>0xzz"_s, u"<Alt>0xffffffff"_s, u"XF86AudioPlay"_s,
                              u"Ctrl+"_s, u"Hyper+T"_s, u"/org/gnome/custom0/"_s, u"\xD800"_s})

    EXPECT_EQ(parseAccelerator(none, us), std::nullopt) << qPrintable(none);
  EXPECT_EQ(parseAccelerator(u"Print", KeySymbols()), std::nullopt) << "no keyboard to ask";
}

TEST(Accelerators, AreByWhatTheLayoutPrints) {
  EXPECT_EQ(parseAccelerator(u"<Super>z", keyboard("de")), (SymbolicHotKey{true, KeyCode::y, command}));
  EXPECT_EQ(parseAccelerator(u"<Super>less", keyboard("de")),
            (SymbolicHotKey{true, KeyCode::isoKey, command}));
  EXPECT_EQ(parseAccelerator(u"<Super>less", keyboard("us")),
            (SymbolicHotKey{true, KeyCode::isoKey, command}))
      << "before the comma's Shift";
  EXPECT_EQ(parseAccelerator(u"<Super>1", keyboard("fr")),
            (SymbolicHotKey{true, KeyCode::one, command | shift}));
  EXPECT_EQ(parseAccelerator(u"<Super>z", keyboard("ru,us")), (SymbolicHotKey{true, KeyCode::z, command}));
  EXPECT_EQ(parseAccelerator(u"<Super>z", keyboard("ru")), std::nullopt);
}

TEST(DesktopHotKeys, XfceKeepsTheUsersInPlaceOfTheDefaults) {
  const QByteArray system = R"(<?xml version="1.0"?>
    <channel name="xfce4-keyboard-shortcuts" version="1.0">
      <property name="commands" type="empty"><property name="default" type="empty">
        <property name="&lt;Alt&gt;F2" type="string" value="finder"><property name="startup-notify" type="bool" value="true"/></property>
        <property name="&lt;Alt&gt;F3" type="string" value=""/>
      </property></property>
      <property name="xfwm4" type="empty"><property name="default" type="empty">
        <property name="&lt;Alt&gt;F4" type="string" value="close_window_key"/>
        <property name="Escape" type="string" value="cancel_key"/>
      </property></property>
    </channel>)";
  const QByteArray user = R"(<channel><property name="commands" type="empty">
      <property name="default" type="empty"><property name="&lt;Alt&gt;F2" type="empty"/></property>
      <property name="custom" type="empty">
        <property name="&lt;Super&gt;r" type="string" value="finder"/>
        <property name="override" type="bool" value="true"/>
      </property></property>)";
  EXPECT_EQ(xfceAccelerators(system, {}), QStringList({u"<Alt>F2"_s, u"<Alt>F4"_s}));
  EXPECT_EQ(xfceAccelerators(system, user + "</channel>"), QStringList({u"<Super>r"_s, u"<Alt>F4"_s}));
  EXPECT_EQ(xfceAccelerators(system, user + "</property>"), QStringList({u"<Super>r"_s, u"<Alt>F4"_s}))
      << "broken";
  EXPECT_EQ(xfceAccelerators("<<<", QByteArray("\0\xFF", 2)), QStringList());
}

TEST(DesktopHotKeys, KdeListsThoseInUseFirst) {
  EXPECT_EQ(
      kdeAccelerators("[kwin]\n"
                      "_k_friendly_name=KWin\n"
                      "Close=Alt+F4,Alt+F4,Close Window\r\n"
                      "Overview=Meta+W\\tMeta+Tab,Meta+W,Overview\n"
                      "Comma=Meta+\\\\,,none,With a comma\n"
                      "Off=none,Meta+Q,Switched off\n"
                      "Empty=,,\n"
                      "# Comment=Meta+C\n"
                      "=Meta+X\n"
                      "no equals sign\n"
                      "[services][terminal.desktop]\n"
                      "_launch=Ctrl+Alt+T\n"
                      "Cut=Meta+\\"),
      QStringList({u"Alt+F4"_s, u"Meta+W"_s, u"Meta+Tab"_s, u"Meta+,"_s, u"Ctrl+Alt+T"_s, u"Meta+\\"_s}));
}

TEST(DesktopHotKeys, SessionNamesTellTheDesktop) {
  EXPECT_EQ(hotKeyDesktop(u"ubuntu:GNOME"_s), HotKeyDesktop::Gnome);
  EXPECT_EQ(hotKeyDesktop(u"X-Cinnamon"_s), HotKeyDesktop::Cinnamon);
  EXPECT_EQ(hotKeyDesktop(u"Budgie:GNOME"_s), HotKeyDesktop::Gnome);
  EXPECT_EQ(hotKeyDesktop(u"openbox"_s), HotKeyDesktop::None);
  EXPECT_EQ(hotKeyDesktop(u""_s), HotKeyDesktop::None);
}

}  // namespace
}  // namespace platform
