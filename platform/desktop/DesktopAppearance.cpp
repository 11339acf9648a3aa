#include "platform/desktop/DesktopAppearance.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QPalette>

namespace platform {
namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString settingsGroup = QStringLiteral("org.freedesktop.appearance");
const QString settingsKey = QStringLiteral("color-scheme");

std::optional<Appearance> preferenceFrom(QVariant value) {
  // The answer to a question is packed twice, what a signal announces once.
  while (value.metaType() == QMetaType::fromType<QDBusVariant>())
    value = value.value<QDBusVariant>().variant();
  switch (value.toUInt()) {
    case 1:
      return Appearance::Dark;
    case 2:
      return Appearance::Light;
    default:
      return std::nullopt;
  }
}

}  // namespace

DesktopAppearance::DesktopAppearance(const Color& accentColor) : accent(accentColor) {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected())
    return;
  bus.connect(service, path, interface, QStringLiteral("SettingChanged"), {settingsGroup, settingsKey},
              QStringLiteral("ssv"), this, SLOT(settingChanged(QDBusMessage)));
  const auto* const arrival =
      new QDBusServiceWatcher(service, bus, QDBusServiceWatcher::WatchForRegistration, this);
  connect(arrival, &QDBusServiceWatcher::serviceRegistered, this, &DesktopAppearance::ask);
  ask();
}

void DesktopAppearance::ask() {
  QDBusMessage question = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
  // Where nobody answers yet nobody is to be started: a bare session would get half a desktop with it.
  question.setAutoStartService(false);
  question << settingsGroup << settingsKey;
  const auto* const answer =
      new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
    finished->deleteLater();
    if (!finished->isError())
      prefer(preferenceFrom(finished->reply().arguments().value(0)));
  });
}

void DesktopAppearance::settingChanged(const QDBusMessage& message) {
  prefer(preferenceFrom(message.arguments().value(2)));
}

void DesktopAppearance::prefer(std::optional<Appearance> preference) {
  if (given && given == preference)
    return;
  if (given)
    QApplication::setPalette(QPalette());  // the toolkit's own, as it is by now
  given.reset();
  if (preference && currentAppearance() != *preference) {
    QApplication::setPalette(paletteOf(*preference, accent));
    given = preference;
  }
}

}  // namespace platform
