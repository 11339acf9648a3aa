#include "platform/base/MainQueue.h"
#include "platform/base/NotificationCenter.h"

#include <QEventLoop>

#include <gtest/gtest.h>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using platform::MainQueue;
using platform::ManualClock;
using platform::Notification;
using platform::NotificationCenter;

namespace {

TEST(MainQueueTest, WorkRunsInOrderOfItsTimeAndNeverInsideTheCall) {
  ManualClock clock;
  auto& queue = MainQueue::main();
  QStringList ran;
  const auto note = [&](const QString& what) { return [&ran, what] { ran << what; }; };
  queue.asyncAfter(20ms, note(u"late"_s));
  queue.asyncAfter(10ms, note(u"early"_s));
  queue.asyncAfter(10ms, note(u"early, second"_s));
  queue.async(note(u"at once"_s));
  EXPECT_TRUE(ran.isEmpty());
  clock.advance(10ms);
  EXPECT_EQ(ran.join(u'|'), u"at once|early|early, second"_s);
  clock.advance(9ms);
  EXPECT_EQ(ran.size(), 3);
  clock.advance(1ms);
  EXPECT_EQ(ran.last(), u"late"_s);

  QDateTime ranAt;
  const QDateTime start = queue.now();
  queue.asyncAfter(10ms, [&] { queue.asyncAfter(10ms, [&] { ranAt = queue.now(); }); });
  clock.advance(100ms);
  EXPECT_EQ(start.msecsTo(ranAt), 20) << "what a block adds runs at its own time";
}

TEST(MainQueueTest, CancelledWorkNeverRuns) {
  ManualClock clock;
  auto& queue = MainQueue::main();
  int ran = 0;
  platform::WorkItem second;
  // The first cancels the second though both are due.
  queue.asyncAfter(5ms, [&] { second.cancel(); });
  second = queue.asyncAfter(5ms, [&] { ++ran; });
  platform::WorkItem repeating = queue.scheduleRepeating(10ms, 0ms, [&] {
    if (++ran == 3)
      repeating.cancel();
  });
  EXPECT_TRUE(second.isPending());
  clock.advance(100ms);
  EXPECT_EQ(ran, 3);
  EXPECT_EQ(clock.pending(), 0);
  platform::WorkItem().cancel();  // an empty one does no harm
}

TEST(MainQueueTest, TheRealQueueRunsWorkFromOtherThreadsOnTheMainThread) {
  QEventLoop loop;
  bool onMain = false;
  QStringList order;
  MainQueue::main().asyncAfter(1ms, [&] { order << u"timed"_s; });
  std::thread other([&] {
    MainQueue::main().async([&] {
      onMain = MainQueue::isMainThread();
      MainQueue::main().asyncAfter(2ms, [&] { loop.quit(); });
    });
  });
  loop.exec();
  other.join();
  EXPECT_TRUE(onMain);
  EXPECT_EQ(order.size(), 1);
}

const QString name = u"something happened"_s;

TEST(NotificationCenterTest, ObserversHearTheirNameAndObject) {
  NotificationCenter center;
  QStringList heard;
  const auto note = [&](const QString& who) {
    return [&heard, who](const Notification& notification) {
      heard << who + notification.object.toString() + notification.userInfo.value(u"k"_s).toString();
    };
  };
  using Queue = NotificationCenter::Queue;
  center.addObserver(name, Queue::PostingThread, note(u"any "_s));
  center.addObserver(name, Queue::Main, note(u"only b "_s), u"b"_s);
  center.addObserver(u"another"_s, Queue::Main, note(u"never "_s));
  center.post(name, u"a"_s);
  center.post(name, u"b"_s, {{u"k"_s, u"!"_s}});
  EXPECT_EQ(heard.join(u','), u"any a,any b!,only b b!"_s);
}

TEST(NotificationCenterTest, ObserversMayComeAndGoDuringAPost) {
  using Queue = NotificationCenter::Queue;
  NotificationCenter center;
  QString heard;
  NotificationCenter::Token second;
  center.addObserver(name, Queue::PostingThread, [&](const auto&) {
    heard += u'1';
    center.removeObserver(second);
    center.addObserver(name, Queue::PostingThread, [&](const auto&) { heard += u'3'; });
  });
  second = center.addObserver(name, Queue::PostingThread, [&](const auto&) { heard += u'2'; });
  center.post(name);
  EXPECT_EQ(heard, u"1"_s);
  center.post(name);
  EXPECT_EQ(heard, u"113"_s);
}

TEST(NotificationCenterTest, APostFromAnotherThreadReachesTheMainThread) {
  ManualClock clock;
  NotificationCenter center;
  bool onMain = false;
  center.addObserver(name, NotificationCenter::Queue::Main,
                     [&](const auto&) { onMain = MainQueue::isMainThread(); });
  std::thread([&] { center.post(name); }).join();
  EXPECT_FALSE(onMain);
  clock.run();
  EXPECT_TRUE(onMain);
}

}  // namespace
