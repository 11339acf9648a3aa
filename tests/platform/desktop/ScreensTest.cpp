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

TEST(PanelAnchorTest, ThePanelIsWhollyVisibleWhereverTheBarIs) {
  const QRectF whole(0, 0, 1440, 900);
  const Screen top{whole, {0, 0, 1440, 876}}, left{whole, {48, 0, 1392, 900}};
  for (const auto& [screen, item] :
       {std::pair(top, QRectF(1400, 877, 22, 22)), std::pair(left, QRectF(10, 800, 28, 28))})
    EXPECT_EQ(panelAnchor(item, screen, panel), item) << "there is room below the item";
  EXPECT_EQ(edges(panelAnchor({10, 40, 28, 28}, left, panel)).first, panel.gap);

  const QRectF item(1400, 1, 22, 22);
  for (const qreal reserved : {24.0, 0.0}) {  // a bar that hides itself reserves nothing
    const QRectF anchor = panelAnchor(item, {whole, {0, reserved, 1440, 900 - reserved}}, panel);
    EXPECT_EQ(anchor.center().x(), item.center().x());
    EXPECT_EQ(edges(anchor).first, std::max(reserved, item.bottom()) + panel.gap);
  }
  const Screen below{{0, -1080, 1920, 1080}, {0, -1050, 1920, 1050}};
  EXPECT_EQ(edges(panelAnchor({1800, -1076, 22, 22}, below, panel)).first, -1050 + panel.gap);
}

}  // namespace
