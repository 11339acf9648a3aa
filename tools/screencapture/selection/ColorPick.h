#pragma once

#include "tools/screencapture/selection/Gestures.h"

#include <optional>
#include <vector>

namespace screencapture {

/// Which pixel the user's gestures pick.
///
/// The left button or Return takes the pixel under the pointer; the right button or Escape cancels. Each acts
/// when it comes up again: no other program gets the rest of a gesture that ends this one. The arrow keys go
/// one pixel on, with Shift ten, and take the pointer along; at a monitor's edge they stop, unless another
/// monitor lies there.
class ColorPick final : public Gestures {
 public:
  /// `monitors`, of which there are some, lie on the screen. Only what they show can be picked.
  ColorPick(std::vector<Rectangle> monitors, Point pointer);

  void movePointer(Point point) override;
  void pressButton(Button button, Point point) override;
  void releaseButton(Button button, Point point) override;
  void pressKey(Key key) override;
  void releaseKey(Key key) override;
  void repeatKey(Key key) override;
  [[nodiscard]] std::optional<Point> takeJump() override;

  [[nodiscard]] Outcome outcome() const override { return ending; }
  [[nodiscard]] Point pixel() const { return position; }
  /// The monitor that shows it.
  [[nodiscard]] const Rectangle& monitor() const;

 private:
  void step(int across, int down);

  std::vector<Rectangle> monitors;
  Point position;
  Outcome ending = Outcome::Open;
  bool shiftHeld = false;
  std::optional<Button> pressed;
  std::optional<Point> jump;
};

}  // namespace screencapture
