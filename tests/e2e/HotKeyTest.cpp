// The hot keys act whatever else the keyboard and the desktop are doing.

#include "tests/e2e/Sorrel.h"
#include "tests/e2e/Waiting.h"

#include <QRegularExpression>

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <xcb/xproto.h>

namespace e2e {
namespace {

constexpr quint16 altShift = XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT;

TEST(HotKeys, WorkWithNumLockAndCapsLockOn) {
  Desktop desktop;
  Sorrel sorrel(desktop);
  desktop.input().tapKey(KEY_NUMLOCK);
  ASSERT_EQ(desktop.screen().modifiers(), XCB_MOD_MASK_2);
  sorrel.beginCapture(KEY_S);
  sorrel.cancel();
  desktop.input().tapKey(KEY_CAPSLOCK);
  ASSERT_EQ(desktop.screen().modifiers(), XCB_MOD_MASK_2 | XCB_MOD_MASK_LOCK);
  sorrel.beginCapture(KEY_S);
  sorrel.cancel();
}

TEST(HotKeys, KeepTheirPositionsWhenTheLayoutChanges) {
  Desktop desktop;
  Sorrel sorrel(desktop);
  for (const char* layout : {"de", "fr", "kr"}) {
    desktop.run({QStringLiteral("setxkbmap"), QString::fromLatin1(layout)});
    until("the hot key is there", [&] { return desktop.screen().isKeyGrabbed(KEY_A, altShift); });
    // On a French keyboard this position bears a Q, and the A is elsewhere.
    sorrel.beginCapture(KEY_A);
    sorrel.cancel();
    EXPECT_FALSE(desktop.screen().isKeyGrabbed(KEY_Q, altShift)) << layout;
  }
}

TEST(HotKeys, AreWhatTheStoreSays) {
  Desktop desktop;
  // Option and Shift with the key R; an emptied one stays silent.
  Sorrel::store(desktop, QStringLiteral("KeyboardShortcuts_captureNormal"),
                QStringLiteral("{\"carbonKeyCode\":15,\"carbonModifiers\":2560}"));
  Sorrel::store(desktop, QStringLiteral("KeyboardShortcuts_captureFeature"), false);
  Sorrel sorrel(desktop);
  EXPECT_FALSE(desktop.screen().isKeyGrabbed(KEY_S, altShift));
  EXPECT_FALSE(desktop.screen().isKeyGrabbed(KEY_D, altShift));
  EXPECT_EQ(Sorrel::stored(desktop, QStringLiteral("KeyboardShortcuts_captureFeature")), QJsonValue(false));
  sorrel.beginCapture(KEY_R);
  sorrel.cancel();
}

TEST(HotKeys, HeldByAnotherProgramAreReportedAndTheOthersWork) {
  Desktop desktop;
  ASSERT_TRUE(desktop.screen().grabKey(KEY_S, altShift));
  Sorrel sorrel(desktop);
  const QString said = QString::fromUtf8(sorrel.program().output());
  EXPECT_TRUE(
      QRegularExpression(QStringLiteral("^Error registering hotkey ⌥⇧S: -?\\d+\n$")).match(said).hasMatch())
      << qPrintable(said);
  for (const int key : {KEY_D, KEY_A}) {
    sorrel.beginCapture(key);
    sorrel.cancel();
  }
}

TEST(HotKeys, WorkWhileTheMenuIsOpen) {
  Desktop desktop;
  Sorrel sorrel(desktop);
  sorrel.openMenu();
  EXPECT_FALSE(sorrel.capture(QRect(100, 100, 50, 50)).isEmpty());
  // And they are the desktop's again afterwards.
  until("the menu is closed", [&] { return !sorrel.isMenuOpen(); });
  EXPECT_FALSE(sorrel.capture(QRect(100, 100, 50, 50)).isEmpty());
}

TEST(HotKeys, PressedFiftyTimesLeaveNothingBehind) {
  Desktop desktop;
  Sorrel sorrel(desktop);
  desktop.screen().openWindow(QStringLiteral("Typing"), {100, 100}, randomPicture({200, 100}, 1));
  for (int press = 0; press < 50; ++press) {
    sorrel.beginCapture(KEY_S);
    sorrel.cancel();
  }
  until("no child is left, not even an ended one",
        [&] { return childrenOf(sorrel.program().processId()).isEmpty(); });
  EXPECT_FALSE(desktop.screen().isInputGrabbed());
  EXPECT_EQ(desktop.screen().modifiers(), 0);

  desktop.input().moveTo(150, 150);
  desktop.input().clickButton(1);
  until("keys reach other windows", [&] {
    desktop.input().tapKey(KEY_S);
    return !desktop.screen().takeKeyPresses().empty();
  });
}

}  // namespace
}  // namespace e2e
