#pragma once

#include "platform/base/MainQueue.h"
#include "platform/base/Subscription.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QVariantMap>

#include <functional>
#include <memory>

namespace platform {

/// The desktop's portal: a front end on the session bus, which has its answers from the desktop that runs.
/// Main thread only.
///
/// The connection is one of its own, because the front end ties what it knows of a program to it, and may be
/// told the program's name only before anything else. Nothing here waits for anybody.
class Portal : public QObject {
  Q_OBJECT

 public:
  static const QString service;
  static const QString path;
  /// Whether a call may have the bus start a front end that isn't there.
  enum class FrontEnd { Started, Present };

  /// The environment's own.
  static std::shared_ptr<Portal> shared();

  Portal();
  ~Portal() override;

  [[nodiscard]] QDBusConnection& bus() { return connection; }
  /// Where the object of a request or session ("request", "session") is going to be that has this token.
  [[nodiscard]] QString handlePath(const QString& kind, const QString& token) const;
  /// One for each request.
  [[nodiscard]] QString nextToken();

  /// After the front end has gone, with all requests and sessions; and after one has come.
  [[nodiscard]] Subscription observeGoing(std::function<void()> block) { return going.add(std::move(block)); }
  [[nodiscard]] Subscription observeComing(std::function<void()> block) {
    return coming.add(std::move(block));
  }

 private:
  QDBusConnection connection;
  const QString connectionName;
  qint64 lastToken = 0;
  Listeners<> going, coming;
};

struct PortalCall {
  QString interface;
  QString method;
  QVariantList arguments;  // those before the options, which come last in every method
  QVariantMap options;     // but the request's own token
  Portal::FrontEnd frontEnd = Portal::FrontEnd::Present;
  /// How long the answer may take, be it the user who is asked.
  std::chrono::milliseconds patience = std::chrono::seconds(10);
};

/// How a request ended.
struct PortalAnswer {
  enum class Outcome {
    Granted,
    Cancelled,  // by the user
    Refused,    // by the desktop, or an answer that makes no sense
    Failed,     // there is no front end, it doesn't know the call, or it went before it answered
    TimedOut,
  };
  Outcome outcome = Outcome::Failed;
  QVariantMap results;
  QString reason;  // for the log, where it isn't granted
};

/// A question that is answered by a signal, sooner or later. A field of whoever asks: when it goes, nothing
/// more is heard of the answer, and a dialog that stands on the screen is taken back.
class PortalRequest : public QObject {
  Q_OBJECT

 public:
  using OnAnswer = std::function<void(const PortalAnswer&)>;

  /// `onAnswer` is called once, never before this has returned; it may end the request.
  PortalRequest(const PortalCall& call, OnAnswer onAnswer);
  ~PortalRequest() override;

 private:
  void taken(const QDBusMessage& reply);
  void listenAt(const QString& path);
  void finish(const PortalAnswer& answer);
  Q_SLOT void responded(const QDBusMessage& message);

  const std::shared_ptr<Portal> portal;
  OnAnswer onAnswer;
  QString path;  // of the request's object
  bool isFinished = false;
  WorkItem limit;  // then the answer, which is under way
  Subscription going;
};

}  // namespace platform
