#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>

namespace testing_support {

/// The desktop that has an opinion about light and dark, on a connection of its own to the bus at `address`.
class SettingsPortal : public QDBusVirtualObject {
 public:
  explicit SettingsPortal(const QString& address);
  ~SettingsPortal() override;

  /// Announces a value; the desktops' are 0 for no preference, 1 for dark and 2 for light.
  void choose(const QVariant& value, const QString& key = QStringLiteral("color-scheme"));

  QVariant answer;  // to the question for color-scheme; an error where there is none
  int questions = 0;

 private:
  [[nodiscard]] QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

  QDBusConnection bus;
};

}  // namespace testing_support
