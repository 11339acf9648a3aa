#include "platform/base/Environment.h"
#include "platform/input/KeyCodes.h"
#include "platform/input/OwnCommand.h"
#include "platform/input/wayland/GnomeKeyBinder.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScratchHome.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace platform;

namespace {

class GnomeKeyBinderTest : public testing::Test {
 protected:
  GnomeKeyBinderTest() {
    Environment::provide<TaskAsker>(std::make_shared<TaskAsker>(
        [this](const Task& task, std::function<void(const TaskAnswer&)> onAnswer) -> Result<OwnedTask> {
          asked << task.arguments;
          answer = std::move(onAnswer);
          return OwnedTask(std::make_shared<int>());
        }));
    binder = std::make_unique<GnomeKeyBinder>(
        KeyBinder::Listener{[](KeyAction, const QString&) {}, [] {}, [this] { isUnavailable = true; }});
  }
  void answerWell() {
    TaskAnswer good;
    good.isGood = true;
    std::exchange(answer, nullptr)(good);
    clock.run();
  }
  static void agree(bool isAgreed) { UserDefaults::standard().set(hotKeysMayBeBound, isAgreed); }
  static HotKey capture() { return {KeyCode::s, 0xA00, {}, u"capture"_s, u"Capture"_s, u"--capture"_s}; }

  const testing_support::ScratchHome home;
  ManualClock clock;
  testing_support::LogCapture log;
  QList<QStringList> asked;
  std::function<void(const TaskAnswer&)> answer;
  bool isUnavailable = false;
  std::unique_ptr<GnomeKeyBinder> binder;
};

TEST_F(GnomeKeyBinderTest, WritesOnceTheUserAgreesAndTakesBackWhenHeDoesNot) {
  binder->bind({capture()});
  EXPECT_EQ(binder->state().way, HotKeyWay::Undecided);
  answerWell();
  EXPECT_EQ(binder->state().way, HotKeyWay::Gnome);
  EXPECT_EQ(asked, (QList<QStringList>{{u"gnome-can-add"_s}})) << "nothing is touched unasked";
  agree(true);
  const QStringList written{u"gnome-set"_s, u"capture"_s, u"Sorrel: Capture"_s, ownCommand(u"--capture"_s),
                            u"<Alt><Shift>s"_s};
  EXPECT_EQ(asked.constLast(), written);

  binder->bind({});
  agree(false);
  EXPECT_EQ(asked.size(), 2) << "one writing at a time";
  answerWell();
  EXPECT_EQ(asked.constLast(), QStringList{u"gnome-set"_s}) << "the last word counts";
  answerWell();
  EXPECT_EQ(asked.size(), 3);
}

TEST_F(GnomeKeyBinderTest, IsUnavailableWithoutCustomKeysAndWithoutAnAnswer) {
  std::exchange(answer, nullptr)({});
  clock.run();
  EXPECT_TRUE(isUnavailable);

  isUnavailable = false;
  binder = std::make_unique<GnomeKeyBinder>(
      KeyBinder::Listener{[](KeyAction, const QString&) {}, [] {}, [this] { isUnavailable = true; }});
  clock.advance(std::chrono::seconds(9));
  EXPECT_FALSE(isUnavailable);
  clock.advance(std::chrono::seconds(1));
  EXPECT_TRUE(isUnavailable);
}

}  // namespace
