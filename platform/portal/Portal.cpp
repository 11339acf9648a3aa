#include "platform/portal/Portal.h"

#include "platform/base/Environment.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QGuiApplication>

namespace platform {
namespace {

using namespace Qt::StringLiterals;
using Outcome = PortalAnswer::Outcome;

const QString requestInterface = u"org.freedesktop.portal.Request"_s;

QString newConnectionName() {
  static int made = 0;
  return u"portal %1"_s.arg(++made);
}

Outcome outcomeOf(uint code) {
  switch (code) {
    case 0:
      return Outcome::Granted;
    case 1:
      return Outcome::Cancelled;
    default:
      return Outcome::Refused;
  }
}

}  // namespace

const QString Portal::service = u"org.freedesktop.portal.Desktop"_s;
const QString Portal::path = u"/org/freedesktop/portal/desktop"_s;

std::shared_ptr<Portal> Portal::shared() {
  return Environment::shared<Portal>([] { return std::make_shared<Portal>(); });
}

Portal::Portal() : connection(QString()), connectionName(newConnectionName()) {
  connection = QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName);
  if (!connection.isConnected())
    return;
  const auto* const watch =
      new QDBusServiceWatcher(service, connection, QDBusServiceWatcher::WatchForOwnerChange, this);
  connect(watch, &QDBusServiceWatcher::serviceOwnerChanged, this,
          [this](const QString&, const QString& oldOwner, const QString& newOwner) {
            if (!oldOwner.isEmpty())
              going.tell();
            if (!newOwner.isEmpty())
              coming.tell();
          });
  // Front ends before 1.19.4 don't know this and go by the program's unit; their refusal means nothing.
  QDBusMessage name =
      QDBusMessage::createMethodCall(service, path, u"org.freedesktop.host.portal.Registry"_s, u"Register"_s);
  name.setAutoStartService(false);
  name << QGuiApplication::desktopFileName() << QVariantMap();
  connection.asyncCall(name);
}

Portal::~Portal() {
  QDBusConnection::disconnectFromBus(connectionName);
}

QString Portal::handlePath(const QString& kind, const QString& token) const {
  return u"%1/%2/%3/%4"_s.arg(path, kind, connection.baseService().mid(1).replace(u'.', u'_'), token);
}

QString Portal::nextToken() {
  return u"sorrel%1"_s.arg(++lastToken);
}

PortalRequest::PortalRequest(const PortalCall& call, OnAnswer answer)
    : portal(Portal::shared()), onAnswer(std::move(answer)) {
  const QString token = portal->nextToken();
  // Heard from before the call is made, so that no answer can come too early.
  listenAt(portal->handlePath(u"request"_s, token));
  limit = MainQueue::main().asyncAfter(call.patience, [this] {
    finish({Outcome::TimedOut, {}, u"the portal doesn't answer"_s});
  });

  QVariantMap options = call.options;
  options.insert(u"handle_token"_s, token);
  QDBusMessage message =
      QDBusMessage::createMethodCall(Portal::service, Portal::path, call.interface, call.method);
  message.setArguments(call.arguments);
  message << options;
  message.setAutoStartService(call.frontEnd == Portal::FrontEnd::Started);
  const auto* const watcher = new QDBusPendingCallWatcher(portal->bus().asyncCall(message), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
    finished->deleteLater();
    if (finished->isError())
      finish({Outcome::Failed, {}, finished->error().message()});
    else
      taken(finished->reply());
  });
}

/// Only from here on is it a front end that goes with the request: news of one that went before may still
/// come until now.
void PortalRequest::taken(const QDBusMessage& reply) {
  const QString told = reply.arguments().value(0).value<QDBusObjectPath>().path();
  if (!told.isEmpty() && told != path)
    listenAt(told);  // front ends of long ago choose the path themselves
  going = portal->observeGoing([this] { finish({Outcome::Failed, {}, u"the portal has gone"_s}); });
}

PortalRequest::~PortalRequest() {
  if (isFinished)
    return;
  QDBusMessage close = QDBusMessage::createMethodCall(Portal::service, path, requestInterface, u"Close"_s);
  close.setAutoStartService(false);
  portal->bus().send(close);
}

void PortalRequest::listenAt(const QString& newPath) {
  path = newPath;
  portal->bus().connect(Portal::service, path, requestInterface, u"Response"_s, this,
                        SLOT(responded(QDBusMessage)));
}

void PortalRequest::responded(const QDBusMessage& message) {
  if (message.signature() != u"ua{sv}") {
    finish({Outcome::Refused, {}, u"the portal's answer makes no sense"_s});
    return;
  }
  const uint code = message.arguments().at(0).toUInt();
  finish({outcomeOf(code), qdbus_cast<QVariantMap>(message.arguments().at(1)),
          code == 0 ? QString() : u"the portal refuses (%1)"_s.arg(code)});
}

/// At the event loop's next turn, so that whoever hears of it may end this.
void PortalRequest::finish(const PortalAnswer& answer) {
  if (std::exchange(isFinished, true))
    return;
  limit = MainQueue::main().asyncAfter({}, [this, answer] {
    const OnAnswer answered = std::move(onAnswer);
    answered(answer);
  });
}

}  // namespace platform
