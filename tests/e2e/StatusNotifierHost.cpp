#include "tests/e2e/StatusNotifierHost.h"

#include "tests/support/Waiting.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QtEndian>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

const QString watcherName = u"org.kde.StatusNotifierWatcher"_s;

}  // namespace

StatusNotifierHost::StatusNotifierHost(const QString& busAddress)
    : bus(QDBusConnection::connectToBus(busAddress, watcherName)) {
  if (!bus.registerObject(u"/StatusNotifierWatcher"_s, this,
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
  registered << (isPath ? message().service() + serviceOrPath : serviceOrPath + u"/StatusNotifierItem"_s);
  Q_EMIT StatusNotifierItemRegistered(registered.last());
}

QVariantList StatusNotifierHost::call(const QString& path, const QString& interface, const QString& method,
                                      const QVariantList& arguments) const {
  using testing_support::until;
  until("an item is registered", [&] { return !registered.isEmpty(); });
  const QString item = registered.last();
  QDBusMessage message = QDBusMessage::createMethodCall(
      item.section(u'/', 0, 0), path.isEmpty() ? u'/' + item.section(u'/', 1) : path, interface, method);
  message.setArguments(arguments);
  // A program that is asked may ask the watcher in turn, so the event loop runs meanwhile.
  const QDBusPendingCall answer = bus.asyncCall(message);
  until("the item answers to " + method.toStdString(), [&] { return answer.isFinished(); });
  if (answer.isError())
    throw std::runtime_error(method.toStdString() + ": " + answer.error().message().toStdString());
  return answer.reply().arguments();
}

QVariant StatusNotifierHost::property(const QString& name) const {
  return call({}, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {u"org.kde.StatusNotifierItem"_s, name})
      .value(0)
      .value<QDBusVariant>()
      .variant();
}

QVariantList StatusNotifierHost::callMenu(const QString& method, const QVariantList& arguments) const {
  return call(property(u"Menu"_s).value<QDBusObjectPath>().path(), u"com.canonical.dbusmenu"_s, method,
              arguments);
}

QImage StatusNotifierHost::icon() const {
  // An array of pictures: width, height, and pixels in ARGB, most significant byte first.
  const auto pixmaps = property(u"IconPixmap"_s).value<QDBusArgument>();
  QImage largest;
  pixmaps.beginArray();
  while (!pixmaps.atEnd()) {
    int width = 0;
    int height = 0;
    QByteArray bytes;
    pixmaps.beginStructure();
    pixmaps >> width >> height >> bytes;
    pixmaps.endStructure();
    if (width <= largest.width())
      continue;
    largest = QImage(width, height, QImage::Format_ARGB32);
    if (bytes.size() != largest.sizeInBytes())
      throw std::runtime_error("a status item's picture has the wrong length");
    qFromBigEndian<quint32>(bytes.constData(), width * height, largest.bits());
  }
  return largest;
}

QString StatusNotifierHost::toolTip() const {
  // An icon's name, an array of pictures, a title and a text below it.
  const auto toolTip = property(u"ToolTip"_s).value<QDBusArgument>();
  QString iconName;
  QString title;
  toolTip.beginStructure();
  toolTip >> iconName;
  toolTip.beginArray();
  toolTip.endArray();
  toolTip >> title;
  return title;
}

void StatusNotifierHost::activate(QPoint point) const {
  call({}, u"org.kde.StatusNotifierItem"_s, u"Activate"_s, {point.x(), point.y()});
}

QStringList StatusNotifierHost::openMenu() {
  callMenu(u"AboutToShow"_s, {0});
  // The layout is (ia{sv}av), and so is each of its rows.
  const auto layout = callMenu(u"GetLayout"_s, {0, -1, QStringList()}).value(1).value<QDBusArgument>();
  int id = 0;
  QVariantMap properties;
  QStringList rows;
  rowIds.clear();
  layout.beginStructure();
  layout >> id >> properties;
  layout.beginArray();
  while (!layout.atEnd()) {
    QDBusVariant child;
    layout >> child;
    const auto row = child.variant().value<QDBusArgument>();
    row.beginStructure();
    row >> id >> properties;
    rowIds << id;
    const bool isSeparator = properties.value(u"type"_s).toString() == u"separator"_s;
    rows << (isSeparator ? u"-"_s : properties.value(u"label"_s).toString().remove(u'_'));
  }
  return rows;
}

void StatusNotifierHost::trigger(qsizetype row) const {
  callMenu(u"Event"_s, {rowIds.at(row), u"clicked"_s, QVariant::fromValue(QDBusVariant(QString())), 0U});
}

}  // namespace e2e
