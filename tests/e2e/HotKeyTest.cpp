// The hot keys act whatever else the keyboard and the desktop are doing.

#include "tests/e2e/Sorrel.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

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
