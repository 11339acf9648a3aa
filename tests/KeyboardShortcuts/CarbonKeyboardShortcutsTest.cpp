#include "KeyboardShortcuts/CarbonKeyboardShortcuts.h"
#include "tests/KeyboardShortcuts/Fixture.h"

namespace KeyboardShortcuts {
namespace {

using platform::Event;
using platform::EventType;
using platform::HotKeyEvent;
using platform::HotKeyEventKind;
namespace Statuses = platform::HotKeyStatuses;

/// Runs for both ways in which a system lets keys be heard under a menu.
class CarbonTest : public ShortcutsTest, public ::testing::WithParamInterface<int> {
 protected:
  CarbonTest() {
    service->version = {GetParam(), 0};
    initialize();
  }

  void registerLogged(const Shortcut& shortcut) {
    CarbonKeyboardShortcuts::registerShortcut(
        shortcut, [this](const Shortcut& pressed) { heard << pressed.carbonKeyCode(); },
        [this](const Shortcut& released) { heard << -released.carbonKeyCode() - 1; });
  }
  [[nodiscard]] bool hearsRawKeys() const {
    return GetParam() >= 14
               ? service->runLoop.observers.size() == 1
               : service->types == std::set{HotKeyEventKind::RawKeyDown, HotKeyEventKind::RawKeyUp};
  }
  /// Sends a key to the menu that is open; true if the menu got it.
  bool typeIntoMenu(EventType type, const Shortcut& shortcut) {
    if (GetParam() >= 14) {
      service->runLoop.queue = {
          Event{type, static_cast<int>(shortcut.carbonKeyCode()), shortcut.modifiers()}};
      service->runLoop.pass();
      return !service->runLoop.queue.empty();
    }
    HotKeyEvent event;
    event.kind = type == EventType::KeyDown ? HotKeyEventKind::RawKeyDown : HotKeyEventKind::RawKeyUp;
    event.keyCode = static_cast<quint32>(shortcut.carbonKeyCode());
    event.modifiers = static_cast<quint32>(shortcut.carbonModifiers()) | 0x400;  // caps lock is on
    return service->send(event) != Statuses::noError;
  }

  QList<qint64> heard;
};

INSTANTIATE_TEST_SUITE_P(Versions, CarbonTest, ::testing::Values(13, 14));

TEST_P(CarbonTest, OneHandlerServesAllHotKeys) {
  CarbonKeyboardShortcuts::updateEventHandler();
  EXPECT_TRUE(service->types.empty());
  registerLogged(shortcutS);
  registerLogged(shortcutD);
  EXPECT_EQ(service->installations, 1);
  press(shortcutS);
  press(shortcutD);
  release(shortcutD);
  EXPECT_EQ(heard, (QList<qint64>{1, 2, -3}));
  CarbonKeyboardShortcuts::unregisterShortcut(Shortcut(9, 0));
  CarbonKeyboardShortcuts::unregisterShortcut(shortcutS);
  EXPECT_EQ(service->live.size(), 1U);
}

TEST_P(CarbonTest, RefusalIsLoggedAndBurnsItsId) {
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

TEST_P(CarbonTest, WhatFailedIsTriedAgain) {
  service->installationStatus = -1;
  registerLogged(shortcutS);
  EXPECT_TRUE(service->types.empty());
  service->installationStatus = Statuses::noError;
  registerLogged(shortcutD);
  EXPECT_EQ(press(shortcutS), 0);
  setIsEnabled(false);
  service->refusedKeyCodes = {1};
  setIsEnabled(true);
  EXPECT_EQ(log.printed.size(), 1);
  EXPECT_EQ(press(shortcutD), 0);
  service->refusedKeyCodes.clear();
  setIsEnabled(false);
  setIsEnabled(true);
  EXPECT_EQ(press(shortcutS), 0);
}

TEST_P(CarbonTest, OpenMenuIsHeardThroughRawKeys) {
  registerLogged(shortcutS);
  const auto id = service->live.begin()->second.id;
  setMenuOpen(true);
  EXPECT_TRUE(service->live.empty());
  EXPECT_FALSE(typeIntoMenu(EventType::KeyDown, shortcutS));
  EXPECT_FALSE(typeIntoMenu(EventType::KeyUp, shortcutS));
  EXPECT_TRUE(typeIntoMenu(EventType::KeyDown, shortcutD));
  EXPECT_TRUE(typeIntoMenu(EventType::KeyDown, {Key::s, ModifierFlag::Option}));
  EXPECT_EQ(heard, (QList<qint64>{1, -2}));
  setMenuOpen(false);
  EXPECT_FALSE(hearsRawKeys());
  ASSERT_EQ(service->live.size(), 1U);
  EXPECT_EQ(service->live.begin()->second.id, id);
  EXPECT_EQ(press(shortcutS), 0);
}

TEST_P(CarbonTest, DisabledHearsNothingWhateverMenusDo) {
  registerLogged(shortcutS);
  setMenuOpen(true);
  setIsEnabled(false);
  EXPECT_TRUE(service->live.empty() && service->types.empty());
  setMenuOpen(false);
  setMenuOpen(true);
  EXPECT_FALSE(hearsRawKeys());
  setIsEnabled(true);
  EXPECT_TRUE(hearsRawKeys());
}

TEST_P(CarbonTest, ForeignAndDamagedEventsGoOn) {
  registerLogged(shortcutS);
  HotKeyEvent event;
  EXPECT_EQ(service->handler(nullptr), Statuses::eventNotHandled);
  EXPECT_EQ(service->handler(&event), Statuses::parameterNotFound);
  for (const auto& foreign : {platform::HotKeyId{0x12345678, 1}, platform::HotKeyId{0x53534B53, 99}}) {
    event.hotKeyId = foreign;
    EXPECT_EQ(service->handler(&event), Statuses::eventNotHandled);
  }
  event.kind = HotKeyEventKind::RawKeyDown;
  event.keyCode = 1;
  event.modifiers.status = -50;
  EXPECT_EQ(service->handler(&event), -50);
  event.kind = static_cast<HotKeyEventKind>(2);
  EXPECT_EQ(service->handler(&event), Statuses::eventNotHandled);
  EXPECT_TRUE(heard.isEmpty());
}

TEST_F(ShortcutsTest, OtherEventsOfTheQueuePassInOrder) {
  service->version = {14, 0};
  initialize();
  CarbonKeyboardShortcuts::registerShortcut(
      shortcutS, [](const Shortcut&) {}, [](const Shortcut&) {});
  setMenuOpen(true);
  const Event mouse{EventType::LeftMouseDown, 0, {}};
  const Event other{EventType::KeyDown, 0, {}};
  const Event beyondAnyMask{static_cast<EventType>(80), 1, shortcutS.modifiers()};
  const Event taken{EventType::KeyDown, 1, shortcutS.modifiers()};
  service->runLoop.queue = {mouse, taken, other, beyondAnyMask, mouse};
  service->runLoop.pass();
  EXPECT_EQ(service->runLoop.queue, (std::deque<Event>{mouse, other, beyondAnyMask, mouse}));
}

}  // namespace
}  // namespace KeyboardShortcuts
