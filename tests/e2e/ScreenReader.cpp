#include "tests/e2e/ScreenReader.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusReply>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

const QString accessible = u"org.a11y.atspi.Accessible"_s;

QDBusConnection connectToReaders(const QString& sessionBus) {
  const QString name = u"reader's session"_s;
  const QDBusReply<QString> address =
      QDBusConnection::connectToBus(sessionBus, name)
          .call(QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s, u"org.a11y.Bus"_s,
                                               u"GetAddress"_s));
  QDBusConnection::disconnectFromBus(name);
  return QDBusConnection::connectToBus(address.value(), u"reader"_s);
}

}  // namespace

static QDBusArgument& operator<<(QDBusArgument& argument, const ScreenReader::Reference& reference) {
  argument.beginStructure();
  argument << reference.program << reference.object;
  argument.endStructure();
  return argument;
}

static const QDBusArgument& operator>>(const QDBusArgument& argument, ScreenReader::Reference& reference) {
  argument.beginStructure();
  argument >> reference.program >> reference.object;
  argument.endStructure();
  return argument;
}

ScreenReader::ScreenReader(const QString& sessionBus) : bus(connectToReaders(sessionBus)) {
  qDBusRegisterMetaType<Reference>();
  qDBusRegisterMetaType<QList<Reference>>();
}

ScreenReader::~ScreenReader() {
  QDBusConnection::disconnectFromBus(bus.name());
}

std::vector<ScreenReader::Element> ScreenReader::elements() const {
  std::vector<Element> found;
  collect({u"org.a11y.atspi.Registry"_s, QDBusObjectPath(u"/org/a11y/atspi/accessible/root"_s)}, found);
  return found;
}

QRect ScreenReader::placeOf(const QString& name) const {
  const std::vector<Element> all = elements();
  const auto found = std::ranges::find_if(all, [&](const Element& element) { return element.name == name; });
  if (found == all.end())
    return {};
  constexpr quint32 ofTheScreen = 0;
  const auto argument = ask(found->reference, u"org.a11y.atspi.Component"_s, u"GetExtents"_s, {ofTheScreen})
                            .value<QDBusArgument>();
  int x = 0, y = 0, width = 0, height = 0;
  argument.beginStructure();
  argument >> x >> y >> width >> height;
  argument.endStructure();
  return QRect(x, y, width, height);
}

QVariant ScreenReader::ask(const Reference& element, const QString& interface, const QString& method,
                           const QVariantList& arguments) const {
  QDBusMessage message =
      QDBusMessage::createMethodCall(element.program, element.object.path(), interface, method);
  message.setArguments(arguments);
  return bus.call(message).arguments().value(0);
}

void ScreenReader::collect(const Reference& parent, std::vector<Element>& found) const {
  for (const auto& child : qdbus_cast<QList<Reference>>(ask(parent, accessible, u"GetChildren"_s))) {
    const auto states = qdbus_cast<QList<quint32>>(ask(child, accessible, u"GetState"_s));
    const auto has = [&](int state) { return !states.isEmpty() && (states.first() >> state & 1U); };
    constexpr int showing = 25;
    const QString role = ask(child, accessible, u"GetRoleName"_s).toString();
    const bool isProgram = parent.program != child.program;
    if (!isProgram && !has(showing))
      continue;
    const QVariant name = ask(child, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {accessible, u"Name"_s});
    found.push_back({role, name.value<QDBusVariant>().variant().toString(), child});
    collect(child, found);
  }
}

}  // namespace e2e
