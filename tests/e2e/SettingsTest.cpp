// What is changed in the settings acts at once.

#include "tests/e2e/Settings.h"
#include "tests/support/Files.h"

#include <QDateTime>

#include <algorithm>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <xcb/xproto.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

constexpr int altShift = XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT;
constexpr int controlAlt = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;

TEST(SettingsWindow, AShortcutRecordedInItCapturesAtOnce) {
  Desktop desktop;
  Sorrel sorrel(desktop);
  Settings settings(desktop, sorrel);
  settings.openByMenu();
  settings.select(Settings::Tab::Shortcuts);
  settings.click(Settings::recorder(0));
  until("it records", [&] { return desktop.screen().isKeyboardGrabbed(); });
  settings.pressWithControl(KEY_Q);
  until("an alert refuses what the program's menu has", [&] {
    const auto windows = desktop.screen().windows();
    return std::ranges::any_of(windows, [&](const ScreenWindow& window) {
      return window.title == u"Sorrel"_s && window.id == desktop.screen().keyboardWindow();
    });
  });
  desktop.input().tapKey(KEY_ENTER);
  until("it records again", [&] { return desktop.screen().isKeyboardGrabbed(); });
  desktop.input().pressKey(KEY_LEFTALT);
  settings.pressWithControl(KEY_P);
  desktop.input().releaseKey(KEY_LEFTALT);
  until("the new hot key is there", [&] { return desktop.screen().isKeyGrabbed(KEY_P, controlAlt); });
  EXPECT_FALSE(desktop.screen().isKeyGrabbed(KEY_S, altShift)) << "the old one is the desktop's again";
  until("it has let the keyboard go", [&] { return !desktop.screen().isKeyboardGrabbed(); });

  desktop.input().pressKey(KEY_LEFTALT);
  settings.pressWithControl(KEY_P);
  desktop.input().releaseKey(KEY_LEFTALT);
  until("the selection is there",
        [&] { return sorrel.isSelecting() && desktop.screen().isPointerGrabbed(); });
  sorrel.drag({100, 100, 50, 50});
  EXPECT_FALSE(sorrel.waitForCapture({}).isEmpty());
}

TEST(SettingsWindow, OldScreenshotsGoWhenTheirAgeIsChosen) {
  Desktop desktop;
  const QString old = Sorrel::putPicture(desktop, u"old.png"_s, randomPicture({30, 20}, 1));
  testing_support::setModified(old, QDateTime::currentDateTime().addDays(-20));
  Sorrel sorrel(desktop);
  Panel panel(desktop, sorrel);
  Settings settings(desktop, sorrel);
  panel.open();
  settings.openByKeys();
  settings.select(Settings::Tab::Storage);
  desktop.input().tapKey(KEY_TAB);
  desktop.input().tapKey(KEY_UP);  // from 30 days to 14
  until("the old picture is gone", [&] { return sorrel.bottle().isEmpty(); });
  EXPECT_EQ(Sorrel::stored(desktop, u"autoDeleteDays"_s), QJsonValue(14));

  const quint32 first = settings.window()->id;
  settings.openByMenu();
  EXPECT_EQ(settings.window()->id, first) << "there is one window";
  settings.close();
}

}  // namespace
}  // namespace e2e
