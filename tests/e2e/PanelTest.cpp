// The history panel as a window: where it opens, what closes it, what lies beneath its corners.

#include "tests/e2e/Sorrel.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

const QRect monitor(0, 0, 1024, 640);
/// In the panel, from its top left corner.
constexpr QPoint lockButton(411, 19);
constexpr QPoint closeButton(437, 19);
/// Beside the panel, on its shadow where it has one.
constexpr QPoint beside(-6, 250);

class Panel : public testing::TestWithParam<Compositor> {
 protected:
  Panel() : desktop({.compositor = GetParam()}) {
    desktop.screen().paintRoot(background);
    Sorrel::putPicture(desktop, u"picture.png"_s, randomPicture({200, 120}, 3));
  }

  /// Whether the background can be seen at the point, be it through a shadow.
  [[nodiscard]] bool isBackgroundSeen(const QImage& seen, QPoint point) const {
    const QColor behind(background.pixel(point));
    const QColor now(seen.pixel(point));
    const auto isShaded = [](int whole, int part) { return part <= whole + 1 && part >= whole * 0.6 - 2; };
    return isShaded(behind.red(), now.red()) && isShaded(behind.green(), now.green()) &&
           isShaded(behind.blue(), now.blue());
  }

  const QImage background = randomPicture(monitor.size(), 5);
  Desktop desktop;
};

INSTANTIATE_TEST_SUITE_P(Compositor, Panel, testing::Values(Compositor::None, Compositor::Running),
                         [](const auto& test) {
                           return test.param == Compositor::None ? "WithoutCompositor" : "WithCompositor";
                         });

TEST_P(Panel, OpensBelowTheIconAndClosesInEveryWay) {
  Sorrel sorrel(desktop);
  const QRect place = sorrel.panelPlace(monitor);
  const QPoint icon = sorrel.statusItem().center();

  sorrel.click(icon);
  sorrel.waitForPanel(place);
  sorrel.click(icon);
  sorrel.waitForNoPanel();
  sorrel.openPanel();
  sorrel.pressHotKey(KEY_F);
  sorrel.waitForNoPanel();
  sorrel.openPanel();
  desktop.input().tapKey(KEY_ESC);
  sorrel.waitForNoPanel();
  sorrel.openPanel();
  sorrel.click(place.topLeft() + closeButton);
  sorrel.waitForNoPanel();
}

TEST_P(Panel, StaysWhileItIsLocked) {
  Sorrel sorrel(desktop);
  const quint32 other =
      desktop.screen().openWindow(u"Other"_s, {300, 60}, randomPicture({700, 540}, 6), WindowKind::Ordinary);
  const auto [panel, place] = sorrel.openPanel();
  sorrel.click(place.topLeft() + lockButton);
  until("the lock is stored", [&] { return Sorrel::stored(desktop, u"historyPanelLocked"_s) == true; });

  // A click on the shadow is one on the window beneath.
  const auto leave = [&] {
    sorrel.click(place.topLeft() + beside);
    until("the other window has the keyboard", [&] { return desktop.screen().keyboardWindow() == other; });
  };
  leave();
  (void)desktop.screen().settledPicture();
  ASSERT_TRUE(sorrel.panel());
  EXPECT_EQ(sorrel.panel()->window, panel);
  const QRect thumbnail = sorrel.thumbnail(0);
  const QPoint edge(thumbnail.left(), thumbnail.center().y());
  const QRgb before = desktop.screen().picture().pixel(edge);
  sorrel.click(thumbnail.center());
  // Selected, too: the toolkit answers a click in asking for the keyboard once more.
  until("the panel has the keyboard again", [&] {
    return desktop.screen().keyboardWindow() == panel && desktop.screen().picture().pixel(edge) != before;
  });
  leave();
  sorrel.pressHotKey(KEY_F);
  sorrel.waitForNoPanel();

  sorrel.openPanel();
  desktop.input().moveTo(thumbnail.center().x(), thumbnail.center().y());
  desktop.input().doubleClick(1);  // edits, and the panel gives way
  sorrel.waitForNoPanel();

  const quint32 again = sorrel.openPanel().window;
  sorrel.click(place.topLeft() + lockButton);
  until("the lock is off", [&] { return Sorrel::stored(desktop, u"historyPanelLocked"_s) == false; });
  EXPECT_EQ(sorrel.panel()->window, again);
  leave();
  sorrel.waitForNoPanel();
}

