#pragma once

#include "tools/screencapture/selection/Gestures.h"

#include <optional>
#include <vector>

namespace screencapture {

enum class Mode { Area, Window };

/// What the user's gestures select: an area by dragging, or a window by a click.
///
/// Tells what to show. An area holds the pixel under the press and the pixel under the
/// pointer; points outside of the screen count as its nearest pixel.
///
/// Space switches between areas and windows; pressed during a drag it moves the area for as long as it is
/// held. Shift, while held during a drag, lets the pointer move along one axis only, the one of its first
/// movement. Escape and the right button cancel. So does a click that selects nothing.
class Selection final : public Gestures {
 public:
  /// `windows` are the shown windows' frames, the topmost first; without them there is no choice of windows.
  Selection(Size screen, std::optional<std::vector<Rectangle>> windows, Point pointer);

  void movePointer(Point point) override;
  void pressButton(Button button, Point point) override;
  void releaseButton(Button button, Point point) override;
  void pressKey(Key key) override;
  void releaseKey(Key key) override;

  [[nodiscard]] Outcome outcome() const override { return ending; }
  [[nodiscard]] Mode mode() const { return currentMode; }
  [[nodiscard]] bool isDragging() const { return drag.has_value(); }
  /// Where the pointer is, inside the screen.
  [[nodiscard]] Point pointer() const { return position; }
  /// The dragged area or the window under the pointer: what is shown bright, and at the end what is taken.
  [[nodiscard]] std::optional<Rectangle> selected() const;

 private:
  struct Drag {
    Point anchor;  // the corner that stays
    Point corner;  // the corner that follows the pointer
    Point offset;  // from the pointer to that corner; not zero only after a move that met the screen's edge
    bool hasMoved = false;
  };
  struct Move {
    Point from;  // the pointer when Space went down
    Drag before;
  };
  enum class Axis { Undecided, Horizontal, Vertical };
  struct Lock {
    Point origin;  // the pointer when the lock began
    Axis axis = Axis::Undecided;
  };

  [[nodiscard]] Point clamped(Point point) const;
  [[nodiscard]] Point locked(Point point);
  [[nodiscard]] std::optional<Rectangle> windowUnder(Point point) const;
  void updateDrag();

  Size screen;
  std::optional<std::vector<Rectangle>> frames;
  Point position;
  Mode currentMode = Mode::Area;
  Outcome ending = Outcome::Open;
  bool shiftHeld = false;
  bool windowPressed = false;
  std::optional<Drag> drag;
  std::optional<Move> move;
  std::optional<Lock> lock;
};

}  // namespace screencapture
