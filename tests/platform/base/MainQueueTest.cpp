#include "platform/base/MainQueue.h"
#include "platform/base/NotificationCenter.h"
#include "platform/base/Published.h"

#include <QEventLoop>

#include <gtest/gtest.h>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using platform::MainQueue;
using platform::ManualClock;
using platform::Notification;
using platform::NotificationCenter;
using platform::Subscription;
using platform::WorkItem;

namespace {

TEST(MainQueueTest, WorkRunsInOrderOfItsTimeAndNeverInsideTheCall) {
  ManualClock clock;
  auto& queue = MainQueue::main();
  QStringList ran;
  const auto note = [&](const QString& what) { return [&ran, what] { ran << what; }; };
  const WorkItem late = queue.asyncAfter(20ms, note(u"late"_s));
  const WorkItem early = queue.asyncAfter(10ms, note(u"early"_s));
  const WorkItem second = queue.asyncAfter(10ms, note(u"early, second"_s));
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
  WorkItem inner;
  const WorkItem outer =
      queue.asyncAfter(10ms, [&] { inner = queue.asyncAfter(10ms, [&] { ranAt = queue.now(); }); });
  clock.advance(100ms);
  EXPECT_EQ(start.msecsTo(ranAt), 20) << "what a block adds runs at its own time";
}

TEST(MainQueueTest, CancelledWorkNeverRuns) {
  ManualClock clock;
  auto& queue = MainQueue::main();
  int ran = 0;
  WorkItem second;
  // The first cancels the second though both are due.
  const WorkItem first = queue.asyncAfter(5ms, [&] { second.cancel(); });
  second = queue.asyncAfter(5ms, [&] { ++ran; });
  WorkItem replaced = queue.asyncAfter(5ms, [&] { ++ran; });
  replaced = queue.asyncAfter(1h, [&] { ++ran; });
  {
    const WorkItem dropped = queue.asyncAfter(5ms, [&] { ++ran; });
  }
  WorkItem repeating = queue.scheduleRepeating(10ms, 0ms, [&] {
    if (++ran == 3)
      repeating.cancel();
  });
  EXPECT_TRUE(second.isPending());
  clock.advance(100ms);
  EXPECT_EQ(ran, 3);
  EXPECT_EQ(clock.pending(), 1);
}

TEST(MainQueueTest, TheRealQueueRunsWorkFromOtherThreadsOnTheMainThread) {
  QEventLoop loop;
  bool onMain = false;
  QStringList order;
  const WorkItem timed = MainQueue::main().asyncAfter(1ms, [&] { order << u"timed"_s; });
  WorkItem end;
  std::thread other([&] {
    MainQueue::main().async([&] {
      onMain = MainQueue::isMainThread();
      end = MainQueue::main().asyncAfter(2ms, [&] { loop.quit(); });
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
  const Subscription any = center.addObserver(name, Queue::PostingThread, note(u"any "_s));
  const Subscription onlyB = center.addObserver(name, Queue::Main, note(u"only b "_s), u"b"_s);
  const Subscription other = center.addObserver(u"another"_s, Queue::Main, note(u"never "_s));
  center.post(name, u"a"_s);
  center.post(name, u"b"_s, {{u"k"_s, u"!"_s}});
  EXPECT_EQ(heard.join(u','), u"any a,any b!,only b b!"_s);
}

TEST(NotificationCenterTest, ObserversMayComeAndGoDuringAPost) {
  using Queue = NotificationCenter::Queue;
  NotificationCenter center;
  QString heard;
  Subscription second, third;
  const Subscription first = center.addObserver(name, Queue::PostingThread, [&](const auto&) {
    heard += u'1';
    second.end();
    if (heard.size() == 1)
      third = center.addObserver(name, Queue::PostingThread, [&](const auto&) { heard += u'3'; });
  });
  second = center.addObserver(name, Queue::PostingThread, [&](const auto&) { heard += u'2'; });
  center.post(name);
  EXPECT_EQ(heard, u"1"_s);
  center.post(name);
  EXPECT_EQ(heard, u"113"_s);
}

TEST(NotificationCenterTest, WhatIsUnderWayToOneWhoHasGoneIsNotDelivered) {
  ManualClock clock;
  NotificationCenter center;
  int heard = 0;
  Subscription gone =
      center.addObserver(name, NotificationCenter::Queue::Main, [&](const auto&) { ++heard; });
  std::thread([&] { center.post(name); }).join();
  gone.end();
  clock.run();
  EXPECT_EQ(heard, 0);
}

TEST(NotificationCenterTest, APostFromAnotherThreadReachesTheMainThread) {
  ManualClock clock;
  NotificationCenter center;
  bool onMain = false;
  const Subscription observer = center.addObserver(name, NotificationCenter::Queue::Main,
                                                   [&](const auto&) { onMain = MainQueue::isMainThread(); });
  std::thread([&] { center.post(name); }).join();
  EXPECT_FALSE(onMain);
  clock.run();
  EXPECT_TRUE(onMain);
}

struct Model {
  platform::Observers observers;
  platform::Published<int> count{observers, 0};
  platform::Published<QString> text{observers};
};

TEST(SubscriptionTest, HearsOneFieldOrAllOfThemBeforeTheChange) {
  Model model;
  QStringList heard;
  const Subscription all = model.observers.add([&] { heard << u"some"_s; });
  const Subscription which = model.observers.add(
      [&](platform::Observers::Field field) { heard << (field == &model.text ? u"text"_s : u"other"_s); });
  const Subscription one = model.count.observe([&] { heard << QString::number(model.count); });
  model.count = 5;
  model.text = u"new"_s;
  EXPECT_EQ(heard.join(u' '), u"some other 0 some text"_s);
}

TEST(SubscriptionTest, MayEndInsideItsOwnCallAndOutliveItsSource) {
  auto model = std::make_unique<Model>();
  int heard = 0;
  auto captured = std::make_shared<int>(7);
  Subscription once = model->count.observe([&, captured] {
    once.end();
    ++heard;
    EXPECT_EQ(*captured, 7);
    model->count = 2;  // the call within the call finds it ended
  });
  model->count = 1;
  EXPECT_EQ(heard, 1);
  EXPECT_EQ(captured.use_count(), 1) << "what the block held is let go";
  Subscription last = model->observers.add([&] {
    ++heard;
    model.reset();
  });
  model->observers.tell();
  EXPECT_EQ(heard, 2);
  last.end();
}

}  // namespace
