#include "tests/tools/screencapture/ScreenshotBackend.h"

#include <QDBusArgument>
#include <QDBusMetaType>

using namespace Qt::StringLiterals;

namespace testing_support {

namespace {

const QString service = u"org.freedesktop.impl.portal.desktop.test"_s;
const QString path = u"/org/freedesktop/portal/desktop"_s;

struct Color {
  double red = 0, green = 0, blue = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Color& color) {
  argument.beginStructure();
  argument << color.red << color.green << color.blue;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Color& color) {
  argument.beginStructure();
  argument >> color.red >> color.green >> color.blue;
  argument.endStructure();
  return argument;
}

}  // namespace

ScreenshotBackend::ScreenshotBackend(const QString& address)
    : bus(QDBusConnection::connectToBus(address, u"screenshot back end"_s)) {
  qDBusRegisterMetaType<Color>();
  bus.registerVirtualObject(path, this);
  bus.registerService(service);
}

ScreenshotBackend::~ScreenshotBackend() {
  QDBusConnection::disconnectFromBus(bus.name());
}

bool ScreenshotBackend::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  const auto answer = [&](uint code, const QVariantMap& results) {
    return connection.send(message.createReply({code, results}));
  };
  if (message.interface() == u"org.freedesktop.DBus.Properties"_s) {
    // From the second version on, the front end asks for leave.
    const QVariantMap all{{u"version"_s, 2U}};
    return connection.send(message.member() == u"GetAll"_s
                               ? message.createReply(all)
                               : message.createReply(QVariant::fromValue(QDBusVariant(2U))));
  }
  calls << message.member();
  if (message.member() == u"AccessDialog"_s)
    return answer(leave == Leave::Granted ? 0 : 1, {});
  if (message.member() == u"PickColor"_s)
    return answer(0, {{u"color"_s, QVariant::fromValue(Color{0.25, 0.5, 1})}});
  if (message.member() != u"Screenshot"_s)
    return false;
  const auto options = qdbus_cast<QVariantMap>(message.arguments().value(3));
  const auto given = screenshot(options.value(u"interactive"_s).toBool());
  if (given)
    return answer(given->first, given->second);
  message.setDelayedReply(true);
  return true;
}

}  // namespace testing_support
