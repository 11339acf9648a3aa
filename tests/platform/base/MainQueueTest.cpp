#include "platform/base/MainQueue.h"
#include "platform/base/NotificationCenter.h"

#include <QEventLoop>

#include <gtest/gtest.h>
#include <thread>

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
  queue.asyncAfter(20ms, note(QStringLiteral("late")));
  queue.asyncAfter(10ms, note(QStringLiteral("early")));
  queue.asyncAfter(10ms, note(QStringLiteral("early, second")));
  queue.async(note(QStringLiteral("at once")));
  EXPECT_TRUE(ran.isEmpty());
  clock.advance(10ms);
  EXPECT_EQ(ran.join(u'|'), QStringLiteral("at once|early|early, second"));
  clock.advance(9ms);
  EXPECT_EQ(ran.size(), 3);
  clock.advance(1ms);
  EXPECT_EQ(ran.last(), QStringLiteral("late"));
}

TEST(MainQueueTest, WhatABlockAddsRunsAtItsOwnTime) {
  ManualClock clock(QDateTime::fromMSecsSinceEpoch(1000, Qt::UTC));
  QList<qint64> times;
  MainQueue::main().asyncAfter(10ms, [&] {
    MainQueue::main().asyncAfter(10ms, [&] { times << MainQueue::main().now().toMSecsSinceEpoch(); });
  });
  clock.advance(100ms);
  EXPECT_EQ(times, QList<qint64>({1020}));
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
  MainQueue::main().asyncAfter(1ms, [&] { order << QStringLiteral("timed"); });
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

const QString name = QStringLiteral("something happened");

TEST(NotificationCenterTest, ObserversHearTheirNameAndObject) {
  NotificationCenter center;
  QStringList heard;
  const auto note = [&](const QString& who) {
    return [&heard, who](const Notification& notification) {
      heard << who + notification.object.toString() +
                   notification.userInfo.value(QStringLiteral("k")).toString();
    };
  };
  using Queue = NotificationCenter::Queue;
  center.addObserver(name, Queue::PostingThread, note(QStringLiteral("any ")));
  center.addObserver(name, Queue::Main, note(QStringLiteral("only b ")), QStringLiteral("b"));
  center.addObserver(QStringLiteral("another"), Queue::Main, note(QStringLiteral("never ")));
  center.post(name, QStringLiteral("a"));
  center.post(name, QStringLiteral("b"), {{QStringLiteral("k"), QStringLiteral("!")}});
  EXPECT_EQ(heard.join(u','), QStringLiteral("any a,any b!,only b b!"));
}

TEST(NotificationCenterTest, ObserversMayComeAndGoDuringAPost) {
  NotificationCenter center;
  int first = 0;
  int second = 0;
  int added = 0;
  NotificationCenter::Token secondToken;
  center.addObserver(name, NotificationCenter::Queue::PostingThread, [&](const auto&) {
    ++first;
    center.removeObserver(secondToken);
    center.addObserver(name, NotificationCenter::Queue::PostingThread, [&](const auto&) { ++added; });
  });
  secondToken =
      center.addObserver(name, NotificationCenter::Queue::PostingThread, [&](const auto&) { ++second; });
  center.post(name);
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 0);
  EXPECT_EQ(added, 0);
  center.post(name);
  EXPECT_EQ(added, 1);
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
