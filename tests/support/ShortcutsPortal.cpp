#include "tests/support/ShortcutsPortal.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>

using namespace Qt::StringLiterals;

namespace testing_support {
namespace {

const QString service = u"org.freedesktop.portal.Desktop"_s;
const QString path = u"/org/freedesktop/portal/desktop"_s;
const QString interface = u"org.freedesktop.portal.GlobalShortcuts"_s;

struct Keys {
  QString id;
  QVariantMap about;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Keys& keys) {
  argument.beginStructure();
  argument << keys.id << keys.about;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Keys& keys) {
  argument.beginStructure();
  argument >> keys.id >> keys.about;
  argument.endStructure();
  return argument;
}

/// What the program asks for, with the keys given that it prefers.
QList<Keys> granted(const QVariant& asked) {
  auto all = qdbus_cast<QList<Keys>>(asked);
  for (Keys& keys : all)
    if (const QVariant preferred = keys.about.value(u"preferred_trigger"_s); preferred.isValid())
      keys.about.insert(u"trigger_description"_s, preferred);
  return all;
}

QString namesOf(const QList<Keys>& all) {
  QString text;
  for (const Keys& keys : all)
    text += u" %1 (%2, %3)"_s.arg(keys.id, keys.about.value(u"description"_s).toString(),
                                  keys.about.value(u"preferred_trigger"_s).toString());
  return text;
}

}  // namespace

ShortcutsPortal::ShortcutsPortal(Draft draft)
    : draft(draft), bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"shortcuts portal"_s)) {
  qDBusRegisterMetaType<Keys>();
  qDBusRegisterMetaType<QList<Keys>>();
  shortcuts = QVariant::fromValue(QList<Keys>());
  bus.registerVirtualObject(path, this, QDBusConnection::SubPath);
  bus.registerService(service);
}

ShortcutsPortal::~ShortcutsPortal() {
  bus.unregisterService(service);
  bus.unregisterObject(path);
  QDBusConnection::disconnectFromBus(bus.name());
}

bool ShortcutsPortal::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  if (message.interface() != interface) {
    calls << message.member();
    return connection.send(message.createReply());
  }
  const QVariantMap options = qdbus_cast<QVariantMap>(message.arguments().constLast());
  const QString sender = message.service().mid(1).replace(u'.', u'_');
  const QString request = path + u"/request/"_s + sender + u'/' + options.value(u"handle_token"_s).toString();
  connection.send(message.createReply(QVariant::fromValue(QDBusObjectPath(request))));
  const QVariantMap results = resultsOf(message);
  if (message.member() == method && instead)
    instead(request);
  else
    respond(request, {code, results});
  return true;
}

QVariantMap ShortcutsPortal::resultsOf(const QDBusMessage& message) {
  const QVariantList arguments = message.arguments();
  const QVariantMap options = qdbus_cast<QVariantMap>(arguments.constLast());
  if (message.member() == u"CreateSession") {
    const auto asked = granted(options.value(u"shortcuts"_s));
    calls << message.member() + namesOf(asked);
    const QString sender = message.service().mid(1).replace(u'.', u'_');
    openSession = path + u"/session/"_s + sender + u'/' + options.value(u"session_handle_token"_s).toString();
    shortcuts = QVariant::fromValue(draft == Draft::Early ? asked : QList<Keys>());
    return {{u"session_handle"_s, openSession}};
  }
  if (message.member() == u"BindShortcuts") {
    const auto asked = granted(arguments.at(1));
    calls << message.member() + namesOf(asked);
    shortcuts = QVariant::fromValue(asked);
  } else {
    calls << message.member();
  }
  return {{u"shortcuts"_s, shortcuts}};
}

void ShortcutsPortal::respond(const QString& request, const QVariantList& arguments) {
  QDBusMessage signal =
      QDBusMessage::createSignal(request, u"org.freedesktop.portal.Request"_s, u"Response"_s);
  signal.setArguments(arguments);
  bus.send(signal);
}

void ShortcutsPortal::send(const QString& signal, const QString& id, const QString& session) {
  QDBusMessage message = QDBusMessage::createSignal(path, interface, signal);
  message << QVariant::fromValue(QDBusObjectPath(session.isEmpty() ? openSession : session)) << id
          << qulonglong(0) << QVariantMap();
  bus.send(message);
}

void ShortcutsPortal::change(const QString& id, const QString& trigger) {
  auto all = shortcuts.value<QList<Keys>>();
  for (Keys& keys : all)
    if (keys.id == id)
      keys.about.insert(u"trigger_description"_s, trigger);
  shortcuts = QVariant::fromValue(all);
  QDBusMessage message = QDBusMessage::createSignal(path, interface, u"ShortcutsChanged"_s);
  message << QVariant::fromValue(QDBusObjectPath(openSession)) << shortcuts;
  bus.send(message);
}

void ShortcutsPortal::closeSession() {
  bus.send(QDBusMessage::createSignal(openSession, u"org.freedesktop.portal.Session"_s, u"Closed"_s));
}

}  // namespace testing_support
