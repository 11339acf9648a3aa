#include "platform/desktop/DesktopAppearance.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/SettingsPortal.h"
#include "tests/support/Waiting.h"

#include <QApplication>
#include <QPalette>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace platform;
using testing_support::until;

namespace {

[[maybe_unused]] const auto* const ownBus =
    testing::AddGlobalTestEnvironment(new testing_support::OwnSessionBus);

constexpr Color accent = Color::lightDark(0x112233, 0xaabbcc);

class AppearanceTest : public testing::Test {
 protected:
  ~AppearanceTest() override { QApplication::setPalette(QPalette()); }

  void untilSeen(const QList<Appearance>& expected) {
    until("change " + std::to_string(expected.size()) + " is told",
          [&] { return seen.size() >= expected.size(); });
    EXPECT_EQ(seen, expected);
  }

  const QPalette toolkits = QApplication::palette();
  std::optional<testing_support::SettingsPortal> portal{std::in_place,
                                                        qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS")};
  /// What the observer saw at each call.
  QList<Appearance> seen;
  Subscription token = observeAppearance([this] { seen << currentAppearance(); });
};

TEST_F(AppearanceTest, FollowsTheDesktopAndLetsGoOfItAgain) {
  using enum Appearance;
  ASSERT_EQ(currentAppearance(), Light);
  portal->answer = 1U;
  const DesktopAppearance appearance(accent);
  EXPECT_TRUE(seen.isEmpty()) << "nothing waits for the answer";
  untilSeen({Dark});
  EXPECT_EQ(QApplication::palette().color(QPalette::Highlight), QColor(0xaabbcc));

  portal->choose(2U);
  untilSeen({Dark, Light});
  EXPECT_EQ(QApplication::palette(), toolkits) << "it fits by itself";
  portal->choose(1U);
  untilSeen({Dark, Light, Dark});
  portal->choose(0U, u"contrast"_s);
  portal->choose(u"dark"_s);  // what isn't one of the three numbers is no preference
  untilSeen({Dark, Light, Dark, Light});
  EXPECT_EQ(QApplication::palette(), toolkits);

  // A toolkit that is dark itself, on a desktop that wants light.
  QApplication::setPalette(QPalette(Qt::black));
  untilSeen({Dark, Light, Dark, Light, Dark});
  portal->choose(2U);
  untilSeen({Dark, Light, Dark, Light, Dark, Light});
  EXPECT_EQ(portal->questions, 1);

  token.end();
  portal->choose(1U);
  until("the last change", [] { return currentAppearance() == Dark; });
  EXPECT_EQ(seen.size(), 6);
}

TEST_F(AppearanceTest, WithoutAnAnswerTheToolkitDecidesUntilSomebodyComesWhoKnows) {
  const DesktopAppearance appearance(accent);
  until("the desktop is asked", [&] { return portal->questions == 1; });
  portal->choose(7U);
  portal->choose(1U);  // by which all that went before has arrived
  untilSeen({Appearance::Dark});
  portal->choose(0U);
  untilSeen({Appearance::Dark, Appearance::Light});

  portal.reset();
  portal.emplace(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"));
  portal->answer = 1U;
  untilSeen({Appearance::Dark, Appearance::Light, Appearance::Dark});
}

}  // namespace
