#pragma once

#include <QDBusArgument>
#include <QIcon>
#include <QList>
#include <QString>
#include <QVariantMap>

/// What goes over the bus between an icon and a StatusNotifier tray.
namespace platform::StatusNotifier {

inline const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
inline const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");

/// (iiay): a picture as rows of pixels, 32 bits each, alpha first, not premultiplied, the most significant
/// byte first.
struct Pixmap {
  int width = 0;
  int height = 0;
  QByteArray pixels;
};
using Pixmaps = QList<Pixmap>;

/// The icon in the sizes, in pixels, that trays are known to show.
[[nodiscard]] Pixmaps pixmapsOf(const QIcon& icon);

/// (sa(iiay)ss)
struct ToolTip {
  QString iconName;
  Pixmaps icon;
  QString title;
  QString text;
};

/// (ia{sv}av): a row of a menu and those below it.
struct MenuRow {
  int id = 0;
  QVariantMap properties;
  QList<MenuRow> children;
};

/// (ia{sv})
struct RowProperties {
  int id = 0;
  QVariantMap properties;
};

/// (ias)
struct RemovedProperties {
  int id = 0;
  QStringList names;
};

/// (isvu): what has happened to a row.
struct RowEvent {
  int id = 0;
  QString event;
  QDBusVariant data;
  uint time = 0;
};

/// To be called before any of these goes over the bus.
void registerTypes();

QDBusArgument& operator<<(QDBusArgument& argument, const Pixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, Pixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const ToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, ToolTip& toolTip);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuRow& row);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuRow& row);
QDBusArgument& operator<<(QDBusArgument& argument, const RowProperties& row);
const QDBusArgument& operator>>(const QDBusArgument& argument, RowProperties& row);
QDBusArgument& operator<<(QDBusArgument& argument, const RemovedProperties& row);
const QDBusArgument& operator>>(const QDBusArgument& argument, RemovedProperties& row);
QDBusArgument& operator<<(QDBusArgument& argument, const RowEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, RowEvent& event);

}  // namespace platform::StatusNotifier

Q_DECLARE_METATYPE(platform::StatusNotifier::Pixmap)
Q_DECLARE_METATYPE(platform::StatusNotifier::ToolTip)
Q_DECLARE_METATYPE(platform::StatusNotifier::MenuRow)
Q_DECLARE_METATYPE(platform::StatusNotifier::RowProperties)
Q_DECLARE_METATYPE(platform::StatusNotifier::RemovedProperties)
Q_DECLARE_METATYPE(platform::StatusNotifier::RowEvent)
