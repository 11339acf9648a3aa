#include "platform/desktop/TrayWatch.h"

#include "platform/x11/X11Connection.h"

#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QGuiApplication>

#include <xcb/xcb.h>

namespace platform {
namespace {

const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");

bool hasStatusNotifierHost() {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected())
    return false;
  QDBusMessage question = QDBusMessage::createMethodCall(
      watcherService, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
  question.setAutoStartService(false);
  question << watcherService << QStringLiteral("IsStatusNotifierHostRegistered");
  const QDBusReply<QVariant> answer = bus.call(question);
  return answer.isValid() && answer.value().toBool();
}

}  // namespace

TrayWatch::TrayWatch() = default;

TrayWatch::~TrayWatch() {
  qGuiApp->removeNativeEventFilter(this);
}

TrayKind TrayWatch::kind() const {
  if (hasStatusNotifierHost())
    return TrayKind::StatusNotifier;
  return isX11SelectionOwned("_NET_SYSTEM_TRAY_S0") ? TrayKind::XEmbed : TrayKind::None;
}

void TrayWatch::watch(std::function<void()> handler) {
  onChange = std::move(handler);
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (bus.isConnected()) {
    auto* const service =
        new QDBusServiceWatcher(watcherService, bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(service, &QDBusServiceWatcher::serviceRegistered, this, &TrayWatch::mayHaveChanged);
    bus.connect(watcherService, watcherPath, watcherService, QStringLiteral("StatusNotifierHostRegistered"),
                this, SLOT(mayHaveChanged()));
  }
  if (xcb_connection_t* const connection = x11Connection()) {
    managerAtom = x11Atom(connection, "MANAGER");
    qGuiApp->installNativeEventFilter(this);
  }
}

bool TrayWatch::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
  if (eventType != "xcb_generic_event_t")
    return false;
  // An XEmbed tray announces itself to the root window.
  const auto* const event = static_cast<xcb_generic_event_t*>(message);
  if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE)
    return false;
  const auto* const announcement = reinterpret_cast<const xcb_client_message_event_t*>(event);
  if (announcement->type == managerAtom)
    QMetaObject::invokeMethod(this, &TrayWatch::mayHaveChanged, Qt::QueuedConnection);
  return false;
}

void TrayWatch::mayHaveChanged() {
  if (onChange)
    onChange();
}

}  // namespace platform
