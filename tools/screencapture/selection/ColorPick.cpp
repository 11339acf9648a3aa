#include "tools/screencapture/selection/ColorPick.h"

#include <algorithm>
#include <utility>

namespace screencapture {

namespace {

constexpr int longStep = 10;  // with Shift

}  // namespace

ColorPick::ColorPick(std::vector<Rectangle> shown, Point pointer)
    : monitors(std::move(shown)), position(pointer) {
  movePointer(pointer);
}

void ColorPick::movePointer(Point point) {
  if (ending != Outcome::Open)
    return;
  position = nearest(monitors, point).nearestTo(point);
  jump.reset();
}

void ColorPick::pressButton(Button button, Point point) {
  movePointer(point);
  if (button != Button::Other)  // such as the wheel's
    pressed = button;
}

void ColorPick::releaseButton(Button button, Point point) {
  // One that was down before the start and comes up now has begun nothing and ends nothing.
  if (ending != Outcome::Open || pressed != button)
    return;
  movePointer(point);
  pressed.reset();
  if (button == Button::Left)
    ending = Outcome::Taken;
  else if (button == Button::Right)
    ending = Outcome::Cancelled;
}

void ColorPick::pressKey(Key key) {
  if (key == Key::Shift)
    shiftHeld = true;
  else
    repeatKey(key);
}

void ColorPick::repeatKey(Key key) {
  if (key == Key::Left)
    step(-1, 0);
  else if (key == Key::Right)
    step(1, 0);
  else if (key == Key::Up)
    step(0, -1);
  else if (key == Key::Down)
    step(0, 1);
}

void ColorPick::releaseKey(Key key) {
  if (ending != Outcome::Open)
    return;
  if (key == Key::Shift)
    shiftHeld = false;
  else if (key == Key::Return)
    ending = Outcome::Taken;
  else if (key == Key::Escape)
    ending = Outcome::Cancelled;
}

const Rectangle& ColorPick::monitor() const {
  return nearest(monitors, position);
}

std::optional<Point> ColorPick::takeJump() {
  return std::exchange(jump, std::nullopt);
}

void ColorPick::step(int across, int down) {
  if (ending != Outcome::Open)
    return;
  const int length = shiftHeld ? longStep : 1;
  const Point to{position.x + across * length, position.y + down * length};
  const bool isSeen = std::ranges::any_of(monitors, [&](const Rectangle& each) { return each.contains(to); });
  const Point reached = isSeen ? to : monitor().nearestTo(to);
  if (reached == position)
    return;
  position = reached;
  jump = reached;
}

}  // namespace screencapture
