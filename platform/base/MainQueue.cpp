#include "platform/base/MainQueue.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimer>

namespace platform {

struct WorkItem::State {
  qint64 due = 0;
  std::chrono::milliseconds interval{0};
  std::chrono::milliseconds tolerance{0};
  MainQueue::Block block;
  bool isCancelled = false;
};

WorkItem& WorkItem::operator=(WorkItem&& other) noexcept {
  if (this != &other) {
    cancel();
    state = std::move(other.state);
  }
  return *this;
}

void WorkItem::cancel() {
  const auto cancelled = std::exchange(state, nullptr);
  if (!cancelled)
    return;
  cancelled->isCancelled = true;
  auto& queue = MainQueue::main();
  const std::lock_guard lock(queue.mutex);
  std::erase(queue.items, cancelled);
}

bool WorkItem::isPending() const {
  auto& queue = MainQueue::main();
  const std::lock_guard lock(queue.mutex);
  return state && std::find(queue.items.begin(), queue.items.end(), state) != queue.items.end();
}

MainQueue& MainQueue::main() {
  // Never destroyed: work may still be cancelled while the program's other statics go.
  static MainQueue* const queue = new MainQueue;
  return *queue;
}

MainQueue::MainQueue() : timer(std::make_unique<QTimer>()) {
  timer->setSingleShot(true);
  timer->moveToThread(QCoreApplication::instance()->thread());
  QObject::connect(timer.get(), &QTimer::timeout, timer.get(), [this] { runDue(); });
}

MainQueue::~MainQueue() = default;

void MainQueue::async(Block block) {
  add({}, {}, {}, std::move(block));
}

WorkItem MainQueue::asyncAfter(Milliseconds delay, Block block) {
  return WorkItem(add(delay, {}, {}, std::move(block)));
}

WorkItem MainQueue::scheduleRepeating(Milliseconds interval, Milliseconds tolerance, Block block) {
  return WorkItem(add(interval, interval, tolerance, std::move(block)));
}

QDateTime MainQueue::now() const {
  return manual ? manual->wall : QDateTime::currentDateTimeUtc();
}

bool MainQueue::isMainThread() {
  return QThread::currentThread() == QCoreApplication::instance()->thread();
}

qint64 MainQueue::uptime() const {
  using namespace std::chrono;
  return manual ? manual->elapsed
                : duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

MainQueue::Item MainQueue::add(Milliseconds delay, Milliseconds interval, Milliseconds tolerance,
                               Block block) {
  auto item = std::make_shared<WorkItem::State>();
  item->due = uptime() + std::max<qint64>(delay.count(), 0);
  item->interval = interval;
  item->tolerance = tolerance;
  item->block = std::move(block);
  {
    const std::lock_guard lock(mutex);
    const auto later = [](const Item& left, const Item& right) { return left->due < right->due; };
    items.insert(std::upper_bound(items.begin(), items.end(), item, later), item);
  }
  if (isMainThread())
    arm();
  else
    QMetaObject::invokeMethod(timer.get(), [this] { arm(); });
  return item;
}

MainQueue::Item MainQueue::takeDue(qint64 until) {
  const std::lock_guard lock(mutex);
  if (items.empty() || items.front()->due > until)
    return nullptr;
  Item item = items.front();
  items.erase(items.begin());
  return item;
}

void MainQueue::runDue() {
  // What a block adds waits for the next turn of the event loop, so that the desktop's events are never
  // starved.
  std::vector<Item> turn;
  while (Item item = takeDue(uptime()))
    turn.push_back(std::move(item));
  for (const Item& item : turn) {
    if (item->isCancelled)
      continue;
    item->block();
    if (item->interval.count() > 0 && !item->isCancelled) {
      item->due = std::max(item->due + item->interval.count(), uptime());
      const std::lock_guard lock(mutex);
      const auto later = [](const Item& left, const Item& right) { return left->due < right->due; };
      items.insert(std::upper_bound(items.begin(), items.end(), item, later), item);
    }
  }
  arm();
}

void MainQueue::arm() {
  if (manual)
    return;
  const std::lock_guard lock(mutex);
  if (items.empty()) {
    timer->stop();
    return;
  }
  const auto& next = items.front();
  const qint64 wait = std::clamp<qint64>(next->due - uptime(), 0, std::numeric_limits<int>::max());
  timer->setTimerType(next->tolerance.count() >= 1000 ? Qt::VeryCoarseTimer : Qt::PreciseTimer);
  timer->start(static_cast<int>(wait));
}

ManualClock::ManualClock(const QDateTime& start) : wall(start.toUTC()) {
  auto& queue = MainQueue::main();
  previous = queue.manual;
  queue.manual = this;
  queue.timer->stop();
  setAside.swap(queue.items);
}

ManualClock::~ManualClock() {
  auto& queue = MainQueue::main();
  queue.items.swap(setAside);
  queue.manual = previous;
  queue.arm();
}

void ManualClock::advance(MainQueue::Milliseconds by) {
  auto& queue = MainQueue::main();
  const qint64 end = elapsed + by.count();
  const auto stepTo = [this](qint64 time) {
    wall = wall.addMSecs(time - elapsed);
    elapsed = time;
  };
  for (;;) {
    qint64 due = 0;
    {
      const std::lock_guard lock(queue.mutex);
      if (queue.items.empty() || queue.items.front()->due > end)
        break;
      due = queue.items.front()->due;
    }
    stepTo(std::max(due, elapsed));
    queue.runDue();
  }
  stepTo(end);
}

void ManualClock::setNow(const QDateTime& now) {
  wall = now.toUTC();
}

int ManualClock::pending() const {
  return static_cast<int>(MainQueue::main().items.size());
}

}  // namespace platform
