#include "platform/input/KeyCodes.h"
#include "platform/input/LayoutSwitch.h"
#include "platform/input/X11HotKeyService.h"
#include "platform/x11/X11Connection.h"
#include "tests/platform/input/X11Fixture.h"

#include <QMenu>
#include <QThread>

#include <linux/input-event-codes.h>

namespace platform {
namespace {

using namespace Qt::StringLiterals;
using testing_support::EventLog;
using testing_support::setLayout;
using testing_support::until;
using Keys = HotKeyService::Keys;

constexpr quint32 optionShift = 0x800 | 0x200;
constexpr int x11OptionShift = XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT;

class X11HotKeyServiceTest : public ::testing::Test {
 protected:
  X11HotKeyServiceTest() {
    const auto onHotKey = [this](const HotKeyEvent& event) {
      return heard(event.action, QString::number(event.id.id));
    };
    const auto onRawKey = [this](const RawKeyEvent& event) {
      const bool isOurs = event.keyCode == KeyCode::s && event.modifiers == optionShift;
      return isOurs ? heard(event.action, u"raw"_s) : KeyOutcome::Passed;
    };
    EXPECT_TRUE(service.installEventHandler({onHotKey, onRawKey}));
    service.listen(Keys::Grabbed);
  }
  ~X11HotKeyServiceTest() override { setLayout(u"us"_s); }

  KeyOutcome heard(KeyAction action, const QString& who) {
    events += action == KeyAction::Press ? u'+' : u'-';
    events += who;
    if (action == KeyAction::Press && onPress)
      onPress();
    return KeyOutcome::Taken;
  }
  /// Modifiers down around `keys`.
  void chord(const std::function<void()>& keys) {
    hand.pressKey(KEY_LEFTALT);
    hand.pressKey(KEY_LEFTSHIFT);
    keys();
    hand.releaseKey(KEY_LEFTSHIFT);
    hand.releaseKey(KEY_LEFTALT);
  }
  void tapChord(int evdevCode) {
    chord([&] { hand.tapKey(evdevCode); });
    log.settle();
  }
  QString taken() { return std::exchange(events, {}); }
  Result<HotKeyReference> add(quint32 keyCode, quint32 id = 1, quint32 modifiers = optionShift) {
    return service.registerHotKey({keyCode, modifiers, {0x53534B53, id}, {}, {}, {}});
  }

