#include "platform/desktop/StatusItem.h"
#include "platform/desktop/tray/ExportedMenu.h"
#include "platform/desktop/tray/TrayWatch.h"
#include "tests/support/LogCapture.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/Waiting.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace platform;
using namespace std::chrono_literals;
using testing_support::until;

namespace {

const QString watcherName = u"org.kde.StatusNotifierWatcher"_s;
const QString watcherPath = u"/StatusNotifierWatcher"_s;

/// The desktop's watcher, which answers at once, or only when it is told to.
class Watcher : public QDBusVirtualObject {
 public:
  Watcher() {
    bus.registerVirtualObject(watcherPath, this, QDBusConnection::SingleNode);
    bus.registerService(watcherName);
  }
  ~Watcher() override { QDBusConnection::disconnectFromBus(bus.name()); }

  void tell(const QString& signal) { bus.send(QDBusMessage::createSignal(watcherPath, watcherName, signal)); }
  void answerAll() {
    for (const QDBusMessage& question : std::exchange(questions, {}))
      bus.send(question.createReply(QVariant::fromValue(QDBusVariant(hasHost))));
  }

  bool isSilent = false;
  bool hasHost = true;
  QList<QDBusMessage> questions;
  bool hasIcon = false;

 private:
  [[nodiscard]] QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
    questions << message;
    hasIcon |= message.member() == u"RegisterStatusNotifierItem"_s;
    if (!isSilent)
      answerAll();
    return true;
  }

  QDBusConnection bus =
      QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), u"the watcher"_s);
};

class TrayWatchTest : public testing::Test {
 protected:
  using enum Tray::Kind;
  void untilSeen(const QList<Tray::Kind>& expected) {
    until("tray " + std::to_string(expected.size()), [&] { return seen.size() >= expected.size(); });
    EXPECT_EQ(seen, expected);
  }
  QList<Tray::Kind> seen;
  std::function<void(const Tray&)> see = [this](const Tray& tray) { seen << tray.kind; };
};

TEST_F(TrayWatchTest, FollowsTheTraysThatComeAndGo) {
  const TrayWatch watch(see);
  untilSeen({None});
  auto watcher = std::make_unique<Watcher>();
  untilSeen({None, StatusNotifier});
  watcher->hasHost = false;
  watcher->tell(u"StatusNotifierHostUnregistered"_s);
  untilSeen({None, StatusNotifier, None});
  watcher->hasHost = true;
  watcher->tell(u"StatusNotifierHostRegistered"_s);
  untilSeen({None, StatusNotifier, None, StatusNotifier});
  // Another one of the same kind is another tray: icons must register anew.
  watcher.reset();
  watcher = std::make_unique<Watcher>();
  until("the newer tray", [&] { return seen.size() > 4 && seen.last() == StatusNotifier; });
}

TEST_F(TrayWatchTest, WaitsForNoWatcherThatDoesNotAnswer) {
  ManualClock clock;
  Watcher watcher;
  watcher.isSilent = true;
  const TrayWatch watch(see);
  clock.run();
  until("the watcher is asked", [&] { return !watcher.questions.isEmpty(); });
  EXPECT_TRUE(seen.isEmpty());
  clock.advance(1s);
  EXPECT_EQ(seen, QList({None}));
  watcher.answerAll();
  untilSeen({None, StatusNotifier});
}

TEST(StatusItemTest, ATrayIsMissedOnlyAfterItHadTimeToComeBack) {
  ManualClock clock;
  const testing_support::LogCapture log;
  int missed = 0;
  const StatusItem item(
      {}, [](const Event&) {}, [] { return std::make_shared<Menu>(); }, [&] { ++missed; });
  clock.advance(1s);  // so long the desktop may take to say which tray it has
  clock.advance(19s);
  auto watcher = std::make_unique<Watcher>();
  until("the icon is in the tray", [&] {
    clock.run();
    return watcher->hasIcon;
  });
  clock.advance(30s);
  EXPECT_EQ(missed, 0);
  EXPECT_EQ(log.logged, QStringList());
  watcher.reset();
  until("the tray is missed", [&] {
    clock.advance(1s);
    return missed > 0;
  });
  EXPECT_EQ(log.logged.size(), 1);
}

/// The rows as a panel reads them: their numbers, what they say, and those below.
QString written(const StatusNotifier::MenuRow& row) {
  QStringList children;
  for (const auto& child : row.children)
    children << written(child);
  QString text = QString::number(row.id) + row.properties.value(u"label"_s).toString();
  text += row.properties.value(u"enabled"_s, true).toBool() ? u""_s : u"-"_s;
  return children.isEmpty() ? text : text + u'(' + children.join(u' ') + u')';
}

TEST(ExportedMenuTest, TellsItsRowsAndRunsThem) {
  QStringList chosen;
  QString title = u"Open_It"_s;
  const auto make = [&] {
    const auto item = [&](const QString& name) {
      MenuItem made;
      made.title = name;
      made.action = [&chosen, name] { chosen << name; };
      return made;
    };
    auto menu = std::make_shared<Menu>();
    menu->items = {item(title), MenuItem::separator(), item(u"More"_s), item(u"Quit"_s)};
    menu->items[2].submenu = std::make_shared<Menu>(Menu{{item(u"Deep"_s)}});
    menu->items[3].isEnabled = false;
    menu->items[3].keyEquivalent = u"q"_s;
    return menu;
  };
  ExportedMenu menu(make);
  QList<uint> revisions;
  QObject::connect(&menu, &ExportedMenu::LayoutUpdated, [&](uint revision) { revisions << revision; });
  const auto layout = [&](int parent, int depth) {
    StatusNotifier::MenuRow row;
    menu.GetLayout(parent, depth, {}, row);
    return written(row);
  };
  EXPECT_EQ(layout(0, -1), u"0(1Open__It 2 3More(4Deep) 5Quit-)"_s);
  EXPECT_EQ(layout(0, 1), u"0(1Open__It 2 3More 5Quit-)"_s);
  EXPECT_EQ(layout(3, -1), u"3More(4Deep)"_s);
  EXPECT_EQ(qvariant_cast<QList<QStringList>>(menu.GetProperty(5, u"shortcut"_s).variant()),
            QList({QStringList({u"Control"_s, u"Q"_s})}));

  for (const int id : {1, 2, 4, 5, 6, -1})
    menu.Event(id, u"clicked"_s, {}, 0);
  menu.Event(1, u"hovered"_s, {}, 0);
  EXPECT_EQ(chosen, QStringList({u"Open_It"_s, u"Deep"_s}));
  EXPECT_EQ(menu.EventGroup({{4, u"clicked"_s, {}, 0}, {9, u"clicked"_s, {}, 0}}), QList({9}));
  EXPECT_EQ(chosen.size(), 3);

  EXPECT_FALSE(menu.AboutToShow(0));
  title = u"열기"_s;
  EXPECT_TRUE(menu.AboutToShow(0)) << "another language";
  EXPECT_EQ(revisions.size(), 1);
  EXPECT_EQ(layout(0, 1).section(u' ', 0, 0), u"0(1열기"_s);
}

}  // namespace
