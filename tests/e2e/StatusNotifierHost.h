#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QImage>
#include <QObject>
#include <QPoint>
#include <QStringList>

namespace e2e {

/// A desktop's panel, as far as status items go: the watcher where items register, and the host that shows
/// them. It draws nothing; it reads the item that has registered last and acts on it as the user's clicks
/// would. Lives on the bus at `busAddress`. The questions run the event loop, wait for an item, and throw
/// std::runtime_error when it doesn't answer.
class StatusNotifierHost : public QObject, protected QDBusContext {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
  Q_PROPERTY(QStringList RegisteredStatusNotifierItems MEMBER registered)
  Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isHostRegistered)
  Q_PROPERTY(int ProtocolVersion READ protocolVersion)

 public:
  explicit StatusNotifierHost(const QString& busAddress);
  ~StatusNotifierHost() override;

  [[nodiscard]] bool isHostRegistered() const { return true; }
  [[nodiscard]] int protocolVersion() const { return 0; }

  /// The largest picture that the item offers; null if it offers none.
  [[nodiscard]] QImage icon() const;
  /// What the item says to those who rest the pointer on it.
  [[nodiscard]] QString toolTip() const;
  [[nodiscard]] bool hasItem() const { return !registered.isEmpty(); }
  /// Clicks on the item with the left button; a host says where.
  void activate(QPoint point) const;
  /// Tells the item that its menu is about to be shown, and reads its rows: labels without mnemonics, "-" for
  /// a separator.
  QStringList openMenu();
  /// Chooses a row of the menu that was opened last.
  void trigger(qsizetype row) const;

 public Q_SLOTS:
  void RegisterStatusNotifierItem(const QString& serviceOrPath);
  void RegisterStatusNotifierHost(const QString&) {}

 Q_SIGNALS:
  void StatusNotifierItemRegistered(const QString& item);
  void StatusNotifierItemUnregistered(const QString& item);
  void StatusNotifierHostRegistered();

 private:
  QVariantList call(const QString& path, const QString& interface, const QString& method,
                    const QVariantList& arguments) const;
  QVariantList callMenu(const QString& method, const QVariantList& arguments) const;
  [[nodiscard]] QVariant property(const QString& name) const;

  QDBusConnection bus;
  QStringList registered;  // the bus name and object path of each item
  QList<int> rowIds;
};

}  // namespace e2e