  X11HotKeyService service{x11Connection()};
  EventLog log;
  testing_support::XTestInput hand{testing_support::privateDisplay()};
  testing_support::Screen other{testing_support::privateDisplay()};
  QString events;
  std::function<void()> onPress;
  const QString once = u"+1-1"_s;
};

TEST_F(X11HotKeyServiceTest, LocksDontMatterOtherModifiersDo) {
  EXPECT_TRUE(add(KeyCode::s));
  EXPECT_TRUE(add(KeyCode::d, 2));
  for (const int lock : {KEY_CAPSLOCK, KEY_NUMLOCK, KEY_CAPSLOCK, KEY_NUMLOCK}) {
    tapChord(KEY_S);
    EXPECT_EQ(taken(), once);
    hand.tapKey(lock);
  }
  tapChord(KEY_D);
  EXPECT_EQ(taken(), u"+2-2"_s);
  hand.pressKey(KEY_RIGHTCTRL);
  tapChord(KEY_S);
  hand.releaseKey(KEY_RIGHTCTRL);
  tapChord(KEY_A);
  hand.tapKey(KEY_S);
  log.settle();
  EXPECT_EQ(taken(), QString());
}

TEST_F(X11HotKeyServiceTest, EveryModifierHasItsKey) {
  EXPECT_TRUE(add(KeyCode::f5, 1, 0x100));
  EXPECT_TRUE(add(KeyCode::f5, 2, 0x1000));
  EXPECT_TRUE(add(KeyCode::f5, 3, 0));
  for (const int modifier : {KEY_LEFTMETA, KEY_LEFTCTRL}) {
    hand.pressKey(modifier);
    hand.tapKey(KEY_F5);
    hand.releaseKey(modifier);
  }
  hand.tapKey(KEY_F5);
  log.settle();
  EXPECT_EQ(taken(), u"+1-1+2-2+3-3"_s);
}

TEST_F(X11HotKeyServiceTest, KeysOfAPCKeyboardAreNoFunctionKeys) {
  quint32 id = 0;
  for (const int code : {KeyCode::printScreen, KeyCode::scrollLock, KeyCode::pause, KeyCode::contextMenu,
                         KeyCode::isoKey, KeyCode::f13, KeyCode::f14, KeyCode::f15})
    EXPECT_TRUE(add(static_cast<quint32>(code), ++id));
  for (const int key :
       {KEY_SYSRQ, KEY_SCROLLLOCK, KEY_PAUSE, KEY_COMPOSE, KEY_102ND, KEY_F13, KEY_F14, KEY_F15})
    tapChord(key);
  EXPECT_EQ(taken(), u"+1-1+2-2+3-3+4-4+5-5+6-6+7-7+8-8"_s);
}

TEST_F(X11HotKeyServiceTest, ImpossibleAndTakenHotKeysAreRefusedWhole) {
  for (const auto& [code, modifiers] :
       {std::pair(int{KeyCode::s}, 0x20000U | 0x800U), std::pair(int{KeyCode::function}, optionShift),
        std::pair(500, optionShift), std::pair(-1, optionShift)}) {
    const auto result = add(static_cast<quint32>(code), 1, modifiers);
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().number, HotKeyStatuses::invalidHotKey);
  }
  testing_support::Screen third(testing_support::privateDisplay());
  ASSERT_TRUE(third.grabKey(KEY_S, x11OptionShift | XCB_MOD_MASK_LOCK));
  EXPECT_EQ(add(KeyCode::s).error().number, HotKeyStatuses::hotKeyExists);
  for (const int locks : {0, int{XCB_MOD_MASK_2}})
    EXPECT_FALSE(other.isKeyGrabbed(KEY_S, x11OptionShift | locks)) << "no variant stays behind";
  EXPECT_TRUE(add(KeyCode::d));
  EXPECT_EQ(add(KeyCode::d).error().number, HotKeyStatuses::hotKeyExists);
  tapChord(KEY_D);
  EXPECT_EQ(taken(), once);
}

TEST_F(X11HotKeyServiceTest, HeldKeyIsOnePressAndOneRelease) {
  EXPECT_TRUE(add(KeyCode::s));
  chord([&] {
    hand.pressKey(KEY_S);
    until("the server repeats the key", [&] { return log.presses(KEY_S) >= 5; });
    EXPECT_EQ(taken(), u"+1"_s);
    // The release is heard though the modifiers went first.
    hand.releaseKey(KEY_LEFTALT);
    hand.releaseKey(KEY_S);
    log.settle();
    EXPECT_EQ(taken(), u"-1"_s);
  });
  tapChord(KEY_S);
  EXPECT_EQ(taken(), once);
}

TEST_F(X11HotKeyServiceTest, HandlerFindsTheKeyboardFree) {
  EXPECT_TRUE(add(KeyCode::s));
  bool isFreeAtPress = false;
  onPress = [&] { isFreeAtPress = other.grabKeyboard(); };
  chord([&] {
    hand.pressKey(KEY_S);
    until("the press is heard", [&] { return !events.isEmpty(); });
    EXPECT_TRUE(isFreeAtPress);
    // The key is still down when the other program is done: it starts our grab again, but counts for nothing.
    other.ungrabKeyboard();
    until("the server repeats the key", [&] { return log.presses(KEY_S) >= 3; });
    until("the keyboard is free between repeats", [&] { return other.grabKeyboard(); });
    EXPECT_EQ(taken(), u"+1"_s);
    hand.releaseKey(KEY_S);
    log.settle();
    EXPECT_EQ(taken(), u"-1"_s) << "heard though another program has the keyboard";
    other.ungrabKeyboard();
  });
}

TEST_F(X11HotKeyServiceTest, BusyProgramMissesNothing) {
  EXPECT_TRUE(add(KeyCode::s));
  EXPECT_TRUE(add(KeyCode::d, 2));
  chord([&] {
    hand.tapKey(KEY_S);
    hand.tapKey(KEY_D);
  });
  log.settle();
  EXPECT_EQ(taken(), u"+1-1+2-2"_s) << "both were over before the first was seen";

  // Held long enough to repeat, and let go, while the program looks elsewhere.
  int repeats = 0;
  for (unsigned long milliseconds = 900; repeats < 2 && milliseconds < 10'000; milliseconds *= 2) {
    log.keys.clear();
    events.clear();
    chord([&] {
      hand.pressKey(KEY_S);
      QThread::msleep(milliseconds);
      hand.releaseKey(KEY_S);
    });
    log.settle();
    repeats = log.presses(KEY_S);
  }
  EXPECT_GE(repeats, 2);
  EXPECT_EQ(taken(), once);
}

TEST_F(X11HotKeyServiceTest, OnlyItsKeysWakeTheProgramAndNoneOnceGivenUp) {
  const auto registration = add(KeyCode::s);
  EXPECT_TRUE(other.isKeyGrabbed(KEY_S, x11OptionShift));
  log.settle();
  log.total = 0;
  for (int press = 0; press < 10; ++press)
    hand.tapKey(KEY_A);
  log.settle();
  EXPECT_EQ(log.total, 0);
  service.unregisterHotKey(*registration);
  tapChord(KEY_S);
  EXPECT_EQ(taken(), QString());
  for (const int locks : {0, 2, 16, 18})
    EXPECT_FALSE(other.isKeyGrabbed(KEY_S, x11OptionShift | locks));
}

TEST_F(X11HotKeyServiceTest, AnotherLayoutInUseDoesntMatter) {
  EXPECT_TRUE(add(KeyCode::y));
  setLayout(u"us,ru"_s);
  other.lockGroup(1);
  log.settle();
  tapChord(KEY_Y);
  EXPECT_EQ(taken(), once);
}

TEST_F(X11HotKeyServiceTest, WhatSwitchesTheLayoutIsNoHotKey) {
  const auto layoutSwitch = LayoutSwitch::forDesktop();
  EXPECT_TRUE(add(KeyCode::s));
  for (const QString& option : {u"grp:alt_shift_toggle"_s, u"grp:ctrl_shift_toggle"_s}) {
    setLayout(u"us,kr"_s, option);
    log.settle();
    tapChord(KEY_S);
    const bool arrives = taken() == once;
    EXPECT_EQ(layoutSwitch->takes(HotKeyModifiers::fromInt(optionShift)), !arrives) << qPrintable(option);
    EXPECT_EQ(arrives, option == u"grp:ctrl_shift_toggle"_s);
  }
}

TEST_F(X11HotKeyServiceTest, MovedNumLockIsFollowed) {
  EXPECT_TRUE(add(KeyCode::s));
  constexpr size_t mod2 = 4, mod3 = 5;
  other.exchangeModifiers(mod2, mod3);
  until("there is a grab with the new lock bit",
        [&] { return other.isKeyGrabbed(KEY_S, x11OptionShift | XCB_MOD_MASK_3); });
  hand.tapKey(KEY_NUMLOCK);
  tapChord(KEY_S);
  EXPECT_EQ(taken(), once);
  hand.tapKey(KEY_NUMLOCK);
  other.exchangeModifiers(mod2, mod3);
}

class X11MenuTest : public X11HotKeyServiceTest {
 protected:
  X11MenuTest() {
    menu.addAction(u"One"_s);
    menu.addAction(u"Two"_s);
    menu.popup({0, 0});
    until("the menu has the keyboard", [&] { return other.isKeyboardGrabbed(); });
    service.listen(Keys::Raw);
  }

