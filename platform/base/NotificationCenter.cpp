#include "platform/base/NotificationCenter.h"

#include "platform/base/MainQueue.h"

#include <atomic>
#include <mutex>

namespace platform {

struct NotificationCenter::Observer {
  QString name;
  Queue queue;
  Block block;
  std::optional<QVariant> object;
  std::atomic<bool> isRemoved = false;
};

namespace {

std::mutex observersMutex;  // held while the list is read or changed, never while a block runs

}  // namespace

NotificationCenter& NotificationCenter::defaultCenter() {
  static NotificationCenter center;
  return center;
}

NotificationCenter::Token NotificationCenter::addObserver(const QString& name, Queue queue, Block block,
                                                          std::optional<QVariant> object) {
  auto observer = std::make_shared<Observer>();
  observer->name = name;
  observer->queue = queue;
  observer->block = std::move(block);
  observer->object = std::move(object);
  const std::lock_guard lock(observersMutex);
  observers.push_back(observer);
  return observer;
}

void NotificationCenter::removeObserver(const Token& token) {
  const auto observer = token.lock();
  if (!observer)
    return;
  observer->isRemoved = true;
  const std::lock_guard lock(observersMutex);
  std::erase(observers, observer);
}

void NotificationCenter::post(const QString& name, const QVariant& object, const QVariantMap& userInfo) {
  std::vector<std::shared_ptr<Observer>> hearers;
  {
    const std::lock_guard lock(observersMutex);
    for (const auto& observer : observers)
      if (observer->name == name && (!observer->object || *observer->object == object))
        hearers.push_back(observer);
  }
  const Notification notification{name, object, userInfo};
  for (const auto& observer : hearers) {
    const auto deliver = [observer, notification] {
      if (!observer->isRemoved)
        observer->block(notification);
    };
    if (observer->queue == Queue::PostingThread || MainQueue::isMainThread())
      deliver();
    else
      MainQueue::main().async(deliver);
  }
}

}  // namespace platform
