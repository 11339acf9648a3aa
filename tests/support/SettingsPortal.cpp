#include "tests/support/SettingsPortal.h"

#include <QDBusMessage>
#include <QDBusVariant>

using namespace Qt::StringLiterals;

namespace testing_support {
namespace {

const QString service = u"org.freedesktop.portal.Desktop"_s;
const QString path = u"/org/freedesktop/portal/desktop"_s;
const QString interface = u"org.freedesktop.portal.Settings"_s;
const QString group = u"org.freedesktop.appearance"_s;

}  // namespace

SettingsPortal::SettingsPortal(const QString& address)
    : bus(QDBusConnection::connectToBus(address, u"settings portal"_s)) {
  bus.registerVirtualObject(path, this, QDBusConnection::SingleNode);
  bus.registerService(service);
}

SettingsPortal::~SettingsPortal() {
  bus.unregisterService(service);
  bus.unregisterObject(path);
  QDBusConnection::disconnectFromBus(bus.name());
}

void SettingsPortal::choose(const QVariant& value, const QString& key) {
  QDBusMessage signal = QDBusMessage::createSignal(path, interface, u"SettingChanged"_s);
  signal << group << key << QVariant::fromValue(QDBusVariant(value));
  bus.send(signal);
}

bool SettingsPortal::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  ++questions;
  if (!answer.isValid() || message.member() != u"Read" ||
      message.arguments() != QVariantList({group, u"color-scheme"_s}))
    return connection.send(message.createErrorReply(QDBusError::Failed, u"no such key"_s));
  const QVariant packed = QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(answer))));
  return connection.send(message.createReply(packed));
}

}  // namespace testing_support
