#include "platform/base/MainQueue.h"
#include "tests/KeyboardShortcuts/Fixture.h"

namespace KeyboardShortcuts {
namespace {

class ServiceTest : public ShortcutsTest {
 protected:
  ServiceTest() {
    observer = center.addObserver(QString::fromLatin1(shortcutByNameDidChangeNotification),
                                  platform::NotificationCenter::Queue::PostingThread,
                                  [this](const platform::Notification& change) {
                                    changes << change.userInfo.value(u"name"_s).value<Name>().rawValue();
                                  });
  }

  /// Logs the name at a press, and in brackets at a release.
  void watch(const Name& name) {
    actions.push_back(onKeyDown(name, [this, name] { heard << name.rawValue(); }));
    actions.push_back(onKeyUp(name, [this, name] { heard << u'(' + name.rawValue() + u')'; }));
  }
  Name watched(const QString& name, const std::optional<Shortcut>& defaultShortcut = std::nullopt) {
    const Name result(name, defaultShortcut);
    watch(result);
    return result;
  }
  QString taken() {
    QStringList result;
    result.swap(heard);
    return result.join(u' ');
  }

  platform::NotificationCenter& center = platform::NotificationCenter::defaultCenter();
  platform::Subscription observer;
  std::vector<platform::Subscription> actions;
  QStringList changes;
  QStringList heard;
  const QString one = u"one"_s;
  const QString two = u"two"_s;
};

TEST_F(ServiceTest, DeclaringSeedsTheDefaultOnce) {
  EXPECT_EQ(Name(one, shortcutS).shortcut(), shortcutS);
  EXPECT_EQ(Shortcut::decode(stored("one").toString()), shortcutS);
  EXPECT_EQ(service->live.size(), 1U);
  relaunch();
  const Name again(one, shortcutD);
  EXPECT_EQ(again.shortcut(), shortcutS);
  EXPECT_TRUE(service->live.empty()) << "a stored shortcut is registered once it has an action";
  watch(again);
  press(shortcutS);
  EXPECT_EQ(taken(), one);
  platform::UserDefaults::standard().set(u"KeyboardShortcuts_two"_s, u"{"_s);
  EXPECT_EQ(Name(two, shortcutD).shortcut(), std::nullopt);
  EXPECT_EQ(stored("two"), QJsonValue(u"{"_s)) << "what can't be read is left alone";
}

TEST_F(ServiceTest, EmptiedNameStaysEmpty) {
  const Name withDefault(one, shortcutS), without(two);
  without.setShortcut(shortcutD);
  changes.clear();
  for (const Name& name : {withDefault, without, withDefault})
    name.setShortcut(std::nullopt);
  EXPECT_EQ(changes, (QStringList{one, two})) << "the third time it was empty already";
  EXPECT_TRUE(stored("two").isUndefined());
  EXPECT_TRUE(service->live.empty());
  relaunch();
  EXPECT_EQ(Name(one, shortcutS).shortcut(), std::nullopt);
  EXPECT_EQ(stored("one"), QJsonValue(false));
}

TEST_F(ServiceTest, ChangeActsAtTheNextPress) {
  const Name slot = watched(one);
  EXPECT_TRUE(service->live.empty());
  slot.setShortcut(shortcutS);
  press(shortcutS);
  slot.setShortcut(shortcutD);
  EXPECT_EQ(press(shortcutS), KeyOutcome::Passed);
  press(shortcutD);
  release(shortcutD);
  EXPECT_EQ(taken(), u"one one (one)"_s);
  watch(slot);
  press(shortcutD);
  EXPECT_EQ(taken(), u"one one"_s) << "actions add up";
  actions.resize(2);
  press(shortcutD);
  EXPECT_EQ(taken(), one) << "and go with their owners";
  // Changed behind the module's back: the old hot key is still there but belongs to no name.
  platform::UserDefaults::standard().set(u"KeyboardShortcuts_one"_s, shortcutS.encoded());
  press(shortcutD);
  EXPECT_EQ(taken(), QString());
}

TEST_F(ServiceTest, ResetGivesDefaultsBackAndResetAllForgets) {
  const Name withDefault(one, shortcutS), without(two);
  without.setShortcut(shortcutD);
  changes.clear();
  const auto before = service->live.begin()->second.id;
  reset({withDefault, without});
  EXPECT_EQ(changes, (QStringList{one, two}));
  ASSERT_EQ(service->live.size(), 1U);
  EXPECT_NE(service->live.begin()->second.id, before) << "the same shortcut is registered anew";
  platform::UserDefaults::standard().set(u"other"_s, true);
  resetAll();
  EXPECT_EQ(platform::UserDefaults::standard().keys(), QStringList{u"other"_s});
  EXPECT_TRUE(service->live.empty());
}

TEST_F(ServiceTest, TwoNamesShareOneHotKey) {
  const Name first = watched(one, shortcutS), second = watched(two, shortcutS);
  EXPECT_EQ(service->live.size(), 1U);
  press(shortcutS);
  EXPECT_EQ(taken(), u"one two"_s);
  first.setShortcut(shortcutD);
  EXPECT_FALSE(isEnabled(second));
  enable({second});
  EXPECT_TRUE(isEnabled(second));
  press(shortcutS);
  EXPECT_EQ(taken(), two);
  disable({second});
  EXPECT_FALSE(isEnabled(second));
}

TEST_F(ServiceTest, PausedKeysAreTakenButDoNothingAndSwitchedOffOnesAreFree) {
  const Name slot = watched(one, shortcutS);
  setIsPaused(true);
  EXPECT_EQ(press(shortcutS), KeyOutcome::Taken);
  EXPECT_EQ(release(shortcutS), KeyOutcome::Taken);
  EXPECT_EQ(taken(), QString());
  setIsPaused(false);
  setIsEnabled(false);
  EXPECT_FALSE(isEnabled(slot));
  EXPECT_TRUE(service->live.empty());
  setIsEnabled(true);
  EXPECT_TRUE(isEnabled(slot));
  press(shortcutS);
  EXPECT_EQ(taken(), one);
}

TEST_F(ServiceTest, HandlersMayChangeTheTables) {
  const Name slot(one, shortcutS);
  actions.push_back(onKeyDown(slot, [] { removeAllHandlers(); }));
  watch(slot);
  press(shortcutS);
  EXPECT_EQ(taken(), one);
  EXPECT_TRUE(service->live.empty());
}

TEST_F(ServiceTest, StreamsHearUntilTheyEnd) {
  platform::ManualClock clock;
  const Name slot = watched(one, shortcutS);
  auto both = events(slot);
  auto upOnly = events(EventType::keyUp, slot);
  clock.run();
  press(shortcutS);
  QList<EventType> heardBoth, heardUps;
  both->forEach([&](EventType event) { heardBoth << event; });
  upOnly->forEach([&](EventType event) { heardUps << event; });
  release(shortcutS);
  EXPECT_EQ(heardBoth, (QList{EventType::keyDown, EventType::keyUp}));
  EXPECT_EQ(heardUps, QList{EventType::keyUp});
  removeHandler(slot);
  both.reset();
  clock.run();
  EXPECT_EQ(press(shortcutS), KeyOutcome::Taken) << "a stream still needs it";
  upOnly.reset();
  clock.run();
  EXPECT_TRUE(service->live.empty());
}

}  // namespace
}  // namespace KeyboardShortcuts
