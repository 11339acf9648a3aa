#pragma once

#include <QString>
#include <QVariant>

#include <functional>
#include <memory>
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
/// main thread: at once when the post comes from there, else through MainQueue. Observers may be added and
/// removed while a notification is under way: one removed hears nothing more, one added hears the next.
class NotificationCenter {
 public:
  enum class Queue { PostingThread, Main };
  using Block = std::function<void(const Notification&)>;
  struct Observer;
  /// Names one observer; dropping it changes nothing.
  using Token = std::weak_ptr<Observer>;

  static NotificationCenter& defaultCenter();

  Token addObserver(const QString& name, Queue queue, Block block,
                    std::optional<QVariant> object = std::nullopt);
  void removeObserver(const Token& token);
  void post(const QString& name, const QVariant& object = {}, const QVariantMap& userInfo = {});

 private:
  std::vector<std::shared_ptr<Observer>> observers;
};

}  // namespace platform
