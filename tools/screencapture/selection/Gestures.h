#pragma once

#include "tools/screencapture/selection/Geometry.h"

#include <optional>

namespace screencapture {

enum class Button { Left, Right, Other };
enum class Key { Space, Shift, Escape, Return, Left, Right, Up, Down, Other };
enum class Outcome { Open, Taken, Cancelled };

/// Who follows the user's hand. Knows no display: is fed with what happens, and tells how it ended.
class Gestures {
 public:
  virtual ~Gestures() = default;

  virtual void movePointer(Point point) = 0;
  virtual void pressButton(Button button, Point point) = 0;
  virtual void releaseButton(Button button, Point point) = 0;
  /// Each key once when it goes down and once when it comes up; none that was down before the start.
  virtual void pressKey(Key key) = 0;
  virtual void releaseKey(Key key) = 0;
  /// In between, again and again for as long as it is held.
  virtual void repeatKey(Key) {}

  /// Where the pointer is to be put because keys have moved it, once for each such move.
  [[nodiscard]] virtual std::optional<Point> takeJump() { return std::nullopt; }

  [[nodiscard]] virtual Outcome outcome() const = 0;

 protected:
  Gestures() = default;
  Gestures(const Gestures&) = default;
  Gestures& operator=(const Gestures&) = default;
};

}  // namespace screencapture
