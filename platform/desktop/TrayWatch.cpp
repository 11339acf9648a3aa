#include "platform/desktop/TrayWatch.h"

#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QGuiApplication>

#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace platform {
namespace {

const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");

template <typename Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

xcb_connection_t* x11Connection() {
  const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 ? x11->connection() : nullptr;
}

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name) {
  const auto cookie = xcb_intern_atom(connection, false, static_cast<uint16_t>(name.size()), name.data());
  const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr), std::free);
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

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

bool hasXEmbedTray() {
  xcb_connection_t* const connection = x11Connection();
  if (!connection)
    return false;
  const auto cookie = xcb_get_selection_owner(connection, atom(connection, "_NET_SYSTEM_TRAY_S0"));
  const Owned<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(connection, cookie, nullptr), std::free);
  return reply && reply->owner != XCB_WINDOW_NONE;
}

}  // namespace

TrayWatch::TrayWatch() = default;

TrayWatch::~TrayWatch() {
  qGuiApp->removeNativeEventFilter(this);
}

TrayKind TrayWatch::kind() const {
  if (hasStatusNotifierHost())
    return TrayKind::StatusNotifier;
  return hasXEmbedTray() ? TrayKind::XEmbed : TrayKind::None;
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
    managerAtom = atom(connection, "MANAGER");
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
