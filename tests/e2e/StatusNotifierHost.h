#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QImage>
#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

namespace e2e {

/// One row of a status item's menu, as the panel that draws it gets it.
struct StatusMenuRow {
  int id = 0;
  QString label;
  bool isEnabled = true;
  bool isSeparator = false;
};

/// A desktop's panel, as far as status items go: the watcher where items register, and the host that shows
/// them. It draws nothing; it reads an item and acts on it as the user's clicks would. Lives on the bus at
/// `busAddress`. The questions run the event loop, and throw std::runtime_error when the item doesn't answer.
class StatusNotifierHost : public QObject, protected QDBusContext {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
  Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)
  Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered)
  Q_PROPERTY(int ProtocolVersion READ protocolVersion)

 public:
  explicit StatusNotifierHost(const QString& busAddress);
  ~StatusNotifierHost() override;

  /// The bus name and object path of each item that is there, oldest first.
  [[nodiscard]] QStringList items() const { return registered; }
  [[nodiscard]] bool isHostRegistered() const { return true; }
  [[nodiscard]] int protocolVersion() const { return 0; }

  [[nodiscard]] QVariant property(const QString& item, const QString& name) const;
  /// The largest picture that the item offers; null if it offers none.
  [[nodiscard]] QImage icon(const QString& item) const;
  /// What a left click does, at this point of the screen.
  void activate(const QString& item, QPoint position) const;
  /// Tells the item that its menu is about to be shown, and reads it. Labels are without mnemonics.
  [[nodiscard]] std::vector<StatusMenuRow> openMenu(const QString& item) const;
  /// Chooses a row of the menu.
  void trigger(const QString& item, int row) const;

 public Q_SLOTS:
  void RegisterStatusNotifierItem(const QString& serviceOrPath);
  void RegisterStatusNotifierHost(const QString&) {}

 Q_SIGNALS:
  void StatusNotifierItemRegistered(const QString& item);
  void StatusNotifierItemUnregistered(const QString& item);
  void StatusNotifierHostRegistered();

 private:
  QVariantList call(const QString& item, const QString& path, const QString& interface, const QString& method,
                    const QVariantList& arguments) const;
  [[nodiscard]] QString menuPath(const QString& item) const;

  QDBusConnection bus;
  QStringList registered;
};

}  // namespace e2e
