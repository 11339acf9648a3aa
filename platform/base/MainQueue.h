#pragma once

#include <QDateTime>

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

class QTimer;

namespace platform {

/// A block that the main queue will run, for as long as this lives: a field of whoever wants it done, so that
/// the block may use `this`. Cancelled before it runs, also by another block that is due, it never runs; one
/// that repeats may be cancelled from inside. Main thread only.
class [[nodiscard]] WorkItem {
 public:
  WorkItem() = default;
  WorkItem(WorkItem&&) noexcept = default;
  WorkItem& operator=(WorkItem&& other) noexcept;
  ~WorkItem() { cancel(); }

  void cancel();
  [[nodiscard]] bool isPending() const;

 private:
  friend class MainQueue;
  struct State;
  explicit WorkItem(std::shared_ptr<State> shared) : state(std::move(shared)) {}
  std::shared_ptr<State> state;
};

/// The main thread's queue of work and the program's only source of time.
///
/// Blocks run on the main thread from the event loop, in order of their due time and, at the same time, in
/// the order in which they were handed over; never inside the call that hands them over. In a test a
/// ManualClock takes the queue over: nothing then runs by itself, and time stands still until the test turns
/// it.
class MainQueue {
 public:
  using Block = std::function<void()>;
  using Milliseconds = std::chrono::milliseconds;

  static MainQueue& main();

  MainQueue(const MainQueue&) = delete;
  MainQueue& operator=(const MainQueue&) = delete;

  /// Belongs to nobody, and runs whatever becomes of the caller. May be called from any thread; everything
  /// else here belongs to the main thread.
  void async(Block block);
  /// Without a delay, at the event loop's next turn.
  WorkItem asyncAfter(Milliseconds delay, Block block);
  /// Runs `block` each `interval` until cancelled, first after one interval. The system may let each turn
  /// slip by up to `tolerance`, so that it can wake for several things at once.
  WorkItem scheduleRepeating(Milliseconds interval, Milliseconds tolerance, Block block);

  /// Milliseconds of a clock that never goes back.
  [[nodiscard]] qint64 uptime() const;
  /// The wall clock, in UTC.
  [[nodiscard]] QDateTime now() const;
  [[nodiscard]] static bool isMainThread();

 private:
  friend class WorkItem;
  friend class ManualClock;
  MainQueue();
  ~MainQueue();

  using Item = std::shared_ptr<WorkItem::State>;
  Item add(Milliseconds delay, Milliseconds interval, Milliseconds tolerance, Block block);
  Item takeDue(qint64 until);
  void runDue();
  void arm();

  mutable std::mutex mutex;  // guards `items`, for async() from other threads
  std::vector<Item> items;   // sorted by due time, then by order of arrival
  std::unique_ptr<QTimer> timer;
  class ManualClock* manual = nullptr;
};

/// Takes the main queue over while it lives, with the clock at `start`. Work that was waiting before is out
/// of reach meanwhile, and what is left when the clock goes is dropped.
class ManualClock {
 public:
  explicit ManualClock(const QDateTime& start = QDateTime::fromMSecsSinceEpoch(0, Qt::UTC));
  ~ManualClock();
  ManualClock(const ManualClock&) = delete;
  ManualClock& operator=(const ManualClock&) = delete;

  /// Runs all work that is due, stepping the clock from one due time to the next, until `by` has gone.
  void advance(MainQueue::Milliseconds by);
  /// Runs what is due now.
  void run() { advance(MainQueue::Milliseconds(0)); }
  /// Moves the wall clock without letting time pass on the queue, as a user who sets the date does.
  void setNow(const QDateTime& now);
  /// How many blocks wait.
  [[nodiscard]] int pending() const;

 private:
  friend class MainQueue;
  qint64 elapsed = 0;
  QDateTime wall;
  std::vector<MainQueue::Item> setAside;
  ManualClock* previous;
};

}  // namespace platform
