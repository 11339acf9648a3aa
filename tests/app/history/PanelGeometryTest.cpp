#include "app/history/PanelGeometry.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

using namespace sorrel;
using platform::Screen;

namespace {

constexpr int titleBarHeight = 39;

TEST(PanelGeometryTest, ThePanelHangsBelowItsAnchorOrWhereTheRoomIs) {
  const Screen main{{0, 0, 1000, 800}, {0, 30, 1000, 770}};
  const Screen second{{1000, 0, 700, 600}, {1040, 0, 660, 600}};
  const Screen narrow{{0, 0, 400, 800}, {0, 0, 400, 800}};
  const Screen close{{0, 0, 465, 800}, {0, 0, 465, 800}};
  const Screen barBelow{{0, 0, 1000, 800}, {0, 0, 1000, 770}};
  const Screen shortTop{{0, 0, 1024, 520}, {0, 28, 1024, 492}};
  const Screen shortScaled{{0, 0, 911, 512}, {0, 19, 911, 493}};
  const struct {
    const char* name;
    std::optional<QRectF> anchor;
    std::vector<Screen> screens;
    QPointF corner;
  } cases[] = {
      {"in the middle", QRectF(489, 8, 22, 22), {main}, {270, 34}},
      {"at the far left", QRectF(0, 8, 22, 22), {main}, {8, 34}},
      {"at the far right", QRectF(978, 8, 22, 22), {main}, {532, 34}},
      {"in a bar deeper than its icon", QRectF(489, 4, 22, 22), {main}, {270, 34}},
      {"a click in a bar", QRectF(489, 12, 1, 1), {main}, {259.5, 34}},
      {"on the second screen", QRectF(1340, 0, 20, 22), {main, second}, {1120, 26}},
      {"beside the second screen's bar", QRectF(1000, 0, 22, 22), {main, second}, {1048, 26}},
      {"low in a bar at the left", QRectF(1010, 560, 22, 22), {main, second}, {1048, 56}},
      {"in a bar below", QRectF(900, 774, 22, 22), {barBelow}, {532, 266}},
      {"in a bar that hides itself", QRectF(900, 774, 22, 22), {{main.frame, main.frame}}, {532, 270}},
      {"on no screen: held by the main one", QRectF(5000, 8, 22, 22), {main, second}, {532, 34}},
      {"the right margin has the last word", QRectF(189, 0, 22, 22), {narrow}, {-68, 26}},
      {"no room for margins", QRectF(189, 0, 22, 22), {close}, {0, 26}},
      {"too short for the gaps", QRectF(1000, 3, 22, 22), {shortTop}, {556, 28}},
      {"too short for the panel", QRectF(800, 0, 19, 19), {shortScaled}, {443, 19}},
      {"it steps aside", QRectF(600, 230, 22, 22), {{{0, 0, 1100, 510}, {0, 0, 1100, 510}}}, {136, 6}},
      {"no anchor", std::nullopt, {main, second}, {270, 88}},
      {"no anchor, short", std::nullopt, {shortTop}, {282, 28}},
  };
  for (const auto& each : cases)
    EXPECT_EQ(PanelGeometry::targetFrame(each.anchor, each.screens), QRectF(each.corner, QSizeF(460, 500)))
        << each.name;
  EXPECT_EQ(PanelGeometry::targetFrame({}, {}).size(), QSizeF(460, 500)) << "no screen at all";
}

TEST(PanelGeometryTest, ItIsInSightOnAnyScreenWithAnyBar) {
  QRandomGenerator random(11);
  for (int i = 0; i < 20000; ++i) {
    const QRectF frame(random.bounded(-2000, 2000), random.bounded(-2000, 2000), random.bounded(300, 2000),
                       random.bounded(300, 1500));
    QRectF visible = frame;
    const int depth = random.bounded(0, 80);
    const int edge = random.bounded(4);
    edge == 0   ? visible.setTop(frame.top() + depth)
    : edge == 1 ? visible.setBottom(frame.bottom() - depth)
    : edge == 2 ? visible.setLeft(frame.left() + depth)
                : visible.setRight(frame.right() - depth);
    const QRectF icon(frame.left() + random.bounded(frame.width() - 22),
                      frame.top() + random.bounded(frame.height() - 22), 22, 22);
    const Screen screen{frame, visible};
    const Screen other{frame.translated(frame.width(), 0), frame.translated(frame.width(), 0)};
    const bool hasAnchor = random.bounded(8) > 0;
    const QRectF panel = PanelGeometry::targetFrame(
        hasAnchor ? std::optional(icon) : std::nullopt,
        hasAnchor && random.bounded(2) ? std::vector{other, screen} : std::vector{screen, other});
    const auto tell = [&] {
      return testing::Message() << "screen " << frame.width() << 'x' << frame.height() << " bar " << edge
                                << ' ' << depth << " icon " << icon.x() - frame.x() << ','
                                << icon.y() - frame.y() << " panel " << panel.x() - frame.x() << ','
                                << panel.y() - frame.y();
    };
    const bool isWideEnough = visible.width() >= panel.width();
    const bool isHighEnough = visible.height() >= panel.height();
    if (isWideEnough) {
      ASSERT_TRUE(panel.left() >= visible.left() && panel.right() <= visible.right()) << tell();
    }
    ASSERT_TRUE(panel.top() >= visible.top()) << tell();
    ASSERT_LE(isHighEnough ? panel.bottom() : panel.top() + titleBarHeight, visible.bottom()) << tell();
    // Whoever sees room for the panel beside its icon sees the icon.
    const bool isRoomBeside = isHighEnough && (icon.left() - visible.left() >= panel.width() + 4 ||
                                               visible.right() - icon.right() >= panel.width() + 4);
    ASSERT_FALSE(hasAnchor && isRoomBeside && panel.intersects(icon)) << tell();
  }
}

}  // namespace
