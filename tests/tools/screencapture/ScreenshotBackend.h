#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>

#include <functional>

namespace testing_support {

/// The part of a desktop that answers its portal's front end: it takes screenshots, picks colors, and asks
/// the user for leave.
class ScreenshotBackend : public QDBusVirtualObject {
 public:
  /// On a connection of its own to the bus at `address`.
  explicit ScreenshotBackend(const QString& address);
  ~ScreenshotBackend() override;

  /// How the user answers the question.
  enum class Leave { Granted, Denied };
  Leave leave = Leave::Granted;
  /// What a screenshot's answer is: the response's code and results; nothing for one that never comes.
  /// Whether it is to be interactive is told.
  std::function<std::optional<std::pair<uint, QVariantMap>>(bool isInteractive)> screenshot;

  /// The methods that were called so far.
  QStringList calls;

 private:
  [[nodiscard]] QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

  QDBusConnection bus;
};

}  // namespace testing_support
