#pragma once

#include "tools/screencapture/selection/Gestures.h"
#include "tools/screencapture/selection/Scene.h"
#include "tools/screencapture/x11/Stage.h"

#include <chrono>
#include <optional>
#include <vector>

namespace screencapture {

/// A use of the tool on its stage, from the first picture to the last gesture.
class Session {
 public:
  using Clock = std::chrono::steady_clock;
  using Duration = std::chrono::milliseconds;

  virtual ~Session() = default;
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// Returns when the gestures have come to their end or the connection is lost.
  void run();

 protected:
  explicit Session(Stage& stage);

  [[nodiscard]] virtual Gestures& gestures() = 0;
  /// Shows what the gestures so far led to; false if there was nothing new.
  virtual bool draw() = 0;
  /// Draws a part that another window had covered.
  virtual void repaint(const Rectangle& part) = 0;
  /// How long until something changes without a gesture; nothing if it doesn't.
  [[nodiscard]] virtual std::optional<Duration> nextChange() const { return std::nullopt; }

  Stage& stage;
  const Point pointerAtStart;
  const std::vector<Rectangle> monitors;  // on the screen; at least one
  const Metrics metrics;

 private:
  void handle(const xcb_generic_event_t& event);
  [[nodiscard]] int longestWait() const;
  void waitForServer() const;

  bool isGranted;
};

}  // namespace screencapture
