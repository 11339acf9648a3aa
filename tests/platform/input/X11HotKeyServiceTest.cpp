#include "platform/input/KeyCodes.h"
#include "platform/input/X11Connection.h"
#include "platform/input/X11HotKeyService.h"
#include "tests/platform/input/X11Fixture.h"

#include <QElapsedTimer>
#include <QMenu>

#include <array>
#include <linux/input-event-codes.h>

namespace platform {
namespace {

using testing_support::EventLog;
using testing_support::OtherClient;
using testing_support::setLayout;
using testing_support::waitUntil;
using Outcome = OtherClient::Outcome;

constexpr quint32 optionShift = 0x800 | 0x200;
constexpr uint16_t x11OptionShift = XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT;
constexpr std::array hotKeyTypes{EventTypeSpec{keyboardEventClass, HotKeyEventKind::HotKeyPressed},
                                 EventTypeSpec{keyboardEventClass, HotKeyEventKind::HotKeyReleased}};
constexpr std::array rawKeyTypes{EventTypeSpec{keyboardEventClass, HotKeyEventKind::RawKeyDown},
                                 EventTypeSpec{keyboardEventClass, HotKeyEventKind::RawKeyUp}};

class X11HotKeyServiceTest : public ::testing::Test {
 protected:
  X11HotKeyServiceTest() {
    handler =
        *service.installEventHandler([this](const HotKeyEvent* event) { return heard(*event); }).reference;
    service.addEventTypes(handler, hotKeyTypes);
  }
  ~X11HotKeyServiceTest() override { setLayout(QStringLiteral("us")); }

