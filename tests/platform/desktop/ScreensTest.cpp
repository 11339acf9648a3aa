#include "platform/desktop/Screens.h"

#include <QGuiApplication>
#include <QScreen>

#include <gtest/gtest.h>

using namespace platform;

namespace {

constexpr PanelMetrics panel{{460, 500}, 4};

/// Where the panel's lower and upper edges come to lie.
std::pair<qreal, qreal> edges(const QRectF& anchor) {
  const qreal upper = anchor.top() - panel.gap;
  return {upper - panel.size.height(), upper};
}

TEST(ScreensTest, YGoesUpFromTheMainScreensLowerEdge) {
  const QRectF main = QGuiApplication::primaryScreen()->geometry();
  EXPECT_EQ(screenRect(main), QRectF(0, 0, main.width(), main.height()));
  EXPECT_EQ(screenRect(QRectF(10, 0, 22, 24)), QRectF(10, main.height() - 24, 22, 24));
  ASSERT_FALSE(screens().empty());
  EXPECT_EQ(screens().front().frame, QRectF(0, 0, main.width(), main.height()));
}

TEST(PanelAnchorTest, BelowABarAtTheTopTheItemIsTheAnchor) {
  const Screen screen{{0, 0, 1440, 900}, {0, 0, 1440, 876}};
  const QRectF item(1400, 877, 22, 22);
  EXPECT_EQ(panelAnchor(item, screen, panel), item);
}

TEST(PanelAnchorTest, AboveABarAtTheBottomThePanelStandsOnTheBar) {
  const QRectF item(1400, 1, 22, 22);
  for (const qreal reserved : {24.0, 0.0}) {  // a bar that hides itself reserves nothing
    const Screen screen{{0, 0, 1440, 900}, {0, reserved, 1440, 900 - reserved}};
    const QRectF anchor = panelAnchor(item, screen, panel);
    EXPECT_EQ(anchor.center().x(), item.center().x());
    const auto [lower, upper] = edges(anchor);
    EXPECT_EQ(lower, std::max(reserved, item.bottom()) + panel.gap);
    EXPECT_LE(upper, 900);
  }
}

TEST(PanelAnchorTest, BesideABarAtTheSideThePanelEndsAboveTheScreensEdge) {
  const Screen screen{{0, 0, 1440, 900}, {48, 0, 1392, 900}};
  const QRectF low(10, 40, 28, 28);
  EXPECT_EQ(edges(panelAnchor(low, screen, panel)).first, panel.gap);
  const QRectF high(10, 800, 28, 28);
  EXPECT_EQ(panelAnchor(high, screen, panel), high);
}

TEST(PanelAnchorTest, ASecondScreenBelowTheMainOneCounts) {
  const Screen lower{{0, -1080, 1920, 1080}, {0, -1050, 1920, 1050}};
  const QRectF item(1800, -1076, 22, 22);
  EXPECT_EQ(edges(panelAnchor(item, lower, panel)).first, -1050 + panel.gap);
}

}  // namespace
