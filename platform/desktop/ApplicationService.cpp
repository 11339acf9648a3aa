#include "platform/desktop/ApplicationService.h"

#include "platform/desktop/ActivationToken.h"

#include <QDBusMessage>

namespace platform {
namespace {

const QString serviceName = QStringLiteral("org.sorrel.Sorrel");
const QString objectPath = QStringLiteral("/org/sorrel/Sorrel");

QDBusMessage callOfTheBus(const char* method) {
  return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                        QStringLiteral("/org/freedesktop/DBus"),
                                        QStringLiteral("org.freedesktop.DBus"), QString::fromLatin1(method));
}

/// Also where there is none: an older caller's word is not for this call.
void keepToken(const QVariantMap& platformData) {
  QByteArray token;
  for (const char* key : {"activation-token", "desktop-startup-id"}) {
    if (token.isEmpty())
      token = platformData.value(QString::fromLatin1(key)).toString().toUtf8();
  }
  ActivationToken::keep(token);
}

}  // namespace

ApplicationService::ApplicationService(Handlers all)
    : handlers(std::move(all)), bus(QDBusConnection::sessionBus()) {
  if (!bus.isConnected())
    return;
  bus.registerObject(objectPath, this, QDBusConnection::ExportAllSlots);
  constexpr quint32 waitInTheQueue = 0;
  bus.send(callOfTheBus("RequestName") << serviceName << waitInTheQueue);
}

ApplicationService::~ApplicationService() {
  if (!bus.isConnected())
    return;
  bus.unregisterObject(objectPath);
  bus.send(callOfTheBus("ReleaseName") << serviceName);
}

void ApplicationService::Activate(const QVariantMap& platformData) {
  keepToken(platformData);
  handlers.activate();
}

void ApplicationService::Open(const QStringList& uris, const QVariantMap& platformData) {
  QList<QUrl> urls;
  for (const QString& uri : uris)
    urls << QUrl(uri, QUrl::StrictMode);
  keepToken(platformData);
  handlers.open(urls);
}

void ApplicationService::ActivateAction(const QString& action, const QVariantList&,
                                        const QVariantMap& platformData) {
  keepToken(platformData);
  if (!handlers.activateAction(action.toUtf8()))
    sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("no such action: ") + action);
}

}  // namespace platform
