// What a screen reader finds: the icon, and the history panel.

#include "tests/e2e/Panel.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusReply>

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

/// The name of a program on the bus, and the path of an object of its.
struct Reference {
  QString program;
  QDBusObjectPath object;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Reference& reference) {
  argument.beginStructure();
  argument << reference.program << reference.object;
  argument.endStructure();
  return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Reference& reference) {
  argument.beginStructure();
  argument >> reference.program >> reference.object;
  argument.endStructure();
  return argument;
}

struct Element {
  QString role;
  QString name;
};

/// The screen reader: it asks all programs for their trees of elements.
class Reader {
 public:
  explicit Reader(const QString& sessionBus) : bus(connect(sessionBus)) {
    qDBusRegisterMetaType<Reference>();
    qDBusRegisterMetaType<QList<Reference>>();
  }
  ~Reader() { QDBusConnection::disconnectFromBus(bus.name()); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  /// All elements that are showing now, those inside others after them.
  [[nodiscard]] std::vector<Element> elements() const {
    std::vector<Element> found;
    collect({u"org.a11y.atspi.Registry"_s, QDBusObjectPath(u"/org/a11y/atspi/accessible/root"_s)}, found);
    return found;
  }

 private:
  static QDBusConnection connect(const QString& sessionBus) {
    const QString name = u"reader's session"_s;
    const QDBusReply<QString> address =
        QDBusConnection::connectToBus(sessionBus, name)
            .call(QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s, u"org.a11y.Bus"_s,
                                                 u"GetAddress"_s));
    QDBusConnection::disconnectFromBus(name);
    return QDBusConnection::connectToBus(address.value(), u"reader"_s);
  }

  [[nodiscard]] QVariant ask(const Reference& element, const QString& interface, const QString& method,
                             const QVariantList& arguments = {}) const {
    QDBusMessage message =
        QDBusMessage::createMethodCall(element.program, element.object.path(), interface, method);
    message.setArguments(arguments);
    return bus.call(message).arguments().value(0);
  }

  void collect(const Reference& parent, std::vector<Element>& found) const {
    const QString accessible = u"org.a11y.atspi.Accessible"_s;
    for (const auto& child : qdbus_cast<QList<Reference>>(ask(parent, accessible, u"GetChildren"_s))) {
      const auto states = qdbus_cast<QList<quint32>>(ask(child, accessible, u"GetState"_s));
      const auto has = [&](int state) { return !states.isEmpty() && (states.first() >> state & 1U); };
      constexpr int showing = 25;
      const QString role = ask(child, accessible, u"GetRoleName"_s).toString();
      const bool isProgram = parent.program != child.program;
      if (!isProgram && !has(showing))
        continue;
      found.push_back(
          {role, ask(child, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {accessible, u"Name"_s})
                     .value<QDBusVariant>()
                     .variant()
                     .toString()});
      collect(child, found);
    }
  }

  QDBusConnection bus;
};

TEST(Accessibility, AScreenReaderFindsTheIconTheControlsAndThePictures) {
  Desktop desktop({.assistiveTechnology = AssistiveTechnology::Listening});
  Sorrel::store(desktop, u"quillonPromptShown"_s, true);
  Sorrel::putPicture(desktop, u"first.png"_s, randomPicture({200, 100}, 2));
  Sorrel sorrel(desktop);
  Panel panel(desktop, sorrel);
  panel.open();
  const QPoint thumbnail = panel.thumbnail(0).center();
  desktop.input().moveTo(thumbnail.x(), thumbnail.y());
  desktop.input().tapKey(KEY_RIGHT);
  desktop.input().pressKey(KEY_LEFTCTRL);
  desktop.input().tapKey(KEY_C);
  desktop.input().releaseKey(KEY_LEFTCTRL);

  const Reader reader(desktop.busAddress());
  std::vector<Element> elements;
  const auto names = [&](const QString& role) {
    QStringList found;
    for (const Element& element : elements) {
      if (element.role == role)
        found << element.name;
    }
    return found.join(u'|');
  };
  until("the toast is told", [&] {
    elements = reader.elements();
    return names(u"alert message"_s) == u"Copied";
  });
  EXPECT_EQ(names(u"push button"_s),
            u"Sorrel: 1 screenshot in the bottle|Keep open when you click elsewhere|Close|Move to Trash|Copy|"
            "Open Bottle Folder|Settings"_s);
  EXPECT_EQ(names(u"list item"_s), u"first, Just now"_s);
}

}  // namespace
}  // namespace e2e
