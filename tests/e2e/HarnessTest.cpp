// What the other tests of this folder stand on: the desktop itself.

#include "tests/e2e/Desktop.h"
#include "tests/e2e/Waiting.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QDir>

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <signal.h>
#include <xcb/xproto.h>

namespace e2e {
namespace {

TEST(Harness, ShowsAKnownPictureAndTellsWhatIsOnIt) {
  Desktop desktop({.tray = Tray::XEmbedAtBottom});
  const QImage background = randomPicture(desktop.screen().size(), 1);
  const QImage contents = randomPicture({200, 100}, 2);
  desktop.screen().paintRoot(background);
  desktop.screen().openWindow(QStringLiteral("A window"), {300, 200}, contents);

  const QImage seen = desktop.screen().settledPicture();
  EXPECT_EQ(seen.copy(0, 0, 1024, 150), background.copy(0, 0, 1024, 150));
  EXPECT_EQ(seen.copy(300, 200, 200, 100), contents);
  EXPECT_NE(seen.copy(300, 190, 200, 10), background.copy(300, 190, 200, 10)) << "the frame is missing";
  const std::optional<ScreenWindow> tray = desktop.screen().find(QStringLiteral("trayer"));
  ASSERT_TRUE(tray);
  EXPECT_EQ(tray->area.bottom(), 639);
}

TEST(Harness, PressesKeysByPositionWhateverTheLayout) {
  Desktop desktop({.tray = Tray::None});
  desktop.screen().openWindow(QStringLiteral("Keys"), {100, 100}, randomPicture({200, 100}, 1));
  desktop.input().moveTo(120, 120);
  desktop.input().clickButton(1);
  desktop.run({QStringLiteral("setxkbmap"), QStringLiteral("fr")});

  std::vector<int> pressed;
  until("keys arrive", [&] {
    desktop.input().tapKey(KEY_Q);
    pressed = desktop.screen().takeKeyPresses();
    return !pressed.empty();
  });
  EXPECT_EQ(pressed.front(), KEY_Q + 8);

  EXPECT_EQ(desktop.screen().modifiers(), 0);
  desktop.input().tapKey(KEY_CAPSLOCK);
  EXPECT_EQ(desktop.screen().modifiers(), XCB_MOD_MASK_LOCK);
}

TEST(Harness, SeesWhoHasAKeyAndWhoHoldsTheInput) {
  Desktop desktop({.tray = Tray::None});
  Screen other(desktop.environment().value(QStringLiteral("DISPLAY")));
  EXPECT_FALSE(desktop.screen().isKeyGrabbed(KEY_S, XCB_MOD_MASK_1));
  ASSERT_TRUE(other.grabKey(KEY_S, XCB_MOD_MASK_1));
  EXPECT_TRUE(desktop.screen().isKeyGrabbed(KEY_S, XCB_MOD_MASK_1));
  EXPECT_FALSE(desktop.screen().grabKey(KEY_S, XCB_MOD_MASK_1));

  EXPECT_FALSE(desktop.screen().isInputGrabbed());
  desktop.input().pressKey(KEY_LEFTALT);
  desktop.input().pressKey(KEY_S);
  EXPECT_TRUE(desktop.screen().isInputGrabbed());
}

/// The least that a program offers for a panel to show it.
class TestItem : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
  Q_PROPERTY(QString IconName MEMBER iconName)

 public:
  QString iconName = QStringLiteral("bottle");
  QPoint activated;

 public Q_SLOTS:
  void Activate(int x, int y) { activated = {x, y}; }
};

TEST(Harness, TheStatusNotifierHostSeesItemsComeAndGo) {
  Desktop desktop({.tray = Tray::StatusNotifier});
  const QString name = QStringLiteral("test item");
  TestItem item;
  QDBusConnection bus = QDBusConnection::connectToBus(desktop.busAddress(), name);
  ASSERT_TRUE(bus.registerObject(QStringLiteral("/StatusNotifierItem"), &item,
                                 QDBusConnection::ExportAllProperties | QDBusConnection::ExportAllSlots));
  QDBusMessage registration = QDBusMessage::createMethodCall(
      QStringLiteral("org.kde.StatusNotifierWatcher"), QStringLiteral("/StatusNotifierWatcher"),
      QStringLiteral("org.kde.StatusNotifierWatcher"), QStringLiteral("RegisterStatusNotifierItem"));
  registration << bus.baseService();
  bus.asyncCall(registration);

  StatusNotifierHost& host = desktop.statusNotifier();
  until("the item is registered", [&] { return !host.items().isEmpty(); });
  EXPECT_EQ(host.property(host.items().first(), QStringLiteral("IconName")), QStringLiteral("bottle"));
  host.activate(host.items().first(), {7, 9});
  EXPECT_EQ(item.activated, QPoint(7, 9));

  QDBusConnection::disconnectFromBus(name);
  bus = QDBusConnection(QString());
  until("the item is gone", [&] { return host.items().isEmpty(); });
}

TEST(Harness, LeavesNoProcessBehind) {
  pid_t orphan = 0;
  {
    Desktop desktop({.tray = Tray::None});
    orphan = desktop
                 .run({QStringLiteral("sh"), QStringLiteral("-c"),
                       QStringLiteral("sleep 1000 >/dev/null & echo $!")})
                 .toInt();
    ASSERT_GT(orphan, 0);
    ASSERT_EQ(kill(orphan, 0), 0);
  }
  EXPECT_NE(kill(orphan, 0), 0);
}

}  // namespace
}  // namespace e2e

#include "HarnessTest.moc"
