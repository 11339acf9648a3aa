#include "tools/screencapture/Arguments.h"
#include "tools/screencapture/selection/HeldKeys.h"
#include "tools/screencapture/selection/Selection.h"

#include <gtest/gtest.h>
#include <variant>
#include <vector>

using namespace screencapture;

namespace {

// What a user does. A key without a word is pressed.
struct To : Point {};
struct Press {
  Point point;
  Button button = Button::Left;
};
struct Release {
  Point point;
  Button button = Button::Left;
};
struct Up {
  Key key;
};
using Gesture = std::variant<To, Press, Release, Key, Up>;

const std::vector<Rectangle> windows{{10, 10, 30, 20}, {20, 15, 60, 50}};  // the first lies above the second

struct Case {
  const char* what;
  std::vector<Gesture> gestures;
  std::optional<Rectangle> selected;
  Outcome outcome = Outcome::Open;
};

/// On a screen of 100 by 80 pixels, with the pointer at 50, 40.
void expectEach(const std::vector<Case>& cases) {
  for (const Case& each : cases) {
    Selection selection({100, 80}, windows, {50, 40});
    for (const Gesture& gesture : each.gestures) {
      if (const auto* to = std::get_if<To>(&gesture))
        selection.movePointer(*to);
      else if (const auto* press = std::get_if<Press>(&gesture))
        selection.pressButton(press->button, press->point);
      else if (const auto* release = std::get_if<Release>(&gesture))
        selection.releaseButton(release->button, release->point);
      else if (const auto* key = std::get_if<Key>(&gesture))
        selection.pressKey(*key);
      else
        selection.releaseKey(std::get<Up>(gesture).key);
    }
    EXPECT_EQ(selection.outcome(), each.outcome) << each.what;
    EXPECT_TRUE(each.outcome == Outcome::Cancelled || selection.selected() == each.selected) << each.what;
  }
}

constexpr Up spaceUp{Key::Space};

TEST(Selection, anAreaHoldsThePixelsUnderPressAndPointer) {
  const Rectangle area{10, 20, 21, 31};
  expectEach({
      {"down right", {Press{{10, 20}}, To{60, 60}, Release{{30, 50}}}, area, Outcome::Taken},
      {"up left", {Press{{30, 50}}, To{60, 60}, Release{{10, 20}}}, area, Outcome::Taken},
      {"up right", {Press{{10, 50}}, To{60, 60}, Release{{30, 20}}}, area, Outcome::Taken},
      {"down left", {Press{{30, 20}}, To{60, 60}, Release{{10, 50}}}, area, Outcome::Taken},
      {"from and to beyond the screen", {Press{{-5, -5}}, To{500, 500}}, Rectangle{0, 0, 100, 80}},
      {"at the far corner", {Press{{500, 79}}, To{98, 79}}, Rectangle{98, 79, 2, 1}},
      {"a click", {Press{{20, 20}}, Release{{20, 20}}}, {}, Outcome::Cancelled},
      {"there and back",
       {Press{{20, 20}}, To{25, 25}, Release{{20, 20}}},
       Rectangle{20, 20, 1, 1},
       Outcome::Taken},
      {"held since before the start", {Release{{20, 20}}, Key::Space, Release{{20, 20}}}, windows[0]},
  });
}

TEST(Selection, isCancelledByEscapeAndByTheRightButtonAlone) {
  const Press start{{1, 1}};
  expectEach({
      {"another key and button",
       {start, To{9, 9}, Key::Other, Press{{9, 9}, Button::Other}, Release{{9, 9}, Button::Other}},
       Rectangle{1, 1, 9, 9}},
      {"Escape", {start, To{9, 9}, Key::Escape, Release{{9, 9}}}, {}, Outcome::Cancelled},
      {"the right button", {start, To{9, 9}, Press{{9, 9}, Button::Right}}, {}, Outcome::Cancelled},
  });
}

TEST(Selection, spaceSwitchesToTheTopmostWindowUnderThePointerAndBack) {
  expectEach({
      {"where the pointer is", {Key::Space, spaceUp}, windows[1]},
      {"the topmost", {Key::Space, spaceUp, To{25, 20}}, windows[0]},
      {"none", {Key::Space, spaceUp, To{90, 5}}, {}},
      {"back to areas", {Key::Space, spaceUp, Key::Space, spaceUp}, {}},
      {"the one under the release",
       {Key::Space, Press{{25, 20}}, Release{{79, 64}}},
       windows[1],
       Outcome::Taken},
      {"a click on none", {Key::Space, Press{{90, 5}}, Release{{90, 5}}}, {}, Outcome::Cancelled},
  });
}

TEST(Selection, spaceHeldDuringADragMovesTheAreaWithinTheScreen) {
  std::vector<Gesture> gestures{Press{{10, 10}}, To{29, 19}, Key::Space};
  const auto then = [&](const char* what, std::initializer_list<Gesture> more, const Rectangle& selected) {
    gestures.insert(gestures.end(), more);
    expectEach({{what, gestures, selected}});
  };
  then("moves", {To{34, 29}}, {15, 20, 20, 10});
  then("the corner follows the pointer again", {spaceUp, To{40, 40}}, {15, 20, 26, 21});
  then("keeps its size at the edge", {Key::Space, To{0, 40}}, {0, 20, 26, 21});
  then("and doesn't jump afterwards", {spaceUp, To{1, 40}}, {0, 20, 27, 21});
  then("nor leaves the screen", {To{99, 40}}, {0, 20, 100, 21});
}

TEST(Selection, shiftLocksTheAxisOfTheFirstMovement) {
  const Press start{{10, 10}};
  expectEach({
      {"a tremor decides nothing", {start, To{30, 30}, Key::Shift, To{31, 32}}, Rectangle{10, 10, 21, 21}},
      {"sideways", {start, To{30, 30}, Key::Shift, To{40, 33}, To{50, 70}}, Rectangle{10, 10, 41, 21}},
      {"let go",
       {start, To{30, 30}, Key::Shift, To{40, 33}, To{50, 70}, Up{Key::Shift}},
       Rectangle{10, 10, 41, 61}},
      {"downwards", {start, To{50, 70}, Key::Shift, To{52, 60}}, Rectangle{10, 10, 41, 51}},
      {"while the area moves",
       {start, To{30, 30}, Key::Space, Key::Shift, To{32, 50}},
       Rectangle{10, 30, 21, 21}},
  });
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
                             Words{"a.png", "-i"}, Words{"-i", "a.png", "b.png"}, Words{"-ic"}})
    EXPECT_FALSE(parseArguments(wrong));
}

}  // namespace
