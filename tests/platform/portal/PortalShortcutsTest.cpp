#include "platform/base/Environment.h"
#include "platform/portal/PortalShortcuts.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/ShortcutsPortal.h"
#include "tests/support/Waiting.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace platform;
using testing_support::ShortcutsPortal;
using testing_support::until;

namespace {

[[maybe_unused]] const auto* const ownBus =
    testing::AddGlobalTestEnvironment(new testing_support::OwnSessionBus);

class PortalShortcutsTest : public testing::Test {
 protected:
  ~PortalShortcutsTest() override {
    shortcuts.reset();
    Environment::provide<Portal>(nullptr);
  }

  void open() {
    PortalShortcuts::Callbacks callbacks;
    callbacks.onActivated = [this](const QString& id) { heard << u'+' + id; };
    callbacks.onDeactivated = [this](const QString& id) { heard << u'-' + id; };
    callbacks.onTriggers = [this] {
      QString triggers = u"keys"_s;
      for (const auto& [id, trigger] : shortcuts->triggers().asKeyValueRange())
        triggers += u' ' + id + u'=' + trigger;
      heard << triggers;
    };
    callbacks.onEnd = [this](PortalShortcuts::Callbacks::End end, const QString&) {
      heard << (end == PortalShortcuts::Callbacks::End::NotOffered ? u"not offered"_s : u"ended"_s);
      shortcuts.reset();
    };
    shortcuts = std::make_unique<PortalShortcuts>(
        std::vector<PortalShortcuts::Shortcut>{{u"capture"_s, u"Capture"_s, u"ALT+SHIFT+s"_s},
                                               {u"history"_s, u"History"_s, {}}},
        Portal::FrontEnd::Present, callbacks);
    EXPECT_TRUE(heard.isEmpty()) << "nothing waits for the desktop";
  }
  void untilHeard(const QStringList& expected) {
    until("something is heard", [&] { return heard.size() >= expected.size(); });
    EXPECT_EQ(heard, expected);
  }
  void untilCalled(const QString& method) {
    until(method.toStdString() + " is called", [&] { return portal->calls.join(u' ').contains(method); });
  }

  std::optional<ShortcutsPortal> portal{std::in_place};
  QStringList heard;
  std::unique_ptr<PortalShortcuts> shortcuts;
};

TEST_F(PortalShortcutsTest, BindsTellsOfKeysAndCloses) {
  open();
  untilHeard({u"keys capture=ALT+SHIFT+s"_s});
  EXPECT_EQ(portal->calls,
            (QStringList{u"Register"_s, u"CreateSession capture (Capture, ALT+SHIFT+s) history (History, )"_s,
                         u"ListShortcuts"_s,
                         u"BindShortcuts capture (Capture, ALT+SHIFT+s) history (History, )"_s}))
      << "the program's name comes before all else";

  portal->send(u"Activated"_s, u"capture"_s, u"/org/freedesktop/portal/desktop/session/9_9/sorrel"_s);
  portal->send(u"Activated"_s, u"capture"_s);
  portal->send(u"Deactivated"_s, u"capture"_s);
  portal->change(u"history"_s, u"Meta+H"_s);
  untilHeard({u"keys capture=ALT+SHIFT+s"_s, u"+capture"_s, u"-capture"_s,
              u"keys capture=ALT+SHIFT+s history=Meta+H"_s});
  shortcuts.reset();
  untilCalled(u"Close"_s);
}

TEST_F(PortalShortcutsTest, AsksNothingTwiceOfADesktopWithTheEarlyDraft) {
  portal.reset();
  portal.emplace(ShortcutsPortal::Draft::Early);
  open();
  untilHeard({u"keys capture=ALT+SHIFT+s"_s});
  EXPECT_EQ(portal->calls.constLast(), u"ListShortcuts"_s);
}

TEST_F(PortalShortcutsTest, KeepsTheSessionWhereTheUserRefuses) {
  portal->method = u"BindShortcuts"_s;
  portal->instead = [this](const QString& request) { portal->respond(request, {1U, QVariantMap()}); };
  open();
  untilHeard({u"keys"_s});
  EXPECT_TRUE(shortcuts->isOpen());
  portal->change(u"history"_s, u"Meta+H"_s);  // he may have come to think better of it
  until("the keys are told", [&] { return heard.contains(u"keys capture=ALT+SHIFT+s history=Meta+H"_s); });
}

TEST_F(PortalShortcutsTest, IsNotOfferedWithoutAFrontEndOrByOneThatCannot) {
  portal.reset();
  open();
  untilHeard({u"not offered"_s});

  const auto expectNotOffered = [&](const char* why, std::function<void(const QString&)> instead) {
    SCOPED_TRACE(why);
    heard.clear();
    portal.emplace();
    portal->method = u"CreateSession"_s;
    portal->instead = std::move(instead);
    open();
    untilHeard({u"not offered"_s});
    portal.reset();
  };
  expectNotOffered("refused", [&](const QString& request) { portal->respond(request, {2U, QVariantMap()}); });
  expectNotOffered("junk", [&](const QString& request) { portal->respond(request, {u"yes"_s}); });
  expectNotOffered("no session", [&](const QString& request) {
    portal->respond(request, {0U, QVariantMap()});
  });
  expectNotOffered("not a session", [&](const QString& request) {
    portal->respond(request, {0U, QVariantMap{{u"session_handle"_s, 7}}});
  });
  expectNotOffered("gone in between", [&](const QString&) {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [&] { portal.reset(); }, Qt::QueuedConnection);
  });
}

TEST_F(PortalShortcutsTest, WaitsNoLongerThanTheLimit) {
  ManualClock clock;
  portal->method = u"CreateSession"_s;
  QString unanswered;
  portal->instead = [&](const QString& request) { unanswered = request; };
  open();
  untilCalled(u"CreateSession"_s);
  clock.advance(std::chrono::milliseconds(9999));
  EXPECT_TRUE(heard.isEmpty());
  clock.advance(std::chrono::milliseconds(1));
  EXPECT_EQ(heard, QStringList{u"not offered"_s});
  portal->respond(unanswered, {0U, QVariantMap{{u"session_handle"_s, portal->session()}}});  // too late
  portal->send(u"Activated"_s, u"capture"_s);
  QCoreApplication::processEvents();
  EXPECT_EQ(heard.size(), 1);
}

TEST_F(PortalShortcutsTest, EndsWithTheFrontEndAndWhenTheDesktopClosesIt) {
  open();
  untilHeard({u"keys capture=ALT+SHIFT+s"_s});
  portal->closeSession();
  until("the session ends", [&] { return heard.contains(u"ended"_s); });

  heard.clear();
  open();
  untilHeard({u"keys capture=ALT+SHIFT+s"_s});
  portal.reset();
  until("the session ends", [&] { return heard.contains(u"ended"_s); });
}

}  // namespace
