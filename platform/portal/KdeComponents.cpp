#include "platform/portal/KdeComponents.h"

#include "platform/portal/Portal.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QGuiApplication>

namespace platform::KdeComponents {
namespace {

using namespace Qt::StringLiterals;

const QString service = u"org.kde.kglobalaccel"_s;
const QString folder = u"/component/"_s;

QDBusMessage callTo(const QString& path, const QString& interface, const QString& method) {
  QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, method);
  call.setAutoStartService(false);
  return call;
}

/// A name as a part of an object's path.
QString pathOf(QString name) {
  for (QChar& character : name)
    if (!(character.unicode() < 128 && character.isLetterOrNumber()))
      character = u'_';
  return folder + name;
}

}  // namespace

void find(QObject& context, const QString& token, std::function<void(const QStringList& paths)> onFound) {
  const QStringList ours{pathOf(token), pathOf(QGuiApplication::desktopFileName() + token)};
  const auto* const asked =
      new QDBusPendingCallWatcher(Portal::shared()->bus().asyncCall(callTo(
                                      u"/kglobalaccel"_s, u"org.kde.KGlobalAccel"_s, u"allComponents"_s)),
                                  &context);
  QObject::connect(asked, &QDBusPendingCallWatcher::finished, &context,
                   [ours, onFound = std::move(onFound)](QDBusPendingCallWatcher* finished) {
                     finished->deleteLater();
                     QStringList found;
                     const QDBusMessage reply = finished->reply();
                     if (reply.signature() == u"ao")
                       for (const auto& each : qdbus_cast<QList<QDBusObjectPath>>(reply.arguments().at(0)))
                         if (ours.contains(each.path()))
                           found << each.path();
                     onFound(found);
                   });
}

void forgetInactive(const QStringList& paths) {
  for (const QString& path : paths)
    Portal::shared()->bus().send(callTo(path, u"org.kde.kglobalaccel.Component"_s, u"cleanUp"_s));
}

}  // namespace platform::KdeComponents
