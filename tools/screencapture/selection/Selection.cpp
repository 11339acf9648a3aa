#include "tools/screencapture/selection/Selection.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace screencapture {

namespace {

// How far the pointer goes under Shift before its axis is clear; a hand's tremor is less.
constexpr int axisDecisionPixels = 4;

}  // namespace

Selection::Selection(Size screenSize, std::optional<std::vector<Rectangle>> windows, Point pointer)
    : screen(screenSize), frames(std::move(windows)), position(clamped(pointer)) {
}

void Selection::movePointer(Point point) {
  position = clamped(point);
  if (drag)
    updateDrag();
}

void Selection::pressButton(Button button, Point point) {
  if (button == Button::Right)
    ending = Outcome::Cancelled;
  if (button != Button::Left || ending != Outcome::Open)
    return;
  movePointer(point);
  if (currentMode == Mode::Window) {
    windowPressed = true;
    return;
  }
  drag = Drag{position, position, {}, false};
  if (shiftHeld)
    lock = Lock{position};
}

void Selection::releaseButton(Button button, Point point) {
  if (button != Button::Left || ending != Outcome::Open)
    return;
  movePointer(point);
  // A button that was down before the start and comes up now has begun nothing and ends nothing.
  if (drag)
    ending = drag->hasMoved ? Outcome::Taken : Outcome::Cancelled;
  else if (windowPressed)
    ending = windowUnder(position) ? Outcome::Taken : Outcome::Cancelled;
}

void Selection::pressKey(Key key) {
  if (ending != Outcome::Open)
    return;
  if (key == Key::Escape) {
    ending = Outcome::Cancelled;
  } else if (key == Key::Shift) {
    shiftHeld = true;
    if (drag)
      lock = Lock{position};
  } else if (key == Key::Space && drag) {
    move = Move{locked(position), *drag};
  } else if (key == Key::Space && !windowPressed && frames) {
    currentMode = currentMode == Mode::Area ? Mode::Window : Mode::Area;
  }
}

void Selection::releaseKey(Key key) {
  if (ending != Outcome::Open)
    return;
  if (key == Key::Shift) {
    shiftHeld = false;
    lock.reset();
    if (drag)
      updateDrag();
  } else if (key == Key::Space) {
    move.reset();
  }
}

std::optional<Rectangle> Selection::selected() const {
  if (currentMode == Mode::Window)
    return windowUnder(position);
  return drag && drag->hasMoved ? std::optional(Rectangle::spanning(drag->anchor, drag->corner))
                                : std::nullopt;
}

Point Selection::clamped(Point point) const {
  return {std::clamp(point.x, 0, screen.width - 1), std::clamp(point.y, 0, screen.height - 1)};
}

Point Selection::locked(Point point) {
  if (!lock)
    return point;
  const int across = std::abs(point.x - lock->origin.x);
  const int down = std::abs(point.y - lock->origin.y);
  if (lock->axis == Axis::Undecided && std::max(across, down) >= axisDecisionPixels)
    lock->axis = across >= down ? Axis::Horizontal : Axis::Vertical;
  if (lock->axis == Axis::Horizontal)
    return {point.x, lock->origin.y};
  if (lock->axis == Axis::Vertical)
    return {lock->origin.x, point.y};
  return lock->origin;
}

std::optional<Rectangle> Selection::windowUnder(Point point) const {
  const auto frame =
      std::ranges::find_if(*frames, [&](const Rectangle& each) { return each.contains(point); });
  return frame == frames->end() ? std::nullopt : std::optional(*frame);
}

void Selection::updateDrag() {
  const Point to = locked(position);
  if (!move) {
    drag->corner = clamped({to.x + drag->offset.x, to.y + drag->offset.y});
  } else {
    // The area keeps its size, so it moves only as far as the screen has room for it.
    const Rectangle area = Rectangle::spanning(move->before.anchor, move->before.corner);
    const int across = std::clamp(to.x - move->from.x, -area.x, screen.width - area.right());
    const int down = std::clamp(to.y - move->from.y, -area.y, screen.height - area.bottom());
    drag->anchor = {move->before.anchor.x + across, move->before.anchor.y + down};
    drag->corner = {move->before.corner.x + across, move->before.corner.y + down};
    drag->offset = {drag->corner.x - to.x, drag->corner.y - to.y};
  }
  drag->hasMoved = drag->hasMoved || drag->corner != drag->anchor;
}

}  // namespace screencapture
