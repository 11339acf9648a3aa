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
  bool isControl = false;  // can get the keyboard, or be pressed
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
      constexpr int focusable = 11;
      constexpr int showing = 25;
      const QString role = ask(child, accessible, u"GetRoleName"_s).toString();
      const bool isProgram = parent.program != child.program;
      if (!isProgram && !has(showing))
        continue;
      found.push_back({role,
                       ask(child, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {accessible, u"Name"_s})
                           .value<QDBusVariant>()
                           .variant()
                           .toString(),
                       has(focusable) || role.contains(u"button"_s)});
      collect(child, found);
    }
  }

  QDBusConnection bus;
};

struct Texts {
  Language language;
  QString buttons;
  QString thumbnails;
  QString toast;
};

class Accessibility : public testing::TestWithParam<Texts> {};

INSTANTIATE_TEST_SUITE_P(
    Language, Accessibility,
    testing::Values(
        Texts{Language::English,
              u"Sorrel: 2 screenshots in the bottle|Keep open when you click elsewhere|Close|"
              "Move to Trash|Copy|Open Bottle Folder|Settings"_s,
              u"second, Just now|first, Just now"_s, u"Copied"_s},
        Texts{
            Language::Korean,
            u"Sorrel: 병에 스크린샷 2장|다른 곳을 눌러도 열어 둡니다|닫기|휴지통으로 이동|복사|병 폴더 열기|설정"_s,
            u"second, 방금|first, 방금"_s, u"복사했습니다"_s}),
    [](const auto& test) { return test.param.language == Language::English ? "English" : "Korean"; });

TEST_P(Accessibility, TellsTheIconAndEveryControlAndPictureOfThePanel) {
  const Texts& texts = GetParam();
  Desktop desktop({.language = texts.language, .assistiveTechnology = AssistiveTechnology::Listening});
  Sorrel::store(desktop, u"quillonPromptShown"_s, true);
  Sorrel::putPicture(desktop, u"first.png"_s, randomPicture({200, 100}, 2));
  Sorrel::putPicture(desktop, u"second.png"_s, randomPicture({100, 200}, 3));
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
    return names(u"alert message"_s) == texts.toast;
  });
  EXPECT_EQ(names(u"push button"_s), texts.buttons);
  EXPECT_EQ(names(u"list item"_s), texts.thumbnails);
  for (const Element& element : elements)
    EXPECT_FALSE(element.isControl && element.name.isEmpty()) << qPrintable(element.role);
}

}  // namespace
}  // namespace e2e
