#include "platform/base/NotificationCenter.h"

#include "platform/base/MainQueue.h"

namespace platform {

struct NotificationCenter::Observer : Subscription::Listener {
  QString name;
  Queue queue = Queue::Main;
  Block block;
  std::optional<QVariant> object;
};

NotificationCenter& NotificationCenter::defaultCenter() {
  static NotificationCenter center;
  return center;
}

Subscription NotificationCenter::addObserver(const QString& name, Queue queue, Block block,
                                             std::optional<QVariant> object) {
  auto observer = std::make_shared<Observer>();
  observer->name = name;
  observer->queue = queue;
  observer->block = std::move(block);
  observer->object = std::move(object);
  const std::lock_guard lock(mutex);
  std::erase_if(observers, [](const auto& weak) { return weak.expired(); });
  observers.push_back(observer);
  return Subscription(std::move(observer));
}

void NotificationCenter::post(const QString& name, const QVariant& object, const QVariantMap& userInfo) {
  const Notification notification{name, object, userInfo};
  for (const auto& observer : hearersOf(notification)) {
    const auto deliver = [observer, notification] {
      if (!observer->hasEnded)
        observer->block(notification);
    };
    if (observer->queue == Queue::PostingThread || MainQueue::isMainThread())
      deliver();
    else
      MainQueue::main().async(deliver);
  }
}

std::vector<std::shared_ptr<NotificationCenter::Observer>> NotificationCenter::hearersOf(
    const Notification& notification) {
  std::vector<std::shared_ptr<Observer>> hearers;
  const std::lock_guard lock(mutex);
  for (const auto& weak : observers)
    if (const auto observer = weak.lock(); observer && observer->name == notification.name &&
                                           (!observer->object || *observer->object == notification.object))
      hearers.push_back(observer);
  return hearers;
}

}  // namespace platform
