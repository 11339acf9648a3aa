#pragma once

#include "platform/base/Menu.h"
#include "platform/desktop/tray/StatusNotifierTypes.h"

#include <QObject>

#include <functional>
#include <memory>
#include <vector>

namespace platform {

/// A plain-data menu on the bus, for a desktop's panel that draws it: the object of the interface
/// com.canonical.dbusmenu. All slots, properties and signals are the interface's own.
///
/// Rows are known by numbers, counted from 1 with the rows of a submenu after their own; 0 is the menu
/// itself.
class ExportedMenu : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
  Q_PROPERTY(uint Version READ version CONSTANT)
  Q_PROPERTY(QString Status READ status CONSTANT)
  Q_PROPERTY(QString TextDirection READ textDirection CONSTANT)
  Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

 public:
  using Provider = std::function<std::shared_ptr<const Menu>()>;

  explicit ExportedMenu(Provider provider);

  /// Asks the provider again, and tells the panel if the menu is another now.
  void update();

  [[nodiscard]] uint version() const { return 3; }
  [[nodiscard]] QString status() const { return QStringLiteral("normal"); }
  [[nodiscard]] QString textDirection() const { return QStringLiteral("ltr"); }
  [[nodiscard]] QStringList iconThemePath() const { return {}; }

 public Q_SLOTS:
  uint GetLayout(int parent, int depth, const QStringList& names, platform::StatusNotifier::MenuRow& layout);
  QList<platform::StatusNotifier::RowProperties> GetGroupProperties(const QList<int>& ids,
                                                                    const QStringList& names) const;
  QDBusVariant GetProperty(int id, const QString& name) const;
  void Event(int id, const QString& event, const QDBusVariant& data, uint time);
  QList<int> EventGroup(const QList<platform::StatusNotifier::RowEvent>& events);
  bool AboutToShow(int id);
  QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& unknown);

 Q_SIGNALS:
  void ItemsPropertiesUpdated(const QList<platform::StatusNotifier::RowProperties>& updated,
                              const QList<platform::StatusNotifier::RemovedProperties>& removed);
  void LayoutUpdated(uint revision, int parent);
  void ItemActivationRequested(int id, uint time);

 private:
  [[nodiscard]] bool isRow(int id) const { return id > 0 && id <= static_cast<int>(rows.size()); }
  [[nodiscard]] QVariantMap propertiesOf(int id, const QStringList& names) const;
  [[nodiscard]] StatusNotifier::MenuRow layoutOf(int id, int depth, const QStringList& names) const;
  void collect(const Menu& menu, int parent);

  struct Row {
    const MenuItem* item;
    int parent;
  };
  const Provider provider;
  std::shared_ptr<const Menu> menu;  // whose rows these are
  std::vector<Row> rows;
  QList<QVariantMap> told;
  uint revision = 1;
};

}  // namespace platform