  QMenu menu;
};

TEST_F(X11MenuTest, ChordFiresAndTheMenuStays) {
  tapChord(KEY_S);
  EXPECT_EQ(taken(), u"+raw-raw"_s);
  EXPECT_TRUE(menu.isVisible());
  hand.tapKey(KEY_LEFTALT);
  log.settle();
  EXPECT_TRUE(menu.isVisible());
  hand.tapKey(KEY_DOWN);
  hand.tapKey(KEY_DOWN);
  log.settle();
  EXPECT_EQ(menu.activeAction(), menu.actions().at(1));
  hand.tapKey(KEY_ESC);
  log.settle();
  EXPECT_FALSE(menu.isVisible());
  EXPECT_EQ(taken(), QString());
}

TEST_F(X11MenuTest, KeyHeldAcrossTheMenusEndCountsOnce) {
  onPress = [&] {
    menu.close();
    service.listen(Keys::Grabbed);
    EXPECT_TRUE(add(KeyCode::s));
  };
  chord([&] {
    hand.pressKey(KEY_S);
    until("the server repeats the key", [&] { return log.presses(KEY_S) >= 4; });
    EXPECT_EQ(taken(), u"+raw"_s);
    hand.releaseKey(KEY_S);
    log.settle();
  });
  EXPECT_EQ(taken(), u"-1"_s);
}

TEST(HotKeyService, RefusesWhereThereIsNone) {
  const HotKey hotKey{KeyCode::s, optionShift, {}, {}, {}, {}};
  EXPECT_FALSE(HotKeyService::current().registerHotKey(hotKey));
  EXPECT_TRUE(HotKeyService::forDesktop()->registerHotKey(hotKey));
}

}  // namespace
}  // namespace platform
