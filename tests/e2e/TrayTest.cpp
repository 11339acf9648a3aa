// The icon and its menu, in both kinds of tray, without one, and from one to the other.

#include "tests/e2e/Panel.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

const QRect area(100, 100, 50, 50);

TEST(XEmbedTray, ShowsWhetherTheBottleIsEmptyAndOpensTheMenu) {
  Desktop desktop;
  Sorrel sorrel(desktop);
  const QImage empty = sorrel.statusImage();
  sorrel.capture(area);
  until("the icon changes", [&] { return sorrel.statusImage() != empty; });
  Panel(desktop, sorrel).waitUntilOpen();

  sorrel.openMenu();
  desktop.input().tapKey(KEY_ESC);
  until("the menu is closed", [&] { return !sorrel.isMenuOpen(); });
  desktop.input().pressKey(KEY_LEFTCTRL);
  desktop.input().clickButton(1);
  desktop.input().releaseKey(KEY_LEFTCTRL);
  until("a Control-click has opened the menu", [&] { return sorrel.isMenuOpen(); });
}

TEST(StatusNotifierTray, ShowsWhetherTheBottleIsEmptyAndOffersTheMenuInTheUsersLanguage) {
  Desktop desktop({.tray = Tray::StatusNotifier, .language = Language::Korean});
  Sorrel sorrel(desktop);
  StatusNotifierHost& host = desktop.statusNotifier();
  EXPECT_EQ(host.openMenu().join(u'|'),
            u"캡처 기록 열기|설정…|업데이트 확인…|-|병 폴더 열기|-|Sorrel 종료"_s);
  const QImage empty = host.icon();
  EXPECT_FALSE(empty.isNull());
  EXPECT_EQ(host.toolTip(), u"Sorrel: 병이 비어 있습니다"_s);
  sorrel.capture(area);
  until("the icon changes", [&] { return host.icon() != empty; });
  EXPECT_EQ(host.toolTip(), u"Sorrel: 병에 스크린샷 1장"_s);
  host.trigger(6);
  EXPECT_EQ(sorrel.program().waitForEnd(), 0);
}

TEST(Trays, MayComeAndGoWhileTheProgramRuns) {
  Desktop desktop({.tray = Tray::None});
  Sorrel sorrel(desktop);
  sorrel.capture(area);
  // The history waits a moment for an icon to open below, and then takes the keyboard.
  const Panel panel(desktop, sorrel);
  until("the history is open", [&] { return panel.window().has_value(); });
  EXPECT_LE(sorrel.program().errors().count('\n'), 1) << sorrel.program().errors().constData();
  QList<QSize> menus;
  for (const Tray edge : {Tray::XEmbedAtTop, Tray::XEmbedAtBottom}) {
    desktop.changeTray(edge);
    const QRect opened = sorrel.openMenu();
    EXPECT_TRUE(QRect({}, desktop.screen().size()).contains(opened));
    menus << opened.size();
    desktop.input().tapKey(KEY_ESC);
    desktop.changeTray(Tray::StatusNotifier);
    EXPECT_EQ(desktop.statusNotifier().openMenu().size(), 7);
  }
  EXPECT_EQ(menus.first(), menus.last()) << "cut short at an edge";
  desktop.changeTray(Tray::None);
  sorrel.capture(area);
  EXPECT_LE(sorrel.program().errors().count('\n'), 1) << sorrel.program().errors().constData();
}

}  // namespace
}  // namespace e2e
