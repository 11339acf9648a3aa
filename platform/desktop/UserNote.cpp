#include "platform/desktop/UserNote.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QGuiApplication>

namespace platform {

void tellUser(const QString& title, const QString& text, std::function<void()> delivered) {
  const QString name = QStringLiteral("org.freedesktop.Notifications");
  QDBusMessage note = QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/Notifications"),
                                                     name, QStringLiteral("Notify"));
  const QString entry = QGuiApplication::desktopFileName();
  constexpr uint replacesNone = 0;
  constexpr int asLongAsUsual = -1;
  note << QGuiApplication::applicationDisplayName() << replacesNone << entry << title << text << QStringList()
       << QVariantMap{{QStringLiteral("desktop-entry"), entry}} << asLongAsUsual;
  auto* const answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(note),
                                                   QCoreApplication::instance());
  QObject::connect(answer, &QDBusPendingCallWatcher::finished, answer,
                   [answer, delivered = std::move(delivered)] {
                     answer->deleteLater();
                     if (!answer->isError())
                       delivered();
                   });
}

}  // namespace platform
