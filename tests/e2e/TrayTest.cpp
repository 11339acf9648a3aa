// The icon and its menu, in both kinds of tray and without one.

#include "tests/e2e/Sorrel.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

const QRect area(100, 100, 50, 50);

class XEmbedTray : public testing::TestWithParam<Tray> {};

TEST_P(XEmbedTray, ShowsWhetherTheBottleIsEmptyAndOpensTheMenu) {
  Desktop desktop({.tray = GetParam()});
  Sorrel sorrel(desktop);
  const QImage empty = sorrel.statusImage();
  sorrel.capture(area);
  until("the icon changes", [&] { return sorrel.statusImage() != empty; });
  const QImage full = sorrel.statusImage();
  sorrel.capture(area);
  EXPECT_EQ(sorrel.statusImage(), full);

  EXPECT_TRUE(QRect({}, desktop.screen().size()).contains(sorrel.openMenu()));
  desktop.input().tapKey(KEY_ESC);
  until("the menu is closed", [&] { return !sorrel.isMenuOpen(); });
  desktop.input().pressKey(KEY_LEFTCTRL);
  desktop.input().clickButton(1);
  until("a Control-click has opened the menu", [&] { return sorrel.isMenuOpen(); });
}

INSTANTIATE_TEST_SUITE_P(Tray, XEmbedTray, testing::Values(Tray::XEmbedAtTop, Tray::XEmbedAtBottom));

TEST(StatusNotifierTray, ShowsWhetherTheBottleIsEmptyAndOffersTheMenuInEnglish) {
  Desktop desktop({.tray = Tray::StatusNotifier});
  Sorrel sorrel(desktop);
  StatusNotifierHost& host = desktop.statusNotifier();
  EXPECT_EQ(host.openMenu().join(u'|'),
            u"Open History|Settings…|Check for Updates…|-|Open Bottle Folder|-|Quit Sorrel"_s);
  const QImage empty = host.icon();
  EXPECT_FALSE(empty.isNull());
  sorrel.capture(area);
  until("the icon changes", [&] { return host.icon() != empty; });
}

TEST(StatusNotifierTray, OffersTheMenuInKoreanAndQuits) {
  Desktop desktop({.tray = Tray::StatusNotifier, .language = Language::Korean});
  Sorrel sorrel(desktop);
  EXPECT_EQ(desktop.statusNotifier().openMenu().join(u'|'),
            u"캡처 기록 열기|설정…|업데이트 확인…|-|병 폴더 열기|-|Sorrel 종료"_s);
  desktop.statusNotifier().trigger(6);
  EXPECT_EQ(sorrel.program().waitForEnd(), 0);
}

TEST(NoTray, IsSaidOnceAndTheHotKeysWork) {
  Desktop desktop({.tray = Tray::None});
  Sorrel sorrel(desktop);
  sorrel.capture(area);
  sorrel.capture(area);
  EXPECT_EQ(sorrel.program().errors().count('\n'), 1) << sorrel.program().errors().constData();
}

}  // namespace
}  // namespace e2e
