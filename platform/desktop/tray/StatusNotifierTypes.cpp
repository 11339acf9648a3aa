#include "platform/desktop/tray/StatusNotifierTypes.h"

#include <QDBusMetaType>
#include <QImage>
#include <QPixmap>
#include <QtEndian>

namespace platform::StatusNotifier {
namespace {

template <typename... Members>
QDBusArgument& writeStructure(QDBusArgument& argument, const Members&... members) {
  argument.beginStructure();
  (argument << ... << members);
  argument.endStructure();
  return argument;
}

template <typename... Members>
const QDBusArgument& readStructure(const QDBusArgument& argument, Members&... members) {
  argument.beginStructure();
  (argument >> ... >> members);
  argument.endStructure();
  return argument;
}

}  // namespace

Pixmaps pixmapsOf(const QIcon& icon) {
  Pixmaps pixmaps;
  for (const int side : {16, 18, 22, 24, 32, 36, 44, 48, 64}) {
    QImage image = icon.pixmap(QSize(side, side), 1).toImage().convertToFormat(QImage::Format_ARGB32);
    if (image.isNull() || (!pixmaps.isEmpty() && pixmaps.last().width >= image.width()))
      continue;  // the icon isn't drawn in that size
    QByteArray pixels(image.sizeInBytes(), Qt::Uninitialized);
    qToBigEndian<quint32>(image.constBits(), image.sizeInBytes() / 4, pixels.data());
    pixmaps << Pixmap{image.width(), image.height(), pixels};
  }
  return pixmaps;
}

void registerTypes() {
  qDBusRegisterMetaType<Pixmap>();
  qDBusRegisterMetaType<Pixmaps>();
  qDBusRegisterMetaType<ToolTip>();
  qDBusRegisterMetaType<MenuRow>();
  qDBusRegisterMetaType<RowProperties>();
  qDBusRegisterMetaType<QList<RowProperties>>();
  qDBusRegisterMetaType<RemovedProperties>();
  qDBusRegisterMetaType<QList<RemovedProperties>>();
  qDBusRegisterMetaType<RowEvent>();
  qDBusRegisterMetaType<QList<RowEvent>>();
  qDBusRegisterMetaType<QList<QStringList>>();  // shortcuts
}

QDBusArgument& operator<<(QDBusArgument& argument, const Pixmap& pixmap) {
  return writeStructure(argument, pixmap.width, pixmap.height, pixmap.pixels);
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Pixmap& pixmap) {
  return readStructure(argument, pixmap.width, pixmap.height, pixmap.pixels);
}

QDBusArgument& operator<<(QDBusArgument& argument, const ToolTip& toolTip) {
  return writeStructure(argument, toolTip.iconName, toolTip.icon, toolTip.title, toolTip.text);
}

const QDBusArgument& operator>>(const QDBusArgument& argument, ToolTip& toolTip) {
  return readStructure(argument, toolTip.iconName, toolTip.icon, toolTip.title, toolTip.text);
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuRow& row) {
  QVariantList children;  // each within a variant
  for (const MenuRow& child : row.children)
    children << QVariant::fromValue(child);
  return writeStructure(argument, row.id, row.properties, children);
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuRow& row) {
  QVariantList children;
  readStructure(argument, row.id, row.properties, children);
  for (const QVariant& child : children)
    row.children << qdbus_cast<MenuRow>(child);
  return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const RowProperties& row) {
  return writeStructure(argument, row.id, row.properties);
}

const QDBusArgument& operator>>(const QDBusArgument& argument, RowProperties& row) {
  return readStructure(argument, row.id, row.properties);
}

QDBusArgument& operator<<(QDBusArgument& argument, const RemovedProperties& row) {
  return writeStructure(argument, row.id, row.names);
}

const QDBusArgument& operator>>(const QDBusArgument& argument, RemovedProperties& row) {
  return readStructure(argument, row.id, row.names);
}

QDBusArgument& operator<<(QDBusArgument& argument, const RowEvent& event) {
  return writeStructure(argument, event.id, event.event, event.data, event.time);
}

const QDBusArgument& operator>>(const QDBusArgument& argument, RowEvent& event) {
  return readStructure(argument, event.id, event.event, event.data, event.time);
}

}  // namespace platform::StatusNotifier
