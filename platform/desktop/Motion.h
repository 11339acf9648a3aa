#pragma once

#include "platform/base/MainQueue.h"

#include <chrono>
#include <functional>

namespace platform {

/// Whether the desktop lets things move; a user may have asked for no animations.
[[nodiscard]] bool isMotionWanted();

/// How a motion's speed changes on its way.
enum class Easing {
  Out,    // starts at full speed and comes to rest
  InOut,  // starts and ends at rest
};

/// A number that moves smoothly to where it is sent, for what is drawn or placed by it.
///
/// It moves on the main queue's clock, a step for each frame of a usual screen, and asks nothing of the queue
/// while it rests. It ends with its owner. Where no motion is wanted it is where it is sent at once.
class Motion {
 public:
  using Duration = std::chrono::milliseconds;

  /// `onStep` hears each new value, the last of which is exactly what the motion was sent to. It may send it
  /// elsewhere or destroy it.
  Motion(Duration duration, Easing easing, std::function<void(double)> onStep);
  Motion(const Motion&) = delete;
  Motion& operator=(const Motion&) = delete;

  /// Starts at 0.
  [[nodiscard]] double value() const { return now; }
  [[nodiscard]] bool isMoving() const { return nextStep.isPending(); }
  /// From where it is, in its whole duration however short the way. The first step comes with the next frame.
  void moveTo(double target);
  /// The same at another pace, which it keeps.
  void moveTo(double target, Duration duration, Easing easing);
  /// Without motion.
  void jumpTo(double target);
  /// Rests where it is, and tells nobody.
  void stop() { nextStep.cancel(); }

 private:
  void scheduleStep();
  void step();
  void arriveAt(double value);

  Duration duration;
  Easing easing;
  const std::function<void(double)> onStep;
  double now = 0;
  double start = 0;
  double target = 0;
  qint64 startTime = 0;
  WorkItem nextStep;
};

/// What goes round while something is under way. Its turns have a number of steps, and it stands still where
/// no motion is wanted.
class Rotation {
 public:
  Rotation(std::chrono::milliseconds step, int stepsPerTurn, std::function<void()> onStep);
  Rotation(const Rotation&) = delete;
  Rotation& operator=(const Rotation&) = delete;

  /// The part of a turn that is done, below 1.
  [[nodiscard]] double turn() const { return static_cast<double>(steps) / stepsPerTurn; }
  /// Goes on, until stopped; does nothing while it goes.
  void start();
  void stop();

 private:
  const std::chrono::milliseconds interval;
  const int stepsPerTurn;
  const std::function<void()> onStep;
  int steps = 0;
  bool isTurning = false;
  WorkItem repetition;
};

}  // namespace platform
