#include "tests/e2e/StatusNotifierHost.h"

#include "tests/e2e/Waiting.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QPoint>
#include <QtEndian>

#include <stdexcept>

namespace e2e {
namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

/// The pixels of an item's picture: ARGB, 32 bits, most significant byte first.
QImage picture(int width, int height, const QByteArray& bytes) {
  QImage image(width, height, QImage::Format_ARGB32);
  if (bytes.size() != image.sizeInBytes())
    throw std::runtime_error("a status item's picture has the wrong length");
  qFromBigEndian<quint32>(bytes.constData(), width * height, image.bits());
  return image;
}

/// One row from its place in a menu's layout: (ia{sv}av).
StatusMenuRow row(const QDBusArgument& layout) {
  StatusMenuRow row;
  QVariantMap properties;
  layout.beginStructure();
  layout >> row.id >> properties;
  layout.endStructure();
  row.label = properties.value(QStringLiteral("label")).toString().remove(u'_');
  row.isEnabled = properties.value(QStringLiteral("enabled"), true).toBool();
  row.isSeparator = properties.value(QStringLiteral("type")).toString() == QStringLiteral("separator");
  return row;
}

}  // namespace

StatusNotifierHost::StatusNotifierHost(const QString& busAddress)
    : bus(QDBusConnection::connectToBus(busAddress, watcherName)) {
  if (!bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                          QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals |
                              QDBusConnection::ExportAllProperties) ||
      !bus.registerService(watcherName))
    throw std::runtime_error("the bus has no place for a status notifier watcher");
}

StatusNotifierHost::~StatusNotifierHost() {
  QDBusConnection::disconnectFromBus(watcherName);
}

void StatusNotifierHost::RegisterStatusNotifierItem(const QString& serviceOrPath) {
  const bool isPath = serviceOrPath.startsWith(u'/');
  const QString service = isPath ? message().service() : serviceOrPath;
  const QString item = service + (isPath ? serviceOrPath : QStringLiteral("/StatusNotifierItem"));
  registered << item;
  Q_EMIT StatusNotifierItemRegistered(item);
  auto* presence = new QDBusServiceWatcher(service, bus, QDBusServiceWatcher::WatchForUnregistration, this);
  connect(presence, &QDBusServiceWatcher::serviceUnregistered, this, [this, item] {
    registered.removeAll(item);
    Q_EMIT StatusNotifierItemUnregistered(item);
  });
}

QVariantList StatusNotifierHost::call(const QString& item, const QString& path, const QString& interface,
                                      const QString& method, const QVariantList& arguments) const {
  QDBusMessage message = QDBusMessage::createMethodCall(item.section(u'/', 0, 0), path, interface, method);
  message.setArguments(arguments);
  // A program that is asked may ask the watcher in turn, so the event loop runs meanwhile.
  const QDBusPendingCall answer = bus.asyncCall(message);
  until(item.toStdString() + " answers to " + method.toStdString(), [&] { return answer.isFinished(); });
  if (answer.isError())
    throw std::runtime_error(method.toStdString() + ": " + answer.error().message().toStdString());
  return answer.reply().arguments();
}

QVariant StatusNotifierHost::property(const QString& item, const QString& name) const {
  const QVariantList values =
      call(item, u'/' + item.section(u'/', 1), QStringLiteral("org.freedesktop.DBus.Properties"),
           QStringLiteral("Get"), {itemInterface, name});
  return values.value(0).value<QDBusVariant>().variant();
}

QImage StatusNotifierHost::icon(const QString& item) const {
  const auto pixmaps = property(item, QStringLiteral("IconPixmap")).value<QDBusArgument>();
  QImage largest;
  pixmaps.beginArray();
  while (!pixmaps.atEnd()) {
    int width = 0;
    int height = 0;
    QByteArray bytes;
    pixmaps.beginStructure();
    pixmaps >> width >> height >> bytes;
    pixmaps.endStructure();
    if (width > largest.width())
      largest = picture(width, height, bytes);
  }
  pixmaps.endArray();
  return largest;
}

void StatusNotifierHost::activate(const QString& item, QPoint position) const {
  call(item, u'/' + item.section(u'/', 1), itemInterface, QStringLiteral("Activate"),
       {position.x(), position.y()});
}

QString StatusNotifierHost::menuPath(const QString& item) const {
  return property(item, QStringLiteral("Menu")).value<QDBusObjectPath>().path();
}

std::vector<StatusMenuRow> StatusNotifierHost::openMenu(const QString& item) const {
  const QString path = menuPath(item);
  call(item, path, menuInterface, QStringLiteral("AboutToShow"), {0});
  const QVariantList layout =
      call(item, path, menuInterface, QStringLiteral("GetLayout"), {0, -1, QStringList()});
  const auto root = layout.value(1).value<QDBusArgument>();
  int id = 0;
  QVariantMap properties;
  std::vector<StatusMenuRow> rows;
  root.beginStructure();
  root >> id >> properties;
  root.beginArray();
  while (!root.atEnd()) {
    QDBusVariant child;
    root >> child;
    rows.push_back(row(child.variant().value<QDBusArgument>()));
  }
  root.endArray();
  root.endStructure();
  return rows;
}

void StatusNotifierHost::trigger(const QString& item, int row) const {
  call(item, menuPath(item), menuInterface, QStringLiteral("Event"),
       {row, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(QString())), 0U});
}

}  // namespace e2e
