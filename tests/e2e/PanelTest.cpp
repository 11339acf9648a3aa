// The history panel as a window: where it opens, what closes it, what lies beneath its corners.

#include "tests/e2e/Panel.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

const QRect monitor(0, 0, 1024, 640);
/// Beside the panel, on its shadow where it has one.
constexpr QPoint beside(-6, 250);
constexpr QPoint bareDesktop(100, 400);

class PanelWindow : public testing::TestWithParam<Compositor> {
 protected:
  PanelWindow() : desktop({.compositor = GetParam()}) {
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

  /// Where the screen isn't as it should be around the panel's round corners: the background seen outside,
  /// and darkened only by a shadow.
  [[nodiscard]] QString faultsAround(const QRect& place, Compositor shadow);

  const QImage background = randomPicture(monitor.size(), 5);
  Desktop desktop;
};

INSTANTIATE_TEST_SUITE_P(Compositor, PanelWindow, testing::Values(Compositor::None, Compositor::Running),
                         [](const auto& test) {
                           return test.param == Compositor::None ? "WithoutCompositor" : "WithCompositor";
                         });

TEST_P(PanelWindow, OpensBelowTheIconAndClosesInEveryWay) {
  Sorrel sorrel(desktop);
  Panel panel(desktop, sorrel);
  const QRect place = panel.place();
  const QPoint icon = sorrel.statusItem().center();

  panel.click(icon);
  panel.waitUntilOpen(place);
  panel.click(icon);
  panel.waitUntilClosed();
  panel.open();
  sorrel.pressHotKey(KEY_F);
  panel.waitUntilClosed();
  panel.open();
  desktop.input().tapKey(KEY_ESC);
  panel.waitUntilClosed();
  panel.open();
  panel.click(panel.closeButton());
  panel.waitUntilClosed();
  panel.open();
  panel.click(bareDesktop);
  panel.waitUntilClosed();
}

TEST_P(PanelWindow, IsAfterACancelledCaptureAsItWas) {
  Sorrel sorrel(desktop);
  Panel panel(desktop, sorrel);
  const auto [window, place] = panel.open();
  EXPECT_TRUE(desktop.screen().isListed(window, "_NET_WM_STATE", "_NET_WM_STATE_SKIP_TASKBAR"));
  EXPECT_TRUE(desktop.screen().hasProperty(window, "_NET_WM_ICON"));
  panel.moveTo(bareDesktop);
  for (const bool isByButton : {false, true}) {
    sorrel.beginCapture(KEY_S);
    (void)desktop.screen().settledPicture();
    if (isByButton)
      desktop.input().clickButton(3);
    else
      desktop.input().tapKey(KEY_ESC);
    until("the selection is gone", [&] { return !sorrel.isSelecting(); });
    (void)desktop.screen().settledPicture();
    ASSERT_TRUE(panel.window());
    EXPECT_EQ(panel.window()->id, window);
    EXPECT_EQ(panel.window()->frame, place);
    EXPECT_EQ(desktop.screen().keyboardWindow(), window);
  }
  desktop.input().tapKey(KEY_ESC);
  panel.waitUntilClosed();
}

TEST_P(PanelWindow, StaysWhileItIsLocked) {
  Sorrel sorrel(desktop);
  Panel panel(desktop, sorrel);
  const quint32 other =
      desktop.screen().openWindow(u"Other"_s, {300, 60}, randomPicture({700, 540}, 6), WindowKind::Ordinary);
  const auto [window, place] = panel.open();
  panel.click(panel.lockButton());
  until("the lock is stored", [&] { return Sorrel::stored(desktop, u"historyPanelLocked"_s) == true; });

  // A click on the shadow is one on the window beneath.
  const auto leave = [&] {
    panel.click(place.topLeft() + beside);
    until("the other window has the keyboard", [&] { return desktop.screen().keyboardWindow() == other; });
  };
  leave();
  (void)desktop.screen().settledPicture();
  ASSERT_TRUE(panel.window());
  EXPECT_EQ(panel.window()->id, window);
  const QRect thumbnail = panel.thumbnail(0);
  const QPoint edge(thumbnail.left(), thumbnail.center().y());
  const QRgb before = desktop.screen().picture().pixel(edge);
  panel.click(thumbnail.center());
  // Selected, too: the toolkit answers a click in asking for the keyboard once more.
  until("the panel has the keyboard again", [&] {
    return desktop.screen().keyboardWindow() == window && desktop.screen().picture().pixel(edge) != before;
  });
  leave();
  sorrel.pressHotKey(KEY_F);
  panel.waitUntilClosed();

  panel.open();
  desktop.input().moveTo(thumbnail.center().x(), thumbnail.center().y());
  desktop.input().doubleClick(1);  // edits, and the panel gives way
  panel.waitUntilClosed();
  const auto editor = [&] { return desktop.screen().find(u"Sorrel Editor"_s); };
  until("the editor has the keyboard",
        [&] { return editor() && desktop.screen().keyboardWindow() == editor()->id; });
  desktop.input().tapKey(KEY_ESC);
  until("the editor is gone", [&] { return !editor(); });

  const quint32 again = panel.open().id;
  panel.click(panel.lockButton());
  until("the lock is off", [&] { return Sorrel::stored(desktop, u"historyPanelLocked"_s) == false; });
  EXPECT_EQ(panel.window()->id, again);
  leave();
  panel.waitUntilClosed();
}

QString PanelWindow::faultsAround(const QRect& place, Compositor shadow) {
  const QImage seen = desktop.screen().settledPicture();
  QStringList faults;
  const auto expect = [&](bool isSeen, QPoint point) {
    if (isBackgroundSeen(seen, point) != isSeen)
      faults << u"%1,%2 %3"_s.arg(point.x()).arg(point.y()).arg(seen.pixelColor(point).name());
  };
  for (const QPoint corner : {place.topLeft(), place.topRight(), place.bottomLeft(), place.bottomRight()}) {
    const QPoint inwards(corner.x() == place.left() ? 1 : -1, corner.y() == place.top() ? 1 : -1);
    for (int x = 0; x < 3; ++x)
      for (int y = 0; y < 3 - x; ++y)
        expect(true, corner + QPoint(inwards.x() * x, inwards.y() * y));
    expect(false, corner + inwards * 14);
  }
  const QPoint around = place.topLeft() + QPoint(-3, 250);
  if ((seen.pixel(around) != background.pixel(around)) != (shadow == Compositor::Running))
    faults << u"the shadow"_s;
  return faults.join(u'|');
}

TEST_P(PanelWindow, ShowsWhatIsBeneathAtItsCorners) {
  Sorrel sorrel(desktop);
  Panel panel(desktop, sorrel);
  const QRect frame = panel.open().frame;
  EXPECT_EQ(faultsAround(frame, GetParam()), QString());
  // The compositing manager goes and comes; a shadow comes with the next opening. Its first picture takes a
  // moment.
  if (GetParam() == Compositor::Running) {
    desktop.stopCompositor();
    EXPECT_EQ(faultsAround(frame, Compositor::None), QString());
  }
  desktop.startCompositor();
  until("the desktop is composited", [&] { return faultsAround(frame, GetParam()).isEmpty(); });
}

TEST(PanelPlace, IsKeptBesideAWindowManagerThatMovesWindows) {
  Desktop desktop({.compositor = Compositor::Running, .windowManager = WindowManager::Marco});
  Sorrel sorrel(desktop);
  Panel panel(desktop, sorrel);
  panel.click(sorrel.statusItem().center());
  panel.waitUntilOpen(panel.place());
  panel.click(bareDesktop);
  panel.waitUntilClosed();
}

TEST(PanelPlace, IsBelowTheBarWithAStatusNotifierIcon) {
  Desktop desktop({.tray = Tray::StatusNotifier});
  Sorrel sorrel(desktop);
  Panel panel(desktop, sorrel);
  // Before the first click nobody knows where the icon is: above the middle, as far as the bar allows.
  sorrel.pressHotKey(KEY_F);
  constexpr int bar = statusNotifierBarHeight;
  panel.waitUntilOpen(QRect(282, bar, 460, 500));
  sorrel.pressHotKey(KEY_F);
  panel.waitUntilClosed();
  const struct {
    QPoint pointer;
    QPoint told;
    int middle;
  } clicks[] = {
      {{600, 10}, {600, 10}, 600},
      {{1020, 10}, {1020, 10}, 1020},
      {{400, 10}, {0, 0}, 400},      // some trays don't tell
      {{500, 600}, {300, 10}, 300},  // by a key, the pointer being elsewhere
  };
  for (const auto& click : clicks) {
    desktop.input().moveTo(click.pointer.x(), click.pointer.y());
    desktop.statusNotifier().activate(click.told);
    panel.waitUntilOpen(QRect(std::min(click.middle + 1, 1024 - 8 - 230) - 230, bar + 4, 460, 500));
    desktop.statusNotifier().activate(click.told);
    panel.waitUntilClosed();
  }
}

TEST(PanelFocus, IsGainedWhereNewWindowsGetNone) {
  Desktop desktop({.newWindows = NewWindows::MustAsk});
  Sorrel sorrel(desktop);
  Panel panel(desktop, sorrel);
  const quint32 other = desktop.screen().openWindow(u"Typing"_s, {50, 100}, randomPicture({300, 200}, 6));
  desktop.screen().openWindow(u"Behind"_s, {50, 400}, randomPicture({100, 100}, 6));
  panel.click(QPoint(150, 150));
  until("somebody types", [&] { return desktop.screen().keyboardWindow() == other; });
  panel.open();
  desktop.input().tapKey(KEY_ESC);
  panel.waitUntilClosed();
  panel.click(sorrel.statusItem().center());
  panel.waitUntilOpen();
}

}  // namespace
}  // namespace e2e
