#include "platform/desktop/tray/TrayWatch.h"

#include "platform/desktop/tray/StatusNotifierTypes.h"
#include "platform/x11/X11Connection.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QGuiApplication>

#include <limits>
#include <xcb/xcb.h>

namespace platform {
namespace {

using namespace std::chrono_literals;

constexpr auto graceForFirstAnswer = 1s;

}  // namespace

TrayWatch::TrayWatch(std::function<void(const Tray&)> handler) : onChange(std::move(handler)) {
  listenOnX();
  listenOnBus();
  lookSoon();
}

TrayWatch::~TrayWatch() {
  qGuiApp->removeNativeEventFilter(this);
}

void TrayWatch::listenOnBus() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected())
    return;
  const QString name = StatusNotifier::watcherName;
  auto* const owners = new QDBusServiceWatcher(name, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
  connect(owners, &QDBusServiceWatcher::serviceOwnerChanged, this, &TrayWatch::look);
  for (const char* const signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
    bus.connect(name, StatusNotifier::watcherPath, name, QString::fromLatin1(signal), this, SLOT(look()));
}

void TrayWatch::listenOnX() {
  xcb_connection_t* const connection = x11Connection();
  if (!connection)
    return;
  managerAtom = x11Atom(connection, "MANAGER");
  selectionAtom = x11Atom(connection, "_NET_SYSTEM_TRAY_S0");
  qGuiApp->installNativeEventFilter(this);
}

bool TrayWatch::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
  if (eventType != "xcb_generic_event_t")
    return false;
  const auto* const event = static_cast<const xcb_generic_event_t*>(message);
  const int type = event->response_type & 0x7f;
  if (type == XCB_CLIENT_MESSAGE) {
    // A tray that comes up tells the root window.
    const auto* const announcement = reinterpret_cast<const xcb_client_message_event_t*>(event);
    if (announcement->type == managerAtom && announcement->data.data32[1] == selectionAtom)
      lookSoon();
  } else if (type == XCB_DESTROY_NOTIFY) {
    const auto* const destroyed = reinterpret_cast<const xcb_destroy_notify_event_t*>(event);
    if (tray && tray->window && destroyed->window == tray->window)
      lookSoon();
  }
  return false;
}

void TrayWatch::lookSoon() {
  soon = MainQueue::main().asyncAfter(0ms, [this] { look(); });
}

void TrayWatch::look() {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected())
    return decide({});
  QDBusMessage message = QDBusMessage::createMethodCall(
      StatusNotifier::watcherName, StatusNotifier::watcherPath,
      QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
  message.setAutoStartService(false);
  message << StatusNotifier::watcherName << QStringLiteral("IsStatusNotifierHostRegistered");
  // However late the answer, it counts: it tells that there is a tray after all.
  constexpr int unlimited = std::numeric_limits<int>::max();
  question = std::make_unique<QDBusPendingCallWatcher>(bus.asyncCall(message, unlimited));
  connect(question.get(), &QDBusPendingCallWatcher::finished, this,
          [this](const QDBusPendingCallWatcher* answer) { answered(*answer); });
  if (!tray && !grace.isPending())
    grace = MainQueue::main().asyncAfter(graceForFirstAnswer, [this] { decide({}); });
}

void TrayWatch::answered(const QDBusPendingCallWatcher& answer) {
  const QDBusPendingReply<QDBusVariant> reply = answer;
  const bool hasHost = !reply.isError() && reply.value().variant().toBool();
  const QString watcher = answer.reply().service();
  question.release()->deleteLater();
  decide(hasHost ? watcher : QString());
}

void TrayWatch::decide(const QString& watcher) {
  grace.cancel();
  Tray now;
  if (!watcher.isEmpty())
    now = {Tray::Kind::StatusNotifier, watcher, 0};
  else if (const quint32 window = managerWindow())
    now = {Tray::Kind::XEmbed, {}, window};
  if (tray == now)
    return;
  tray = now;
  onChange(now);
}

quint32 TrayWatch::managerWindow() const {
  xcb_connection_t* const connection = x11Connection();
  if (!connection)
    return 0;
  const auto owner = [&] {
    const auto reply =
        xcbAsk(connection, xcb_get_selection_owner, xcb_get_selection_owner_reply, selectionAtom);
    return reply ? reply->owner : xcb_window_t(XCB_WINDOW_NONE);
  };
  const xcb_window_t window = owner();
  if (window == XCB_WINDOW_NONE)
    return 0;
  // To hear of its end; one that has gone in the meantime is asked for once more.
  const uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  const auto listening = xcb_change_window_attributes_checked(connection, window, XCB_CW_EVENT_MASK, &events);
  const XcbPointer<xcb_generic_error_t> error(xcb_request_check(connection, listening));
  return error ? owner() : window;
}

}  // namespace platform
