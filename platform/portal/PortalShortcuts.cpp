#include "platform/portal/PortalShortcuts.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>

#include <algorithm>

namespace platform {
namespace {

using namespace Qt::StringLiterals;
using Outcome = PortalAnswer::Outcome;

const QString interface = u"org.freedesktop.portal.GlobalShortcuts"_s;
const QString sessionInterface = u"org.freedesktop.portal.Session"_s;
constexpr std::chrono::minutes userPatience{5};

/// A shortcut as it goes over the bus.
struct Entry {
  QString id;
  QVariantMap about;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Entry& entry) {
  argument.beginStructure();
  argument << entry.id << entry.about;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Entry& entry) {
  argument.beginStructure();
  argument >> entry.id >> entry.about;
  argument.endStructure();
  return argument;
}

QVariant packed(const std::vector<PortalShortcuts::Shortcut>& shortcuts) {
  [[maybe_unused]] static const bool areKnown =
      qDBusRegisterMetaType<Entry>().isValid() && qDBusRegisterMetaType<QList<Entry>>().isValid();
  QList<Entry> entries;
  for (const auto& shortcut : shortcuts) {
    entries << Entry{shortcut.id, {{u"description"_s, shortcut.description}}};
    if (!shortcut.preferredTrigger.isEmpty())
      entries.last().about.insert(u"preferred_trigger"_s, shortcut.preferredTrigger);
  }
  return QVariant::fromValue(entries);
}

/// None where the value is something else.
QList<Entry> entriesOf(const QVariant& value) {
  const auto argument = value.value<QDBusArgument>();
  return argument.currentSignature() == u"a(sa{sv})" ? qdbus_cast<QList<Entry>>(argument) : QList<Entry>();
}

}  // namespace

const QString PortalShortcuts::token = u"sorrel"_s;

PortalShortcuts::PortalShortcuts(std::vector<Shortcut> shortcuts, Portal::FrontEnd frontEnd, Callbacks heard)
    : portal(Portal::shared()), wanted(std::move(shortcuts)), callbacks(std::move(heard)) {
  QDBusConnection& bus = portal->bus();
  const auto listen = [&](const char* signal, const char* slot) {
    bus.connect(Portal::service, Portal::path, interface, QString::fromLatin1(signal), this, slot);
  };
  listen("Activated", SLOT(activated(QDBusMessage)));
  listen("Deactivated", SLOT(deactivated(QDBusMessage)));
  listen("ShortcutsChanged", SLOT(changed(QDBusMessage)));
  going = portal->observeGoing([this] {
    if (isOpen())
      end(Callbacks::End::Ended, u"the portal has gone"_s);
  });
  // An early draft, which is in use, takes the shortcuts here and nowhere else; others pass them over.
  const QVariantMap options{{u"session_handle_token"_s, token}, {u"shortcuts"_s, packed(wanted)}};
  asking = std::make_unique<PortalRequest>(PortalCall{interface, u"CreateSession"_s, {}, options, frontEnd},
                                           [this](const PortalAnswer& answer) { opened(answer); });
}

PortalShortcuts::~PortalShortcuts() {
  if (!isOpen())
    return;
  QDBusMessage close = QDBusMessage::createMethodCall(Portal::service, session, sessionInterface, u"Close"_s);
  close.setAutoStartService(false);
  portal->bus().send(close);
}

/// That the session is opened is the only proof that the desktop has such a thing: a front end may name the
/// interface and its version for a desktop that has not.
void PortalShortcuts::opened(const PortalAnswer& answer) {
  const QVariant handle = answer.results.value(u"session_handle"_s);
  const QString told = handle.metaType() == QMetaType::fromType<QDBusObjectPath>()
                           ? handle.value<QDBusObjectPath>().path()
                           : handle.toString();
  if (answer.outcome != Outcome::Granted || !told.startsWith(Portal::path + u"/session/"_s)) {
    end(Callbacks::End::NotOffered,
        answer.reason.isEmpty() ? u"the portal opens no session"_s : answer.reason);
    return;
  }
  session = told;
  portal->bus().connect(Portal::service, session, sessionInterface, u"Closed"_s, this, SLOT(closed()));
  const QVariantList arguments{QVariant::fromValue(QDBusObjectPath(session))};
  asking = std::make_unique<PortalRequest>(PortalCall{interface, u"ListShortcuts"_s, arguments, {}},
                                           [this](const PortalAnswer& list) { listed(list); });
}

/// What the session has already is not asked for again: where the early draft is in use, that would put the
/// desktop's settings on the screen at every start.
void PortalShortcuts::listed(const PortalAnswer& answer) {
  const QVariant shortcuts = answer.results.value(u"shortcuts"_s);
  const QList<Entry> present = entriesOf(shortcuts);
  const bool hasAll = std::ranges::all_of(
      wanted, [&](const Shortcut& each) { return std::ranges::count(present, each.id, &Entry::id) > 0; });
  if (hasAll)
    take(shortcuts);
  else
    bindAll();
}

void PortalShortcuts::bindAll() {
  PortalCall call{interface,
                  u"BindShortcuts"_s,
                  {QVariant::fromValue(QDBusObjectPath(session)), packed(wanted), QString()},
                  {}};
  call.patience = userPatience;
  asking = std::make_unique<PortalRequest>(call, [this](const PortalAnswer& answer) { bound(answer); });
}

/// Where the user has refused, the session stays: he can still give the keys in the desktop's settings.
void PortalShortcuts::bound(const PortalAnswer& answer) {
  take(answer.results.value(u"shortcuts"_s));
}

void PortalShortcuts::take(const QVariant& shortcuts) {
  given.clear();
  for (const Entry& entry : entriesOf(shortcuts))
    if (const QString trigger = entry.about.value(u"trigger_description"_s).toString(); !trigger.isEmpty())
      given.insert(entry.id, trigger);
  callbacks.onTriggers();
}

void PortalShortcuts::activated(const QDBusMessage& message) {
  if (const QString id = idFrom(message); !id.isEmpty())
    callbacks.onActivated(id);
}

void PortalShortcuts::deactivated(const QDBusMessage& message) {
  if (const QString id = idFrom(message); !id.isEmpty())
    callbacks.onDeactivated(id);
}

void PortalShortcuts::changed(const QDBusMessage& message) {
  const QVariantList arguments = message.arguments();
  if (isOpen() && arguments.size() == 2 && arguments[0].value<QDBusObjectPath>().path() == session)
    take(arguments[1]);
}

void PortalShortcuts::closed() {
  end(Callbacks::End::Ended, u"the portal has closed the session"_s);
}

/// Signals of all programs' sessions come here.
QString PortalShortcuts::idFrom(const QDBusMessage& message) const {
  const QVariantList arguments = message.arguments();
  const bool isOurs = isOpen() && message.signature() == u"osta{sv}" &&
                      arguments[0].value<QDBusObjectPath>().path() == session;
  return isOurs ? arguments[1].toString() : QString();
}

void PortalShortcuts::end(Callbacks::End how, const QString& reason) {
  session.clear();
  given.clear();
  if (!ending.isPending())
    ending = MainQueue::main().asyncAfter({}, [this, how, reason] {
      const auto ended = std::move(callbacks.onEnd);
      ended(how, reason);  // after which this may be gone
    });
}

}  // namespace platform
