#include "platform/base/Environment.h"
#include "platform/input/KeyCodes.h"
#include "platform/input/portal/PortalKeyBinder.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ShortcutsPortal.h"
#include "tests/support/Waiting.h"

#include <QDBusObjectPath>
#include <QGuiApplication>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace platform;
using testing_support::ShortcutsPortal;
using testing_support::until;

namespace {

class PortalKeyBinderTest : public testing::Test {
 protected:
  ~PortalKeyBinderTest() override {
    binder.reset();
    Environment::provide<Portal>(nullptr);
  }
  void untilTrigger(const QString& trigger) {
    until("the desktop gives " + trigger.toStdString(), [&] {
      clock.run();
      return binder->state().triggers.value(u"capture"_s) == trigger;
    });
  }
  static HotKey capture(quint32 modifiers) {
    return {KeyCode::s, modifiers, {}, u"capture"_s, u"Capture"_s, {}};
  }

  ManualClock clock;
  testing_support::LogCapture log;
  std::optional<ShortcutsPortal> portal{std::in_place};
  QStringList heard;
  bool isUnavailable = false;
  std::unique_ptr<PortalKeyBinder> binder = std::make_unique<PortalKeyBinder>(
      Portal::FrontEnd::Present, KeyBinder::Listener{[this](KeyAction action, const QString& name) {
                                                       heard << (action == KeyAction::Press ? u'+' : u'-') +
                                                                    name;
                                                     },
                                                     [] {}, [this] { isUnavailable = true; }});
};

TEST_F(PortalKeyBinderTest, ProposesKeysAndTellsOfPressAndRelease) {
  binder->bind({capture(0xA00)});
  EXPECT_EQ(binder->state().way, HotKeyWay::Undecided);
  untilTrigger(u"ALT+SHIFT+s"_s);
  EXPECT_EQ(binder->state().way, HotKeyWay::Portal);
  portal->send(u"Activated"_s, u"capture"_s);
  portal->send(u"Deactivated"_s, u"capture"_s);
  until("both are heard", [&] { return heard.size() >= 2; });
  EXPECT_EQ(heard, (QStringList{u"+capture"_s, u"-capture"_s}));
  binder->bind({capture(0x1000)});
  untilTrigger(u"CTRL+s"_s);
}

TEST_F(PortalKeyBinderTest, AsksAgainWhenTheFrontEndIsBackOrHasClosedTheSession) {
  binder->bind({capture(0xA00)});
  untilTrigger(u"ALT+SHIFT+s"_s);
  portal.reset();
  untilTrigger({});
  portal.emplace();
  untilTrigger(u"ALT+SHIFT+s"_s);
  EXPECT_FALSE(isUnavailable);

  portal->closeSession();
  untilTrigger({});
  clock.advance(std::chrono::seconds(2));
  untilTrigger(u"ALT+SHIFT+s"_s);
}

/// KDE's service, which holds the keys of two places.
class KdeService : public QDBusVirtualObject {
 public:
  KdeService() {
    bus.registerVirtualObject(u"/"_s, this, QDBusConnection::SubPath);
    bus.registerService(u"org.kde.kglobalaccel"_s);
  }
  ~KdeService() override { QDBusConnection::disconnectFromBus(bus.name()); }

  QStringList places{u"/component/kwin"_s, u"/component/sorrel"_s};
  QStringList cleaned;
  int questions = 0;

 private:
  [[nodiscard]] QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    if (message.member() == u"cleanUp") {
      cleaned << message.path();
      return connection.send(message.createReply(true));
    }
    ++questions;
    QList<QDBusObjectPath> paths;
    for (const QString& place : places)
      paths << QDBusObjectPath(place);
    return connection.send(message.createReply(QVariant::fromValue(paths)));
  }

  QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"kde"_s);
};

TEST_F(PortalKeyBinderTest, TakesKeysOverThatKdeKeepsForAnotherWayOfStarting) {
  qputenv("XDG_CURRENT_DESKTOP", "KDE");
  QGuiApplication::setDesktopFileName(u"org.sorrel.Sorrel"_s);
  KdeService kde;
  binder->bind({capture(0xA00)});
  const auto untilAsked = [&](int times) {
    until("KDE is asked", [&] {
      clock.run();
      return kde.questions >= times && binder->state().way == HotKeyWay::Portal;
    });
  };
  untilAsked(1);
  clock.advance(std::chrono::seconds(5));
  EXPECT_TRUE(kde.cleaned.isEmpty()) << "there is no other place";

  kde.places << u"/component/org_sorrel_Sorrelsorrel"_s;
  binder = std::make_unique<PortalKeyBinder>(
      Portal::FrontEnd::Present, KeyBinder::Listener{[](KeyAction, const QString&) {}, [] {}, [] {}});
  binder->bind({capture(0xA00)});
  untilAsked(2);
  until("it is told", [&] { return !log.logged.isEmpty(); });
  clock.advance(std::chrono::seconds(2));
  until("both are cleaned", [&] { return kde.cleaned == kde.places.sliced(1); });
  EXPECT_TRUE(binder->state().triggers.isEmpty());
  clock.advance(std::chrono::seconds(2));
  untilTrigger(u"ALT+SHIFT+s"_s);
  qunsetenv("XDG_CURRENT_DESKTOP");
}

TEST_F(PortalKeyBinderTest, LeavesADesktopAloneThatHasNoSuchThing) {
  portal->code = 2;
  binder->bind({capture(0xA00)});
  until("it is unavailable", [&] {
    clock.run();
    return isUnavailable;
  });
}

}  // namespace
