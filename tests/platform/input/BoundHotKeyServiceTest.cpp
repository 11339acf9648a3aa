#include "platform/input/KeyCodes.h"
#include "platform/input/Triggers.h"
#include "platform/input/wayland/BoundHotKeyService.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace platform;
using Keys = HotKeyService::Keys;

namespace {

HotKey hotKey(int keyCode, quint32 modifiers, const QString& name, quint32 id) {
  return {static_cast<quint32>(keyCode), modifiers, {1, id}, name, {}, {}};
}

/// A way that a test looks into.
struct Binder : KeyBinder {
  explicit Binder(Listener listener) : listener(std::move(listener)) {}
  void bind(const std::vector<HotKey>& hotKeys) override {
    QString names;
    for (const HotKey& each : hotKeys)
      names += each.name + u' ';
    calls << names.trimmed();
  }
  HotKeyState state() const override { return {HotKeyWay::Portal, {}, {}}; }

  const Listener listener;
  QStringList calls;
};

class BoundHotKeyServiceTest : public testing::Test {
 protected:
  BoundHotKeyServiceTest() {
    EXPECT_TRUE(service.installEventHandler(
        {[this](const HotKeyEvent& event) {
           heard << (event.action == KeyAction::Press ? u"+%1"_s : u"-%1"_s).arg(event.id.id);
           return KeyOutcome::Taken;
         },
         [this](const RawKeyEvent& event) {
           heard << u"raw %1 %2"_s.arg(event.keyCode).arg(event.modifiers);
           return KeyOutcome::Taken;
         }}));
    service.listen(Keys::Grabbed);
  }

  BoundHotKeyService::Way way() {
    return [this](KeyBinder::Listener listener) {
      auto made = std::make_unique<Binder>(std::move(listener));
      binder = made.get();
      return made;
    };
  }
  HotKeyReference add(const HotKey& key) {
    const auto reference = service.registerHotKey(key);
    EXPECT_TRUE(reference);
    return *reference;
  }
  void press(const QString& name) const { binder->listener.onKey(KeyAction::Press, name); }
  void release(const QString& name) const { binder->listener.onKey(KeyAction::Release, name); }

  ManualClock clock;
  testing_support::LogCapture log;
  Binder* binder = nullptr;
  QStringList heard;
  BoundHotKeyService service{{way(), way()}};
};

TEST_F(BoundHotKeyServiceTest, AsksForAllKeysOnceATurnAndOnlyForChanges) {
  EXPECT_FALSE(service.registerHotKey(hotKey(500, 0, u"x"_s, 9)));
  const auto first = add(hotKey(KeyCode::s, 0xA00, u"capture"_s, 1));
  EXPECT_EQ(service.registerHotKey(hotKey(KeyCode::s, 0xA00, u"other"_s, 2)).error().number,
            HotKeyStatuses::hotKeyExists);
  add(hotKey(KeyCode::f, 0xA00, u"history"_s, 3));
  EXPECT_EQ(binder, nullptr) << "the start doesn't wait for it";
  clock.run();
  EXPECT_EQ(binder->calls, QStringList{u"capture history"_s});

  service.unregisterHotKey(first);
  add(hotKey(KeyCode::s, 0xA00, u"capture"_s, 4));
  clock.run();
  EXPECT_EQ(binder->calls.size(), 1);
  add(hotKey(KeyCode::a, 0xA00, u"clipboard"_s, 5));
  clock.run();
  EXPECT_EQ(binder->calls.constLast(), u"capture clipboard history"_s);
}

TEST_F(BoundHotKeyServiceTest, AHeldKeyIsOnePressAndOneRelease) {
  add(hotKey(KeyCode::s, 0xA00, u"capture"_s, 1));
  clock.run();
  press(u"capture"_s);
  clock.advance(std::chrono::milliseconds(600));
  press(u"capture"_s);
  clock.advance(std::chrono::milliseconds(40));
  press(u"capture"_s);
  release(u"capture"_s);
  release(u"capture"_s);
  press(u"capture"_s);
  EXPECT_EQ(heard, (QStringList{u"+1"_s, u"-1"_s, u"+1"_s}));
  clock.advance(std::chrono::seconds(1));  // its release went astray
  press(u"capture"_s);
  press(u"nobody's"_s);
  EXPECT_EQ(heard.size(), 4);
}

TEST_F(BoundHotKeyServiceTest, KeysStayWithTheDesktopWhileAMenuIsOpen) {
  const auto reference = add(hotKey(KeyCode::s, 0xA00, u"capture"_s, 1));
  clock.run();
  service.unregisterHotKey(reference);
  service.listen(Keys::Raw);
  clock.run();
  EXPECT_EQ(binder->calls.size(), 1) << "no desktop is asked anew for a menu";
  press(u"capture"_s);
  EXPECT_EQ(heard, QStringList{u"raw 1 2560"_s});
  release(u"capture"_s);
  add(hotKey(KeyCode::s, 0xA00, u"capture"_s, 1));
  service.listen(Keys::Grabbed);
  clock.run();
  EXPECT_EQ(binder->calls.size(), 1);
  service.listen(Keys::None);
  clock.run();
  EXPECT_EQ(binder->calls.constLast(), QString());
}

TEST_F(BoundHotKeyServiceTest, GoesOnToTheNextWayAndSaysWhenThereIsNone) {
  add(hotKey(KeyCode::s, 0xA00, u"capture"_s, 1));
  EXPECT_EQ(service.state().way, HotKeyWay::Undecided);
  int changes = 0;
  const auto observing = service.observeState([&] { ++changes; });
  clock.run();
  const auto giveUp = [&] {
    const auto unavailable = binder->listener.onUnavailable;
    unavailable();
    clock.run();
  };
  giveUp();
  EXPECT_EQ(binder->calls, QStringList{u"capture"_s}) << "the second way";
  EXPECT_TRUE(log.logged.isEmpty());
  giveUp();
  EXPECT_EQ(service.state().way, HotKeyWay::Commands);
  EXPECT_EQ(log.logged.size(), 1);
  EXPECT_EQ(changes, 2);
  service.tryAgain();
  clock.run();
  EXPECT_EQ(service.state().way, HotKeyWay::Portal);
}

TEST(TriggersTest, AreWrittenAsEachDesktopWants) {
  const auto key = [](int code, quint32 modifiers) { return hotKey(code, modifiers, {}, 0); };
  EXPECT_EQ(portalTrigger(key(KeyCode::s, 0xA00)), u"ALT+SHIFT+s"_s);
  EXPECT_EQ(portalTrigger(key(KeyCode::keypad5, 0x1100)), u"CTRL+LOGO+KP_Begin"_s);
  EXPECT_EQ(gnomeAccelerator(key(KeyCode::printScreen, 0x1200)), u"<Control><Shift>Print"_s);
  EXPECT_EQ(swayCombination(key(KeyCode::s, 0xA00)), u"Mod1+Shift+39"_s);
  EXPECT_EQ(swayCombination(key(KeyCode::f5, 0)), u"71"_s);
  EXPECT_EQ(portalTrigger(key(KeyCode::s, 0x20000)), QString()) << "no such modifier";
  EXPECT_EQ(gnomeAccelerator(key(500, 0xA00)), QString()) << "no such key";
}

}  // namespace
