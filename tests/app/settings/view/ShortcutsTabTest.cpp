#include "KeyboardShortcuts/recorder/RecorderCocoa.h"
#include "app/shell/ShortcutNames.h"
#include "platform/input/LayoutSwitch.h"
#include "tests/app/settings/view/SettingsFixture.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;
using namespace sorrel;
using platform::UserDefaults;

namespace {

class ShortcutsTabTest : public SettingsFixture {};

TEST_F(ShortcutsTabTest, ShortcutsThatTheLayoutsSwitchTakesAreNamed) {
  auto& layoutSwitch = platform::LayoutSwitch::current();
  ShortcutNames::openHistory().setShortcut(
      KeyboardShortcuts::Shortcut(KeyboardShortcuts::Key::f5, platform::ModifierFlag::Control));
  open(shortcuts);
  EXPECT_EQ(view->findChildren<KeyboardShortcuts::RecorderCocoa*>().size(), 4);
  EXPECT_FALSE(text().contains(u"layout is switched"_s));
  layoutSwitch.update({platform::HotKeyModifier::Control});
  EXPECT_TRUE(text().contains(u"layout is switched by the modifiers of ⌃F5, so"_s)) << qPrintable(text());
  ShortcutNames::openHistory().setShortcut(std::nullopt);
  clock.run();
  EXPECT_FALSE(text().contains(u"layout is switched"_s));
}

TEST_F(ShortcutsTabTest, WhereTheDesktopKeepsTheKeysItsOwnAreShown) {
  open(shortcuts);
  hotKeys->setState({platform::HotKeyWay::Portal, {{u"openHistory"_s, u"Meta+H"_s}}, {}});
  EXPECT_TRUE(text().contains(u"Meta+H"_s)) << qPrintable(text());
  EXPECT_TRUE(text().contains(u"Not set"_s));
  EXPECT_TRUE(text().contains(u"Your desktop keeps these shortcuts"_s));
  auto* const recorder = view->findChild<KeyboardShortcuts::RecorderCocoa*>();
  EXPECT_FALSE(recorder->isVisible());
  ShortcutNames::captureNormal().setShortcut(std::nullopt);
  clock.run();
  EXPECT_TRUE(recorder->isVisible()) << "the desktop isn't asked for one that was emptied";
}

TEST_F(ShortcutsTabTest, ConsentIsAskedForInTheTabAndCanBeTakenBack) {
  open(shortcuts);
  hotKeys->setState({platform::HotKeyWay::Sway, {}, {u"captureNormal"_s}});
  EXPECT_TRUE(view->findChild<KeyboardShortcuts::RecorderCocoa*>()->isVisible());
  EXPECT_TRUE(text().contains(u"already uses"_s)) << qPrintable(text());
  const auto isAgreed = [] { return UserDefaults::standard().value(platform::hotKeysMayBeBound); };
  auto* const consent = control<QCheckBox>(u"Bind these shortcuts in sway"_s);
  ASSERT_TRUE(consent && consent->isVisible());
  EXPECT_FALSE(consent->isChecked() || isAgreed()) << "nothing happens unasked";
  consent->click();
  EXPECT_TRUE(isAgreed());
  consent->click();
  EXPECT_FALSE(isAgreed());
  hotKeys->setState({platform::HotKeyWay::Gnome, {}, {}});
  EXPECT_TRUE(text().contains(u"GNOME"_s));
}

TEST_F(ShortcutsTabTest, WithoutHotKeysTheCommandsCanBeCopied) {
  open(shortcuts);
  hotKeys->setState({platform::HotKeyWay::Commands, {}, {}});
  EXPECT_TRUE(text().contains(u"Give these commands their keys"_s)) << qPrintable(text());
  auto* const command = control<QPlainTextEdit>(u"Capture to clipboard"_s);
  ASSERT_TRUE(command && command->isVisible());
  EXPECT_TRUE(command->toPlainText().endsWith(u" --capture-to-clipboard"_s))
      << qPrintable(command->toPlainText());
  control<QAbstractButton>(u"Copy Command"_s)->click();
  QCoreApplication::processEvents();
  EXPECT_TRUE(QGuiApplication::clipboard()->text().endsWith(u" --capture"_s));
}

}  // namespace
