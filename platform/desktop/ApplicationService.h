#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QList>
#include <QObject>
#include <QUrl>
#include <QVariantMap>

#include <functional>

namespace platform {

/// The program on the session bus, as launchers and other programs call it: an object of the interface
/// org.freedesktop.Application, by the rules of desktop entries. All slots are the
/// interface's own.
///
/// The name on the bus is asked for without waiting. One bus may have several instances, one for each
/// display: the first has the name, the next has it when that one ends, and without a bus all go without.
class ApplicationService : public QObject, protected QDBusContext {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

 public:
  /// Called from the event loop, with the caller's activation token kept before.
  struct Handlers {
    std::function<void()> activate;
    std::function<void(const QList<QUrl>&)> open;
    /// False if there is no such action, which the caller is told.
    std::function<bool(const QByteArray&)> activateAction;
  };

  explicit ApplicationService(Handlers handlers);
  ~ApplicationService() override;

 public Q_SLOTS:
  void Activate(const QVariantMap& platformData);
  void Open(const QStringList& uris, const QVariantMap& platformData);
  void ActivateAction(const QString& action, const QVariantList& parameters, const QVariantMap& platformData);

 private:
  const Handlers handlers;
  QDBusConnection bus;
};

}  // namespace platform
