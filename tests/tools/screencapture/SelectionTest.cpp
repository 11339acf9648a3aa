#include "tools/screencapture/Arguments.h"
#include "tools/screencapture/selection/ColorPick.h"
#include "tools/screencapture/selection/HeldKeys.h"
#include "tools/screencapture/selection/Selection.h"

#include <gtest/gtest.h>
#include <variant>
#include <vector>

using namespace screencapture;

namespace {

// What a user does, with the keyboard too. A key without a word is pressed.
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
struct Again {
  Key key;
};
using Gesture = std::variant<To, Press, Release, Key, Up, Again>;

void follow(Gestures& follower, const std::vector<Gesture>& gestures) {
  for (const Gesture& gesture : gestures) {
    if (const auto* to = std::get_if<To>(&gesture))
      follower.movePointer(*to);
    else if (const auto* press = std::get_if<Press>(&gesture))
      follower.pressButton(press->button, press->point);
    else if (const auto* release = std::get_if<Release>(&gesture))
      follower.releaseButton(release->button, release->point);
    else if (const auto* key = std::get_if<Key>(&gesture))
      follower.pressKey(*key);
    else if (const auto* up = std::get_if<Up>(&gesture))
      follower.releaseKey(up->key);
    else
      follower.repeatKey(std::get<Again>(gesture).key);
  }
}

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
    follow(selection, each.gestures);
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

struct PickCase {
  const char* what;
  std::vector<Gesture> gestures;
  Point pixel;
  std::optional<Point> jump = std::nullopt;
  Outcome outcome = Outcome::Open;
};

/// On two monitors with a gap below the second, with the pointer at 50, 40.
void expectEach(const std::vector<PickCase>& cases) {
  for (const PickCase& each : cases) {
    ColorPick pick({{0, 0, 100, 80}, {100, 0, 60, 50}}, {50, 40});
    follow(pick, each.gestures);
    EXPECT_EQ(pick.outcome(), each.outcome) << each.what;
    EXPECT_EQ(pick.pixel(), each.pixel) << each.what;
    EXPECT_EQ(pick.takeJump(), each.jump) << each.what;
    EXPECT_EQ(pick.takeJump(), std::nullopt) << each.what;
  }
}

TEST(ColorPick, endsWhenAKeyOrAButtonComesUp) {
  const Point away{70, 60};
  expectEach({
      {"pressed", {Press{away}}, away},
      {"a click", {Press{away}, Release{away}}, away, {}, Outcome::Taken},
      {"where it ends", {Press{{1, 1}}, To{{9, 9}}, Release{away}}, away, {}, Outcome::Taken},
      {"begun earlier", {Release{away}}, {50, 40}},
      {"of two buttons the last",
       {Press{away, Button::Right}, Press{away}, Release{away, Button::Right}},
       away},
      {"the right one",
       {Press{away, Button::Right}, Release{away, Button::Right}},
       away,
       {},
       Outcome::Cancelled},
      {"the wheel",
       {Press{away}, Press{away, Button::Other}, Release{away, Button::Other}, Release{away}},
       away,
       {},
       Outcome::Taken},
      {"Return held", {Key::Return, Again{Key::Return}}, {50, 40}},
      {"Return", {Key::Return, Up{Key::Return}}, {50, 40}, {}, Outcome::Taken},
      {"Escape", {Key::Escape, Up{Key::Escape}}, {50, 40}, {}, Outcome::Cancelled},
      {"nothing after the end",
       {Press{away}, Release{away}, Key::Left, Press{{1, 1}}, Release{{1, 1}, Button::Right}},
       away,
       {},
       Outcome::Taken},
  });
}

TEST(ColorPick, theArrowKeysTakeThePointerAlong) {
  const auto at = [](int x, int y) { return Point{x, y}; };
  expectEach({
      {"each way", {Key::Left, Key::Up, Key::Up}, at(49, 38), at(49, 38)},
      {"and back", {Key::Right, Key::Down, Key::Down}, at(51, 42), at(51, 42)},
      {"held", {Key::Right, Again{Key::Right}, Again{Key::Right}}, at(53, 40), at(53, 40)},
      {"far", {Key::Shift, Key::Right, Up{Key::Shift}, Key::Down}, at(60, 41), at(60, 41)},
      {"the hand is later", {Key::Right, To{{20, 20}}}, at(20, 20)},
      {"to the edge", {To{{3, 3}}, Key::Shift, Key::Left}, at(0, 3), at(0, 3)},
      {"and no further", {To{{0, 3}}, Key::Left, Again{Key::Left}}, at(0, 3)},
      {"onto the other monitor", {To{{99, 40}}, Key::Right}, at(100, 40), at(100, 40)},
      {"but into no gap", {To{{95, 60}}, Key::Shift, Key::Right}, at(99, 60), at(99, 60)},
      {"nor by hand", {To{{150, 70}}}, at(150, 49)},
  });
}

TEST(HeldKeys, onlyAKeyThatWasUpAtTheStartCountsAndItsRepeatsDoNot) {
  std::uint8_t keys[32] = {};
  keys[65 / 8] |= 1 << (65 % 8);
  HeldKeys held;
  held.startWith(keys);
  EXPECT_FALSE(held.press(65));  // repeats
  EXPECT_FALSE(held.isHeld(65));
  EXPECT_FALSE(held.release(65));
  EXPECT_TRUE(held.press(65));
  EXPECT_TRUE(held.isHeld(65));
  EXPECT_FALSE(held.press(65));
  EXPECT_TRUE(held.release(65));
  EXPECT_FALSE(held.isHeld(65));
  EXPECT_TRUE(held.press(9));
}

TEST(Arguments, areAFileTheClipboardOrAColorAndNothingElse) {
  using Words = std::vector<const char*>;
  EXPECT_EQ(parseArguments(Words{"-i", "/tmp/a b.png"}), (Arguments{Wish::PictureInFile, "/tmp/a b.png"}));
  EXPECT_EQ(parseArguments(Words{"-i", "-c"}), (Arguments{Wish::PictureOnClipboard, ""}));
  EXPECT_EQ(parseArguments(Words{"--pick-color"}), (Arguments{Wish::Color, ""}));
  for (const Words& wrong :
       {Words{}, Words{"-i"}, Words{"-c"}, Words{"-i", ""}, Words{"-i", "-x"}, Words{"a.png", "-i"},
        Words{"-i", "a.png", "b.png"}, Words{"-ic"}, Words{"--pick-color", "-c"}})
    EXPECT_FALSE(parseArguments(wrong));
}

}  // namespace
