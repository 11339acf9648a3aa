#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>

#include <functional>

namespace testing_support {

/// The portal's front end as far as hot keys go, on a connection of its own to the session bus. It grants
/// everything unless a test says otherwise.
class ShortcutsPortal : public QDBusVirtualObject {
 public:
  /// What a desktop does with the shortcuts that a session is made with.
  enum class Draft { Early, Final };

  explicit ShortcutsPortal(Draft draft = Draft::Final);
  ~ShortcutsPortal() override;

  /// The calls so far, by method; of those that name shortcuts, with their names, texts and keys.
  QStringList calls;
  /// How a request is answered; the code of the response.
  uint code = 0;
  /// What happens instead of the answer to a method: the test's own, with the path of the request.
  QString method;
  std::function<void(const QString& request)> instead;

  void respond(const QString& request, const QVariantList& arguments);
  /// "Activated" or "Deactivated", of the session that was opened last unless `path` says otherwise.
  void send(const QString& signal, const QString& id, const QString& path = {});
  /// The user gives a shortcut other keys.
  void change(const QString& id, const QString& trigger);
  void closeSession();

  [[nodiscard]] const QString& session() const { return openSession; }

 private:
  [[nodiscard]] QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
  [[nodiscard]] QVariantMap resultsOf(const QDBusMessage& message);

  const Draft draft;
  QDBusConnection bus;
  QString openSession;
  QVariant shortcuts;  // of the session
};

}  // namespace testing_support
