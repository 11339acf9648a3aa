#pragma once

#include "platform/base/Subscription.h"

#include <QString>
#include <QVariant>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace platform {

struct Notification {
  QString name;
  QVariant object;
  QVariantMap userInfo;
};

/// Broadcasts within the program: who posts need not know who listens.
///
/// An observer hears the names it asked for, and, if it named an object, only those posted with an equal one.
/// It is called before post() returns, in the order of registration. On the Main queue it is called on the
/// main thread: at once when the post comes from there, else through MainQueue. Observers may come and go
/// while a notification is under way: one that has ended hears nothing more, one added hears the next.
class NotificationCenter {
 public:
  enum class Queue { PostingThread, Main };
  using Block = std::function<void(const Notification&)>;

  static NotificationCenter& defaultCenter();

  [[nodiscard]] Subscription addObserver(const QString& name, Queue queue, Block block,
                                         std::optional<QVariant> object = std::nullopt);
  void post(const QString& name, const QVariant& object = {}, const QVariantMap& userInfo = {});

 private:
  struct Observer;
  [[nodiscard]] std::vector<std::shared_ptr<Observer>> hearersOf(const Notification& notification);

  std::mutex mutex;  // held while the list is read or changed, never while a block runs
  std::vector<std::weak_ptr<Observer>> observers;
};

}  // namespace platform
