// The hot keys act whatever else the keyboard and the desktop are doing.

#include "tests/e2e/Sorrel.h"

#include <QRegularExpression>

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <xcb/xproto.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

constexpr int altShift = XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT;

TEST(HotKeys, WorkWhateverTheLocksAndTheLayout) {
  Desktop desktop;
  Sorrel sorrel(desktop);
  for (const auto& [lock, mask] :
       {std::pair(KEY_NUMLOCK, XCB_MOD_MASK_2), std::pair(KEY_CAPSLOCK, XCB_MOD_MASK_LOCK)}) {
    desktop.input().tapKey(lock);
    ASSERT_TRUE(desktop.screen().modifiers() & mask);
    sorrel.beginCapture(KEY_S);
    sorrel.cancel();
  }
  for (const QString& layout : {u"de"_s, u"fr"_s, u"kr"_s}) {
    desktop.run({u"setxkbmap"_s, layout});
    until("the hot key is there", [&] { return desktop.screen().isKeyGrabbed(KEY_A, altShift); });
    // On a French keyboard this position bears a Q, and the A is elsewhere.
    sorrel.beginCapture(KEY_A);
    sorrel.cancel();
    EXPECT_FALSE(desktop.screen().isKeyGrabbed(KEY_Q, altShift)) << qPrintable(layout);
  }
}

TEST(HotKeys, AreWhatTheStoreSays) {
  Desktop desktop;
  // Option and Shift with the key R; an emptied one stays silent.
  Sorrel::store(desktop, u"KeyboardShortcuts_captureNormal"_s,
                u"{\"carbonKeyCode\":15,\"carbonModifiers\":2560}"_s);
  Sorrel::store(desktop, u"KeyboardShortcuts_captureFeature"_s, false);
  Sorrel sorrel(desktop);
  EXPECT_FALSE(desktop.screen().isKeyGrabbed(KEY_S, altShift));
  EXPECT_FALSE(desktop.screen().isKeyGrabbed(KEY_D, altShift));
  EXPECT_EQ(Sorrel::stored(desktop, u"KeyboardShortcuts_captureFeature"_s), QJsonValue(false));
  sorrel.beginCapture(KEY_R);
  sorrel.cancel();
}

TEST(HotKeys, HeldByAnotherProgramAreReportedAndTheOthersWork) {
  Desktop desktop;
  ASSERT_TRUE(desktop.screen().grabKey(KEY_S, altShift));
  Sorrel sorrel(desktop);
  const QString said = QString::fromUtf8(sorrel.program().output());
  EXPECT_TRUE(QRegularExpression(u"^Error registering hotkey ⌥⇧S: -?\\d+\n$"_s).match(said).hasMatch())
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
  desktop.screen().openWindow(u"Typing"_s, {100, 100}, randomPicture({200, 100}, 1));
  for (int press = 0; press < 50; ++press) {
    sorrel.beginCapture(KEY_S);
    sorrel.cancel();
  }
  until("no child is left, not even an ended one",
        [&] { return childrenOf(sorrel.program().processId()).isEmpty(); });
  EXPECT_FALSE(desktop.screen().isKeyboardGrabbed() || desktop.screen().isPointerGrabbed());
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
