#pragma once

#include "tools/screencapture/selection/Hint.h"
#include "tools/screencapture/selection/Selection.h"
#include "tools/screencapture/selection/Use.h"

namespace screencapture {

/// The selection of a part of the screen, with a hint in the language that is spoken.
class SelectionUse final : public Use {
 public:
  /// Without the windows' frames there is no choice of windows.
  SelectionUse(Canvas& canvas, Setting setting, std::optional<std::vector<Rectangle>> windows,
               Language spoken);

  [[nodiscard]] const Selection& result() const { return selection; }

  [[nodiscard]] Gestures& gestures() override { return selection; }
  bool draw() override;
  void repaint(const Rectangle& part) override;
  [[nodiscard]] std::optional<Duration> nextChange() const override;

 private:
  using Clock = std::chrono::steady_clock;
  [[nodiscard]] Duration sinceStart() const;
  [[nodiscard]] Layers layers() const;
  void showCursor(Mode mode);

  const HintText hintText;
  Selection selection;
  Scene shown;
  std::optional<Clock::time_point> start;  // when the first scene was drawn
  std::optional<Hint> hint;
};

}  // namespace screencapture
