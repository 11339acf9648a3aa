#include "platform/base/MainQueue.h"
#include "tests/KeyboardShortcuts/Fixture.h"

namespace KeyboardShortcuts {
namespace {

class ServiceTest : public ShortcutsTest {
 protected:
  ServiceTest() {
    observer = center.addObserver(
        QString::fromLatin1(shortcutByNameDidChangeNotification),
        platform::NotificationCenter::Queue::PostingThread, [this](const platform::Notification& change) {
          changes << change.userInfo.value(QStringLiteral("name")).value<Name>().rawValue();
        });
  }
  ~ServiceTest() override { center.removeObserver(observer); }

  static Name name(const char* text, const std::optional<Shortcut>& defaultShortcut = std::nullopt) {
    return Name(QString::fromLatin1(text), defaultShortcut);
  }
  void count(const Name& of) {
    onKeyDown(of, [this, of] { downs << of.rawValue(); });
    onKeyUp(of, [this, of] { ups << of.rawValue(); });
  }

  platform::NotificationCenter& center = platform::NotificationCenter::defaultCenter();
  platform::NotificationCenter::Token observer;
  QStringList changes;
  QStringList downs;
  QStringList ups;
  const QString one = QStringLiteral("one");
  const QString two = QStringLiteral("two");
};

TEST_F(ServiceTest, DeclaringSeedsTheDefaultOnce) {
  const Name first = name("one", shortcutS);
  EXPECT_EQ(Shortcut::decode(stored("one").toString()), shortcutS);
  EXPECT_EQ(first.shortcut(), shortcutS);
  EXPECT_EQ(service->live.size(), 1U);
  relaunch();
  EXPECT_TRUE(service->live.empty());
  const Name again = name("one", shortcutD);
  EXPECT_EQ(again, first);
  EXPECT_EQ(again.shortcut(), shortcutS);
  EXPECT_TRUE(service->live.empty()) << "a stored shortcut is registered once it has an action";
  count(again);
  EXPECT_EQ(press(shortcutS), 0);
  EXPECT_EQ(downs, QStringList{one});
}

TEST_F(ServiceTest, EmptiedNameStaysEmpty) {
  const Name withDefault = name("one", shortcutS);
  const Name without = name("two");
  without.setShortcut(shortcutD);
  changes.clear();
  withDefault.setShortcut(std::nullopt);
  without.setShortcut(std::nullopt);
  EXPECT_EQ(changes, (QStringList{one, two}));
  EXPECT_EQ(stored("one"), QJsonValue(false));
  EXPECT_TRUE(stored("two").isUndefined());
  EXPECT_TRUE(service->live.empty());
  withDefault.setShortcut(std::nullopt);
  EXPECT_EQ(changes.size(), 2);
  relaunch();
  EXPECT_EQ(name("one", shortcutS).shortcut(), std::nullopt);
  EXPECT_EQ(stored("one"), QJsonValue(false));
}

TEST_F(ServiceTest, UnreadableEntryIsLeftAlone) {
  platform::UserDefaults::standard().set(QStringLiteral("KeyboardShortcuts_one"), QStringLiteral("{"));
  const Name damaged = name("one", shortcutS);
  count(damaged);
  EXPECT_EQ(damaged.shortcut(), std::nullopt);
  EXPECT_EQ(stored("one"), QJsonValue(QStringLiteral("{")));
  EXPECT_TRUE(log.logged.isEmpty());
  EXPECT_FALSE(isEnabled(damaged));
  enable({damaged});
  disable({damaged});
  EXPECT_TRUE(service->live.empty());
}

TEST_F(ServiceTest, ChangeActsAtTheNextPress) {
  const Name slot = name("one");
  count(slot);
  EXPECT_TRUE(service->live.empty());
  slot.setShortcut(shortcutS);
  press(shortcutS);
  slot.setShortcut(shortcutD);
  EXPECT_NE(press(shortcutS), 0);
  press(shortcutD);
  release(shortcutD);
  EXPECT_EQ(downs, (QStringList{one, one}));
  EXPECT_EQ(ups, QStringList{one});
  count(slot);
  press(shortcutD);
  EXPECT_EQ(downs.size(), 4) << "actions add up";
  // Changed behind the module's back: the old hot key is still there but belongs to no name.
  platform::UserDefaults::standard().set(QStringLiteral("KeyboardShortcuts_one"), shortcutS.encoded());
  press(shortcutD);
  EXPECT_EQ(downs.size(), 4);
}

TEST_F(ServiceTest, ResetGivesDefaultsBackAndResetAllForgets) {
  const Name withDefault = name("one", shortcutS);
  const Name without = name("two");
  without.setShortcut(shortcutD);
  changes.clear();
  const auto before = service->live.begin()->second.id;
  reset({withDefault, without});
  EXPECT_EQ(changes, (QStringList{one, two}));
  ASSERT_EQ(service->live.size(), 1U);
  EXPECT_NE(service->live.begin()->second.id, before) << "the same shortcut is registered anew";
  platform::UserDefaults::standard().set(QStringLiteral("other"), true);
  resetAll();
  EXPECT_EQ(platform::UserDefaults::standard().keys(), QStringList{QStringLiteral("other")});
  EXPECT_TRUE(service->live.empty());
}

TEST_F(ServiceTest, TwoNamesShareOneHotKey) {
  const Name first = name("one", shortcutS);
  const Name second = name("two", shortcutS);
  count(first);
  count(second);
  EXPECT_EQ(service->live.size(), 1U);
  press(shortcutS);
  EXPECT_EQ(downs, (QStringList{one, two}));
  first.setShortcut(shortcutD);
  EXPECT_NE(press(shortcutS), 0);
  EXPECT_FALSE(isEnabled(second));
  enable({second});
  EXPECT_TRUE(isEnabled(second));
  press(shortcutS);
  EXPECT_EQ(downs, (QStringList{one, two, two}));
  disable({second});
  EXPECT_FALSE(isEnabled(second));
}

TEST_F(ServiceTest, PausedKeysAreTakenButDoNothing) {
  count(name("one", shortcutS));
  setIsPaused(true);
  EXPECT_EQ(press(shortcutS), 0);
  EXPECT_EQ(release(shortcutS), 0);
  EXPECT_TRUE(downs.isEmpty() && ups.isEmpty());
  setIsPaused(false);
  press(shortcutS);
  EXPECT_EQ(downs.size(), 1);
}

TEST_F(ServiceTest, SwitchedOffAndOnAgain) {
  const Name slot = name("one", shortcutS);
  count(slot);
  setIsEnabled(false);
  EXPECT_FALSE(isEnabled(slot));
  EXPECT_TRUE(service->live.empty());
  setIsEnabled(true);
  EXPECT_TRUE(isEnabled(slot));
  press(shortcutS);
  EXPECT_EQ(downs.size(), 1);
}

TEST_F(ServiceTest, RefusedShortcutIsTriedAgainOnceGivenUp) {
  service->refusedKeyCodes = {1};
  const Name slot = name("one", shortcutS);
  count(slot);
  EXPECT_EQ(log.printed.size(), 1);
  EXPECT_TRUE(isEnabled(slot));
  service->refusedKeyCodes.clear();
  slot.setShortcut(shortcutS);
  EXPECT_EQ(press(shortcutS), 0);
}

TEST_F(ServiceTest, HandlersMayChangeTheTables) {
  const Name slot = name("one", shortcutS);
  onKeyDown(slot, [&] {
    removeAllHandlers();
    downs << one;
  });
  onKeyDown(slot, [&] { downs << two; });
  press(shortcutS);
  EXPECT_EQ(downs, (QStringList{one, two}));
  EXPECT_TRUE(service->live.empty());
}

TEST_F(ServiceTest, StreamsHearUntilTheyEnd) {
  platform::ManualClock clock;
  const Name slot = name("one", shortcutS);
  count(slot);
  auto both = events(slot);
  auto upOnly = events(EventType::keyUp, slot);
  clock.run();
  press(shortcutS);
  release(shortcutS);
  QList<EventType> heard;
  QList<EventType> heardUps;
  both->forEach([&](EventType event) { heard << event; });
  upOnly->forEach([&](EventType event) { heardUps << event; });
  press(shortcutS);
  release(shortcutS);
  EXPECT_EQ(heard, (QList{EventType::keyDown, EventType::keyUp, EventType::keyDown, EventType::keyUp}));
  EXPECT_EQ(heardUps, (QList{EventType::keyUp, EventType::keyUp}));
  removeHandler(slot);
  EXPECT_EQ(service->live.size(), 1U) << "the streams still need it";
  both.reset();
  clock.run();
  EXPECT_EQ(press(shortcutS), 0);
  upOnly.reset();
  clock.run();
  EXPECT_TRUE(service->live.empty());
  EXPECT_EQ(heard.size(), 4);
}

}  // namespace
}  // namespace KeyboardShortcuts
