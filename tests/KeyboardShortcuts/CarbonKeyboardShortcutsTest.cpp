#include "KeyboardShortcuts/CarbonKeyboardShortcuts.h"
#include "tests/KeyboardShortcuts/Fixture.h"

namespace KeyboardShortcuts {
namespace {

using Keys = platform::HotKeyService::Keys;

class CarbonTest : public ShortcutsTest {
 protected:
  void registerLogged(const Shortcut& shortcut) {
    CarbonKeyboardShortcuts::registerShortcut(
        shortcut, Name(u"slot"_s, std::nullopt, {u"What it does"_s, u"--do-it"_s}),
        [this](const Shortcut& pressed) { heard << pressed.carbonKeyCode(); },
        [this](const Shortcut& released) { heard << -released.carbonKeyCode() - 1; });
  }
  /// Sends a key to the menu that is open, while caps lock is on.
  KeyOutcome typeIntoMenu(KeyAction action, const Shortcut& shortcut) {
    return service->sendRaw(action, static_cast<quint32>(shortcut.carbonKeyCode()),
                            static_cast<quint32>(shortcut.carbonModifiers()) | 0x400);
  }

  QList<qint64> heard;
};

TEST_F(CarbonTest, OneHandlerServesAllHotKeysAndLeavesForeignOnes) {
  registerLogged(shortcutS);
  registerLogged(shortcutD);
  EXPECT_EQ(service->installations, 1);
  EXPECT_EQ(service->live.begin()->second.name, u"slot"_s);
  EXPECT_EQ(service->live.begin()->second.text, u"What it does"_s);
  EXPECT_EQ(service->live.begin()->second.option, u"--do-it"_s);
  press(shortcutS);
  press(shortcutD);
  release(shortcutD);
  EXPECT_EQ(heard, (QList<qint64>{1, 2, -3}));
  for (const auto& foreign : {platform::HotKeyId{0x12345678, 1}, platform::HotKeyId{0x53534B53, 99}})
    EXPECT_EQ(service->handler.onHotKey({KeyAction::Press, foreign}), KeyOutcome::Passed);
  EXPECT_EQ(heard.size(), 3);
}

TEST_F(CarbonTest, RefusalIsLoggedAndBurnsItsId) {
  service->refusedKeyCodes = {1};
  registerLogged(shortcutS);
  registerLogged({-1, 0});
  registerLogged({qint64{1} << 32, 0});
  registerLogged({Key::space, ModifierFlag::Option});
  EXPECT_EQ(log.printed, (QStringList{u"Error registering hotkey ⌥⇧\uFFFD: -9878"_s,
                                      u"Error registering hotkey \uFFFD: -9879"_s,
                                      u"Error registering hotkey \uFFFD: -9879"_s}));
  ASSERT_EQ(service->live.size(), 1U);
  EXPECT_EQ(service->live.begin()->second.id, (platform::HotKeyId{0x53534B53, 4}));
}

TEST_F(CarbonTest, WhatFailedIsTriedAgain) {
  service->installs = false;
  registerLogged(shortcutS);
  EXPECT_EQ(service->listening, Keys::None);
  service->installs = true;
  registerLogged(shortcutD);
  EXPECT_EQ(press(shortcutS), KeyOutcome::Taken);
  setIsEnabled(false);
  service->refusedKeyCodes = {1};
  setIsEnabled(true);
  EXPECT_EQ(log.printed.size(), 1);
  EXPECT_EQ(press(shortcutD), KeyOutcome::Taken);
  service->refusedKeyCodes.clear();
  setIsEnabled(false);
  setIsEnabled(true);
  EXPECT_EQ(press(shortcutS), KeyOutcome::Taken);
}

TEST_F(CarbonTest, OpenMenuIsHeardThroughRawKeys) {
  initialize();
  registerLogged(shortcutS);
  const auto id = service->live.begin()->second.id;
  setMenuOpen(true);
  EXPECT_TRUE(service->live.empty());
  EXPECT_EQ(typeIntoMenu(KeyAction::Press, shortcutS), KeyOutcome::Taken);
  EXPECT_EQ(typeIntoMenu(KeyAction::Release, shortcutS), KeyOutcome::Taken);
  EXPECT_EQ(typeIntoMenu(KeyAction::Press, shortcutD), KeyOutcome::Passed);
  EXPECT_EQ(typeIntoMenu(KeyAction::Press, {Key::s, ModifierFlag::Option}), KeyOutcome::Passed);
  EXPECT_EQ(heard, (QList<qint64>{1, -2}));
  setIsEnabled(false);
  setMenuOpen(false);
  setMenuOpen(true);
  EXPECT_EQ(service->listening, Keys::None) << "switched off, whatever menus do";
  setIsEnabled(true);
  EXPECT_EQ(service->listening, Keys::Raw);
  setMenuOpen(false);
  EXPECT_EQ(service->listening, Keys::Grabbed);
  ASSERT_EQ(service->live.size(), 1U);
  EXPECT_EQ(service->live.begin()->second.id, id);
  EXPECT_EQ(press(shortcutS), KeyOutcome::Taken);
}

TEST_F(CarbonTest, TheProgramsEndGivesTheKeysBack) {
  registerLogged(shortcutS);
  home.restart();
  EXPECT_TRUE(service->live.empty());
  EXPECT_EQ(service->listening, Keys::None);
}

}  // namespace
}  // namespace KeyboardShortcuts