TEST_P(Panel, ShowsWhatIsBeneathAtItsCorners) {
  Sorrel sorrel(desktop);
  const QRect place = sorrel.openPanel().frame;
  const QImage seen = desktop.screen().settledPicture();
  for (const QPoint corner : {place.topLeft(), place.topRight(), place.bottomLeft(), place.bottomRight()}) {
    const QPoint inwards(corner.x() == place.left() ? 1 : -1, corner.y() == place.top() ? 1 : -1);
    for (int x = 0; x < 3; ++x) {
      for (int y = 0; y < 3 - x; ++y) {
        const QPoint point = corner + QPoint(inwards.x() * x, inwards.y() * y);
        EXPECT_TRUE(isBackgroundSeen(seen, point)) << point.x() << ',' << point.y() << ' ' << std::hex
                                                   << seen.pixel(point) << background.pixel(point);
      }
    }
    EXPECT_FALSE(isBackgroundSeen(seen, corner + inwards * 14));
  }
  // Only a shadow darkens what is around.
  const QPoint around = place.topLeft() + QPoint(-3, 250);
  EXPECT_EQ(seen.pixel(around) != background.pixel(around), GetParam() == Compositor::Running);
}

TEST(PanelPlace, IsAboveABarAtTheBottom) {
  Desktop desktop({.tray = Tray::XEmbedAtBottom});
  Sorrel sorrel(desktop);
  EXPECT_LT(sorrel.openPanel().frame.bottom(), sorrel.statusItem().top());
}

TEST(PanelPlace, IsOnTheMonitorWithTheTray) {
  const QRect left(0, 0, 500, 640);
  const QRect right(500, 0, 600, 580);
  for (const auto& monitors : {std::vector{left, right}, std::vector{right, left}}) {
    Desktop desktop({.size = {1100, 640}});
    desktop.screen().setMonitors(monitors);
    Sorrel sorrel(desktop);
    const QRect place = sorrel.panelPlace(sorrel.statusItem().left() < right.left() ? left : right);
    sorrel.pressHotKey(KEY_F);
    sorrel.waitForPanel(place);
  }
}

TEST(PanelPlace, IsBelowTheClickOnAStatusNotifierIcon) {
  Desktop desktop({.tray = Tray::StatusNotifier});
  Sorrel sorrel(desktop);
  // Before the first click nobody knows where the icon is: a tenth of the screen above the middle.
  sorrel.pressHotKey(KEY_F);
  sorrel.waitForPanel(QRect(282, 6, 460, 500));
  sorrel.pressHotKey(KEY_F);
  sorrel.waitForNoPanel();
  for (const QPoint click : {QPoint(600, 10), QPoint(1020, 10)}) {
    desktop.input().moveTo(click.x(), click.y());
    desktop.statusNotifier().activate(click);
    sorrel.waitForPanel(QRect(std::min(click.x() - 229, 1024 - 468), 15, 460, 500));
    desktop.statusNotifier().activate(click);
    sorrel.waitForNoPanel();
  }
}

TEST(PanelFocus, IsGainedWhereNewWindowsGetNone) {
  Desktop desktop({.newWindows = NewWindows::MustAsk});
  Sorrel sorrel(desktop);
  const quint32 other = desktop.screen().openWindow(u"Typing"_s, {50, 100}, randomPicture({300, 200}, 6));
  desktop.screen().openWindow(u"Behind"_s, {50, 400}, randomPicture({100, 100}, 6));
  sorrel.click(QPoint(150, 150));
  until("somebody types", [&] { return desktop.screen().keyboardWindow() == other; });
  sorrel.openPanel();
  desktop.input().tapKey(KEY_ESC);
  sorrel.waitForNoPanel();
  sorrel.click(sorrel.statusItem().center());
  sorrel.waitForPanel(sorrel.panelPlace(monitor));
}

}  // namespace
}  // namespace e2e
