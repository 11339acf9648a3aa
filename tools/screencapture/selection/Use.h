#pragma once

#include "tools/screencapture/selection/Canvas.h"
#include "tools/screencapture/selection/Gestures.h"

#include <chrono>
#include <optional>
#include <vector>

namespace screencapture {

/// What a use of the tool begins with.
struct Setting {
  Size screen;
  std::vector<Rectangle> monitors;  // on the screen; at least one
  Metrics metrics;
  Point pointer;
};

/// What the tool is used for, from the first picture to the last gesture. Knows no display: one shows what is
/// painted on the canvas, and brings the gestures.
class Use {
 public:
  using Duration = std::chrono::milliseconds;

  virtual ~Use() = default;
  Use(const Use&) = delete;
  Use& operator=(const Use&) = delete;

  [[nodiscard]] virtual Gestures& gestures() = 0;
  /// Shows what the gestures so far led to; false if there was nothing new.
  virtual bool draw() = 0;
  /// Draws a part that something else had covered.
  virtual void repaint(const Rectangle& part) = 0;
  /// How long until something changes without a gesture; nothing if it doesn't.
  [[nodiscard]] virtual std::optional<Duration> nextChange() const { return std::nullopt; }

 protected:
  Use(Canvas& canvas, Setting setting) : canvas(canvas), setting(std::move(setting)) {}

  Canvas& canvas;
  const Setting setting;
};

}  // namespace screencapture
