#include "platform/desktop/Motion.h"

#include <QApplication>
#include <QEasingCurve>
#include <QStyle>

#include <utility>

namespace platform {
namespace {

constexpr std::chrono::milliseconds frame(16);

/// A cubic Bézier from (0, 0) to (1, 1).
QEasingCurve bezier(const QPointF& leaving, const QPointF& arriving) {
  QEasingCurve curve(QEasingCurve::BezierSpline);
  curve.addCubicBezierSegment(leaving, arriving, {1, 1});
  return curve;
}

double eased(Easing easing, double progress) {
  static const QEasingCurve out = bezier({0, 0}, {0.58, 1});
  static const QEasingCurve inOut = bezier({0.42, 0}, {0.58, 1});
  return (easing == Easing::Out ? out : inOut).valueForProgress(progress);
}

}  // namespace

bool isMotionWanted() {
  return QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) > 0;
}

Motion::Motion(Duration howLong, Easing how, std::function<void(double)> handler)
    : duration(howLong), easing(how), onStep(std::move(handler)) {
}

void Motion::moveTo(double where) {
  if (!isMotionWanted()) {
    jumpTo(where);
    return;
  }
  start = now;
  target = where;
  startTime = MainQueue::main().uptime();
  scheduleStep();
}

void Motion::moveTo(double where, Duration howLong, Easing how) {
  duration = howLong;
  easing = how;
  moveTo(where);
}

void Motion::jumpTo(double where) {
  nextStep.cancel();
  arriveAt(where);
}

void Motion::scheduleStep() {
  nextStep = MainQueue::main().asyncAfter(frame, [this] { step(); });
}

void Motion::step() {
  const auto elapsed = static_cast<double>(MainQueue::main().uptime() - startTime);
  const double progress = elapsed / static_cast<double>(duration.count());
  if (progress >= 1) {
    arriveAt(target);
    return;
  }
  scheduleStep();
  arriveAt(start + (target - start) * eased(easing, progress));
}

void Motion::arriveAt(double value) {
  now = value;
  // The motion may be gone before this returns.
  const auto handler = onStep;
  handler(value);
}

Rotation::Rotation(std::chrono::milliseconds step, int perTurn, std::function<void()> handler)
    : interval(step), stepsPerTurn(perTurn), onStep(std::move(handler)) {
}

void Rotation::start() {
  if (isTurning || !isMotionWanted())
    return;
  isTurning = true;
  repetition = MainQueue::main().scheduleRepeating(interval, {}, [this] {
    steps = (steps + 1) % stepsPerTurn;
    onStep();
  });
}

void Rotation::stop() {
  repetition.cancel();
  isTurning = false;
}

}  // namespace platform
