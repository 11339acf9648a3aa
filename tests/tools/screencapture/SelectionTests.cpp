#include "tools/screencapture/Arguments.h"
#include "tools/screencapture/HeldKeys.h"
#include "tools/screencapture/Selection.h"

#include <gtest/gtest.h>
#include <vector>

using namespace screencapture;

namespace {

constexpr Size screen{100, 80};
const std::vector<Rectangle> windows{{10, 10, 30, 20}, {20, 15, 60, 50}};  // the first lies above the second

Selection selection() {
  return {screen, windows, {50, 40}};
}

Selection dragged(Point from, Point to) {
  Selection drag = selection();
  drag.pressButton(Button::Left, from);
  drag.movePointer(to);
  return drag;
}

}  // namespace

TEST(Selection, holdsThePixelsUnderPressAndReleaseInAllDirections) {
  for (const auto& [from, to] : {std::pair<Point, Point>{{10, 20}, {30, 50}},
                                 {{30, 50}, {10, 20}},
                                 {{10, 50}, {30, 20}},
                                 {{30, 20}, {10, 50}}}) {
    Selection drag = dragged(from, {60, 60});
    drag.releaseButton(Button::Left, to);
    EXPECT_EQ(drag.outcome(), Outcome::Taken);
    EXPECT_EQ(drag.selected(), (Rectangle{10, 20, 21, 31}));
  }
}

TEST(Selection, staysOnTheScreen) {
  EXPECT_EQ(dragged({-5, -5}, {500, 500}).selected(), (Rectangle{0, 0, 100, 80}));
  EXPECT_EQ(dragged({99, 79}, {98, 79}).selected(), (Rectangle{98, 79, 2, 1}));
  EXPECT_EQ(dragged({500, 0}, {99, 79}).selected(), (Rectangle{99, 0, 1, 80}));
}

TEST(Selection, aClickWithoutADragTakesNothing) {
  Selection click = selection();
  click.pressButton(Button::Left, {20, 20});
  click.releaseButton(Button::Left, {20, 20});
  EXPECT_EQ(click.outcome(), Outcome::Cancelled);
  // There and back is a drag, of one pixel.
  Selection back = dragged({20, 20}, {25, 25});
  back.releaseButton(Button::Left, {20, 20});
  EXPECT_EQ(back.outcome(), Outcome::Taken);
  EXPECT_EQ(back.selected(), (Rectangle{20, 20, 1, 1}));
}

TEST(Selection, isCancelledByEscapeAndByTheRightButtonAlone) {
  Selection escaped = dragged({1, 1}, {9, 9});
  escaped.pressKey(Key::Other);
  escaped.pressButton(Button::Other, {9, 9});
  escaped.releaseButton(Button::Other, {9, 9});
  EXPECT_EQ(escaped.outcome(), Outcome::Open);
  escaped.pressKey(Key::Escape);
  escaped.releaseButton(Button::Left, {9, 9});
  EXPECT_EQ(escaped.outcome(), Outcome::Cancelled);
  Selection clicked = dragged({1, 1}, {9, 9});
  clicked.pressButton(Button::Right, {9, 9});
  EXPECT_EQ(clicked.outcome(), Outcome::Cancelled);
}

TEST(Selection, aButtonHeldSinceBeforeTheStartEndsNothing) {
  Selection fresh = selection();
  fresh.releaseButton(Button::Left, {20, 20});
  EXPECT_EQ(fresh.outcome(), Outcome::Open);
  fresh.pressKey(Key::Space);
  fresh.releaseButton(Button::Left, {20, 20});
  EXPECT_EQ(fresh.outcome(), Outcome::Open);
}

