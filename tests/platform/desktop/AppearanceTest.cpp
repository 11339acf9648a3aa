#include "platform/desktop/DesktopAppearance.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/SettingsPortal.h"
#include "tests/support/Waiting.h"

#include <QApplication>
#include <QPalette>

#include <cmath>
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

TEST_F(AppearanceTest, ItsColoursCanBeRead) {
  // By the contrast ratio that accessibility guidelines ask of texts, 4.5.
  const auto luminance = [](const QColor& color) {
    const auto linear = [](float value) {
      return value <= 0.03928F ? value / 12.92F : std::pow((value + 0.055F) / 1.055F, 2.4F);
    };
    return 0.2126F * linear(color.redF()) + 0.7152F * linear(color.greenF()) +
           0.0722F * linear(color.blueF());
  };
  const auto contrast = [&](const QColor& one, const QColor& other) {
    const auto [low, high] = std::minmax({luminance(one), luminance(other)});
    return (high + 0.05F) / (low + 0.05F);
  };
  for (const auto& [choice, start] : {std::pair(1U, Qt::white), std::pair(2U, Qt::black)}) {
    QApplication::setPalette(QPalette(start));
    const DesktopAppearance appearance(Color::lightDark(0x3B6B2F, 0x6FAE4E));
    const Appearance before = currentAppearance();
    portal->choose(choice);
    until("the palette has changed", [&] { return currentAppearance() != before; });
    const QPalette palette = QApplication::palette();
    using Role = QPalette::ColorRole;
    for (const auto& [ink, paper] :
         {std::pair(Role::WindowText, Role::Window), std::pair(Role::Text, Role::Base),
          std::pair(Role::Text, Role::AlternateBase), std::pair(Role::ButtonText, Role::Button),
          std::pair(Role::ToolTipText, Role::ToolTipBase), std::pair(Role::HighlightedText, Role::Highlight),
          std::pair(Role::Link, Role::Base)})
      EXPECT_GE(contrast(palette.color(ink), palette.color(paper)), 4.5F) << choice << ": " << ink;
  }
}

}  // namespace
