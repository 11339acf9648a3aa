// The icon and its menu, in both kinds of tray.

#include "tests/e2e/Sorrel.h"
#include "tests/e2e/Waiting.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

namespace e2e {
namespace {

const QRect area(100, 100, 50, 50);

class XEmbedTray : public testing::TestWithParam<Tray> {};

TEST_P(XEmbedTray, ShowsWhetherTheBottleIsEmpty) {
  Desktop desktop({.tray = GetParam()});
  Sorrel sorrel(desktop);
  const QImage empty = sorrel.statusImage();
  sorrel.capture(area);
  until("the icon changes", [&] { return sorrel.statusImage() != empty; });
  const QImage full = sorrel.statusImage();

  sorrel.capture(area);
  EXPECT_EQ(sorrel.statusImage(), full);
}

TEST_P(XEmbedTray, OpensTheMenuOnARightClickAndOnAControlClick) {
  Desktop desktop({.tray = GetParam()});
  Sorrel sorrel(desktop);
  const QRect screen({}, desktop.screen().size());
  const QRect menu = sorrel.openMenu();
  EXPECT_TRUE(screen.contains(menu));
  desktop.input().tapKey(KEY_ESC);
  until("the menu is closed", [&] { return !sorrel.isMenuOpen(); });

  desktop.input().pressKey(KEY_LEFTCTRL);
  desktop.input().clickButton(1);
  until("the menu is open again", [&] { return sorrel.isMenuOpen(); });
  desktop.input().releaseKey(KEY_LEFTCTRL);
}

INSTANTIATE_TEST_SUITE_P(Tray, XEmbedTray, testing::Values(Tray::XEmbedAtTop, Tray::XEmbedAtBottom),
                         [](const auto& tray) {
                           return tray.param == Tray::XEmbedAtTop ? "AtTop" : "AtBottom";
                         });

QString itemOf(Desktop& desktop) {
  until("the icon is registered", [&] { return !desktop.statusNotifier().items().isEmpty(); });
  return desktop.statusNotifier().items().first();
}

QStringList labels(const std::vector<StatusMenuRow>& rows) {
  QStringList labels;
  for (const StatusMenuRow& row : rows)
    labels << (row.isSeparator ? QStringLiteral("-") : row.label);
  return labels;
}

TEST(StatusNotifierTray, ShowsWhetherTheBottleIsEmpty) {
  Desktop desktop({.tray = Tray::StatusNotifier});
  Sorrel sorrel(desktop);
  const QString item = itemOf(desktop);
  const QImage empty = desktop.statusNotifier().icon(item);
  EXPECT_FALSE(empty.isNull());
  sorrel.capture(area);
  until("the icon changes", [&] { return desktop.statusNotifier().icon(item) != empty; });
}

TEST(StatusNotifierTray, OffersTheMenuInEnglish) {
  Desktop desktop({.tray = Tray::StatusNotifier});
  Sorrel sorrel(desktop);
  const QStringList expected{QStringLiteral("Open History"),       QStringLiteral("Settings…"),
                             QStringLiteral("Check for Updates…"), QStringLiteral("-"),
                             QStringLiteral("Open Bottle Folder"), QStringLiteral("-"),
                             QStringLiteral("Quit Sorrel")};
  EXPECT_EQ(labels(desktop.statusNotifier().openMenu(itemOf(desktop))), expected);
}

TEST(StatusNotifierTray, OffersTheMenuInKoreanAndQuits) {
  Desktop desktop({.tray = Tray::StatusNotifier, .language = Language::Korean});
  Sorrel sorrel(desktop);
  const QString item = itemOf(desktop);
  const std::vector<StatusMenuRow> rows = desktop.statusNotifier().openMenu(item);
  const QStringList expected{QStringLiteral("캡처 기록 열기"), QStringLiteral("설정…"),
                             QStringLiteral("업데이트 확인…"), QStringLiteral("-"),
                             QStringLiteral("병 폴더 열기"),   QStringLiteral("-"),
                             QStringLiteral("Sorrel 종료")};
  EXPECT_EQ(labels(rows), expected);
  desktop.statusNotifier().trigger(item, rows.back().id);
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