TEST(Selection, spaceSwitchesToTheTopmostWindowUnderThePointerAndBack) {
  Selection pick = selection();
  pick.pressKey(Key::Space);
  pick.releaseKey(Key::Space);
  EXPECT_EQ(pick.mode(), Mode::Window);
  EXPECT_EQ(pick.selected(), windows[1]);
  pick.movePointer({25, 20});
  EXPECT_EQ(pick.selected(), windows[0]);
  pick.movePointer({90, 5});
  EXPECT_FALSE(pick.selected());
  pick.pressKey(Key::Space);
  pick.releaseKey(Key::Space);
  EXPECT_EQ(pick.mode(), Mode::Area);
  pick.pressKey(Key::Space);
  pick.pressButton(Button::Left, {25, 20});
  pick.releaseButton(Button::Left, {79, 64});
  EXPECT_EQ(pick.outcome(), Outcome::Taken);
  EXPECT_EQ(pick.selected(), windows[1]);
  Selection bare = selection();
  bare.pressKey(Key::Space);
  bare.pressButton(Button::Left, {90, 5});
  bare.releaseButton(Button::Left, {90, 5});
  EXPECT_EQ(bare.outcome(), Outcome::Cancelled);
}

TEST(Selection, spaceHeldDuringADragMovesTheAreaWithinTheScreen) {
  Selection drag = dragged({10, 10}, {29, 19});
  drag.pressKey(Key::Space);
  drag.movePointer({34, 29});
  EXPECT_EQ(drag.selected(), (Rectangle{15, 20, 20, 10}));
  EXPECT_EQ(drag.mode(), Mode::Area);
  drag.releaseKey(Key::Space);
  drag.movePointer({40, 40});
  EXPECT_EQ(drag.selected(), (Rectangle{15, 20, 26, 21}));  // the corner is under the pointer again

  // Against the edge it keeps its size, and afterwards nothing jumps.
  drag.pressKey(Key::Space);
  drag.movePointer({0, 40});
  EXPECT_EQ(drag.selected(), (Rectangle{0, 20, 26, 21}));
  drag.releaseKey(Key::Space);
  drag.movePointer({1, 40});
  EXPECT_EQ(drag.selected(), (Rectangle{0, 20, 27, 21}));
}

TEST(Selection, shiftLocksTheAxisOfTheFirstMovement) {
  Selection drag = dragged({10, 10}, {30, 30});
  drag.pressKey(Key::Shift);
  drag.movePointer({31, 32});  // a tremor decides nothing
  EXPECT_EQ(drag.selected(), (Rectangle{10, 10, 21, 21}));
  drag.movePointer({40, 33});
  drag.movePointer({50, 70});
  EXPECT_EQ(drag.selected(), (Rectangle{10, 10, 41, 21}));
  drag.releaseKey(Key::Shift);
  EXPECT_EQ(drag.selected(), (Rectangle{10, 10, 41, 61}));
  drag.pressKey(Key::Shift);
  drag.movePointer({52, 60});
  EXPECT_EQ(drag.selected(), (Rectangle{10, 10, 41, 51}));

  // It holds for moving the area too.
  Selection moved = dragged({10, 10}, {30, 30});
  moved.pressKey(Key::Space);
  moved.pressKey(Key::Shift);
  moved.movePointer({32, 50});
  EXPECT_EQ(moved.selected(), (Rectangle{10, 30, 21, 21}));
}

TEST(HeldKeys, onlyAKeyThatWasUpAtTheStartCountsAndItsRepeatsDoNot) {
  std::uint8_t keys[32] = {};
  keys[65 / 8] |= 1 << (65 % 8);
  HeldKeys held;
  held.startWith(keys);
  EXPECT_FALSE(held.press(65));  // repeats
  EXPECT_FALSE(held.release(65));
  EXPECT_TRUE(held.press(65));
  EXPECT_FALSE(held.press(65));
  EXPECT_TRUE(held.release(65));
  EXPECT_TRUE(held.press(9));
}

TEST(Arguments, areAFileOrTheClipboardAndNothingElse) {
  using Words = std::vector<const char*>;
  EXPECT_EQ(parseArguments(Words{"-i", "/tmp/a b.png"}), (Arguments{Destination::File, "/tmp/a b.png"}));
  EXPECT_EQ(parseArguments(Words{"-i", "-c"}), (Arguments{Destination::Clipboard, ""}));
  for (const Words& wrong : {Words{}, Words{"-i"}, Words{"-c"}, Words{"-i", ""}, Words{"-i", "-x"},
                             Words{"a.png"}, Words{"a.png", "-i"}, Words{"-i", "-c", "a.png"},
                             Words{"-i", "a.png", "b.png"}, Words{"-ic"}, Words{"--help"}})
    EXPECT_FALSE(parseArguments(wrong));
}