  HotKeyStatus heard(const HotKeyEvent& event) {
    const bool isPress =
        event.kind == HotKeyEventKind::HotKeyPressed || event.kind == HotKeyEventKind::RawKeyDown;
    const bool isRaw = event.kind == HotKeyEventKind::RawKeyDown || event.kind == HotKeyEventKind::RawKeyUp;
    if (isRaw && (event.keyCode.value != KeyCode::s || event.modifiers.value != optionShift))
      return HotKeyStatuses::eventNotHandled;
    events += isPress ? u'+' : u'-';
    events += isRaw ? QStringLiteral("raw") : QString::number(event.hotKeyId.value.id);
    if (isPress && onPress)
      onPress();
    return HotKeyStatuses::noError;
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
  HotKeyService::Registration add(quint32 keyCode, quint32 id = 1, quint32 modifiers = optionShift) {
    return service.registerHotKey(keyCode, modifiers, {0x53534B53, id});
  }

  X11HotKeyService service{x11Connection()};
  EventHandlerReference handler{};
  EventLog log;
  testing_support::XTestInput hand{testing_support::privateDisplay()};
  OtherClient other;
  QString events;
  std::function<void()> onPress;
  const QString once = QStringLiteral("+1-1");
};

TEST_F(X11HotKeyServiceTest, LocksDontMatterOtherModifiersDo) {
  add(KeyCode::s);
  add(KeyCode::d, 2);
  for (const int lock : {KEY_CAPSLOCK, KEY_NUMLOCK, KEY_CAPSLOCK, KEY_NUMLOCK}) {
    tapChord(KEY_S);
    EXPECT_EQ(taken(), once);
    hand.tapKey(lock);
  }
  tapChord(KEY_D);
  EXPECT_EQ(taken(), QStringLiteral("+2-2"));
  hand.pressKey(KEY_RIGHTCTRL);
  tapChord(KEY_S);
  hand.releaseKey(KEY_RIGHTCTRL);
  tapChord(KEY_A);
  hand.tapKey(KEY_S);
  log.settle();
  EXPECT_EQ(taken(), QString());
}

TEST_F(X11HotKeyServiceTest, EveryModifierHasItsKey) {
  add(KeyCode::f5, 1, 0x100);
  add(KeyCode::f5, 2, 0x1000);
  add(KeyCode::f5, 3, 0);
  for (const int modifier : {KEY_LEFTMETA, KEY_LEFTCTRL}) {
    hand.pressKey(modifier);
    hand.tapKey(KEY_F5);
    hand.releaseKey(modifier);
  }
  hand.tapKey(KEY_F5);
  log.settle();
  EXPECT_EQ(taken(), QStringLiteral("+1-1+2-2+3-3"));
}

TEST_F(X11HotKeyServiceTest, ImpossibleHotKeysAreRefused) {
  for (const auto& [code, modifiers] :
       {std::pair(int{KeyCode::s}, 0x20000U | 0x800U), std::pair(int{KeyCode::function}, optionShift),
        std::pair(500, optionShift), std::pair(-1, optionShift)}) {
    const auto result = add(static_cast<quint32>(code), 1, modifiers);
    EXPECT_EQ(result.status, HotKeyStatuses::invalidHotKey);
    EXPECT_FALSE(result.reference);
  }
  EXPECT_EQ(add(KeyCode::s).status, HotKeyStatuses::noError);
  EXPECT_EQ(add(KeyCode::s).status, HotKeyStatuses::hotKeyExists);
}

TEST_F(X11HotKeyServiceTest, KeyOfAnotherProgramIsRefusedWhole) {
  OtherClient third;
  ASSERT_EQ(third.grabKey(KEY_S, x11OptionShift | XCB_MOD_MASK_LOCK), Outcome::Done);
  EXPECT_EQ(add(KeyCode::s).status, HotKeyStatuses::hotKeyExists);
  EXPECT_EQ(other.grabKey(KEY_S, x11OptionShift), Outcome::Done) << "no variant stays behind";
  EXPECT_EQ(other.grabKey(KEY_S, x11OptionShift | XCB_MOD_MASK_2), Outcome::Done);
  EXPECT_EQ(add(KeyCode::d).status, HotKeyStatuses::noError);
  tapChord(KEY_D);
  EXPECT_EQ(taken(), once);
}

TEST_F(X11HotKeyServiceTest, HeldKeyIsOnePressAndOneRelease) {
  add(KeyCode::s);
  chord([&] {
    hand.pressKey(KEY_S);
    EXPECT_TRUE(waitUntil([&] { return log.presses(KEY_S) >= 5; })) << "the server repeats the key";
    EXPECT_EQ(taken(), QStringLiteral("+1"));
    // The release is heard though the modifiers went first.
    hand.releaseKey(KEY_LEFTALT);
    hand.releaseKey(KEY_S);
    log.settle();
    EXPECT_EQ(taken(), QStringLiteral("-1"));
  });
  tapChord(KEY_S);
  EXPECT_EQ(taken(), once);
}

TEST_F(X11HotKeyServiceTest, HandlerFindsTheKeyboardFree) {
  add(KeyCode::s);
  Outcome atPress = Outcome::Refused;
  onPress = [&] { atPress = other.grabKeyboard(); };
  chord([&] {
    hand.pressKey(KEY_S);
    EXPECT_TRUE(waitUntil([&] { return !events.isEmpty(); }));
    EXPECT_EQ(atPress, Outcome::Done);
    // The key is still down when the other program is done: it starts our grab again, but counts for nothing.
    other.ungrabKeyboard();
    EXPECT_TRUE(waitUntil([&] { return log.presses(KEY_S) >= 3; }));
    EXPECT_TRUE(waitUntil([&] { return other.grabKeyboard() == Outcome::Done; })) << "free between repeats";
    EXPECT_EQ(taken(), QStringLiteral("+1"));
    hand.releaseKey(KEY_S);
    log.settle();
    EXPECT_EQ(taken(), QStringLiteral("-1")) << "heard though another program has the keyboard";
    other.ungrabKeyboard();
  });
}

TEST_F(X11HotKeyServiceTest, BusyProgramMissesNothing) {
  add(KeyCode::s);
  add(KeyCode::d, 2);
  chord([&] {
    hand.tapKey(KEY_S);
    hand.tapKey(KEY_D);
  });
  log.settle();
  EXPECT_EQ(taken(), QStringLiteral("+1-1+2-2")) << "both were over before the first was seen";

  // Held long enough to repeat, and let go, while the program looks elsewhere.
  int repeats = 0;
  for (int milliseconds = 900; repeats < 2 && milliseconds < 10'000; milliseconds *= 2) {
    log.keys.clear();
    events.clear();
    chord([&] {
      hand.pressKey(KEY_S);
      QElapsedTimer busy;
      for (busy.start(); busy.elapsed() < milliseconds;)
        continue;
      hand.releaseKey(KEY_S);
    });
    log.settle();
    repeats = log.presses(KEY_S);
  }
  EXPECT_GE(repeats, 2);
  EXPECT_EQ(taken(), once);
}

TEST_F(X11HotKeyServiceTest, FiftyPressesLeaveNothingBehind) {
  const auto registration = add(KeyCode::s);
  for (int press = 0; press < 50; ++press)
    tapChord(KEY_S);
  EXPECT_EQ(taken(), once.repeated(50));
  EXPECT_EQ(other.grabKeyboard(), Outcome::Done);
  other.ungrabKeyboard();
  EXPECT_EQ(other.grabKey(KEY_S, x11OptionShift), Outcome::Refused);

  log.total = 0;
  for (int press = 0; press < 10; ++press)
    hand.tapKey(KEY_A);
  log.settle();
  EXPECT_EQ(log.total, 0) << "keys that aren't ours must not wake the program";

  service.unregisterHotKey(*registration.reference);
  tapChord(KEY_S);
  EXPECT_EQ(taken(), QString());
  for (const int locks : {0, 2, 16, 18})
    EXPECT_EQ(other.grabKey(KEY_S, static_cast<uint16_t>(x11OptionShift | locks)), Outcome::Done);
}

TEST_F(X11HotKeyServiceTest, LayoutsKeepPositions) {
  add(KeyCode::y);
  for (const char* layout : {"de", "fr", "kr", "us,ru"}) {
    setLayout(QString::fromLatin1(layout));
    other.lockGroup(1);
    log.settle();
    tapChord(KEY_Y);
    EXPECT_EQ(taken(), once) << layout;
  }
}

TEST_F(X11HotKeyServiceTest, MovedNumLockIsFollowed) {
  add(KeyCode::s);
  constexpr size_t mod2 = 4;
  constexpr size_t mod3 = 5;
  other.exchangeModifiers(mod2, mod3);
  EXPECT_TRUE(waitUntil([&] {
    // Once our grab with the new lock bit is there, nobody else can have it.
    OtherClient probe;
    return probe.grabKey(KEY_S, x11OptionShift | XCB_MOD_MASK_3) == Outcome::Refused;
  }));
  hand.tapKey(KEY_NUMLOCK);
  tapChord(KEY_S);
  EXPECT_EQ(taken(), once);
  hand.tapKey(KEY_NUMLOCK);
  other.exchangeModifiers(mod2, mod3);
}

class X11MenuTest : public X11HotKeyServiceTest {
 protected:
  X11MenuTest() {
    menu.addAction(QStringLiteral("One"));
    menu.addAction(QStringLiteral("Two"));
    menu.popup({0, 0});
    // The menu has the keyboard once nobody else can take it.
    EXPECT_TRUE(waitUntil([&] {
      const bool isFree = other.grabKeyboard() == Outcome::Done;
      if (isFree)
        other.ungrabKeyboard();
      return !isFree;
    }));
    service.removeEventTypes(handler, hotKeyTypes);
    service.addEventTypes(handler, rawKeyTypes);
  }

  QMenu menu;
};

TEST_F(X11MenuTest, ChordFiresAndTheMenuStays) {
  tapChord(KEY_S);
  EXPECT_EQ(taken(), QStringLiteral("+raw-raw"));
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
    service.removeEventTypes(handler, rawKeyTypes);
    service.addEventTypes(handler, hotKeyTypes);
    add(KeyCode::s);
  };
  chord([&] {
    hand.pressKey(KEY_S);
    EXPECT_TRUE(waitUntil([&] { return log.presses(KEY_S) >= 4; }));
    EXPECT_EQ(taken(), QStringLiteral("+raw"));
    hand.releaseKey(KEY_S);
    log.settle();
  });
  EXPECT_EQ(taken(), QStringLiteral("-1"));
}

TEST(HotKeyService, RefusesWhereThereIsNone) {
  EXPECT_NE(HotKeyService::current().registerHotKey(KeyCode::s, 0, {}).status, HotKeyStatuses::noError);
  const auto service = HotKeyService::forDesktop();
  EXPECT_EQ(service->registerHotKey(KeyCode::s, optionShift, {}).status, HotKeyStatuses::noError);
}

}  // namespace
}  // namespace platform
