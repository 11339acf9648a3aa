// The icon and its menu, in both kinds of tray, without one, and from one to the other.

#include "tests/e2e/Sorrel.h"

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

  EXPECT_TRUE(QRect({}, desktop.screen().size()).contains(sorrel.openMenu()));
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
  EXPECT_EQ(sorrel.program().errors().count('\n'), 1) << sorrel.program().errors().constData();
  for (int round = 0; round < 2; ++round) {
    desktop.changeTray(Tray::XEmbedAtTop);
    desktop.input().moveTo(sorrel.statusItem().center().x(), sorrel.statusItem().center().y());
    desktop.input().clickButton(3);
    until("the menu is open", [&] { return sorrel.isMenuOpen(); });
    desktop.input().tapKey(KEY_ESC);
    desktop.changeTray(Tray::StatusNotifier);
    EXPECT_EQ(desktop.statusNotifier().openMenu().size(), 7);
  }
  desktop.changeTray(Tray::None);
  sorrel.capture(area);
  EXPECT_EQ(sorrel.program().errors().count('\n'), 1) << sorrel.program().errors().constData();
}

}  // namespace
}  // namespace e2e
