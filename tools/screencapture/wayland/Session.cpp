#include "tools/screencapture/wayland/Session.h"

#include <algorithm>

namespace screencapture::wayland {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// How long what is beside the pointer waits for the compositor to tell where that is: there may be none.
constexpr milliseconds pointerPatience{100};

std::optional<milliseconds> sooner(std::optional<milliseconds> one, std::optional<milliseconds> other) {
  return one && other ? std::min(*one, *other) : one ? one : other;
}

}  // namespace

void perform(Stage& stage, Use& use) {
  const auto start = Clock::now();
  stage.input.feed(&use.gestures());
  while (use.gestures().outcome() == Outcome::Open && !stage.overlay.isClosed()) {
    stage.overlay.update();
    const auto left = pointerPatience - std::chrono::floor<milliseconds>(Clock::now() - start);
    const bool isReady = stage.input.pointer() || left.count() <= 0;
    if (isReady)
      use.draw();
    const auto wait = sooner(isReady ? use.nextChange() : left, stage.input.repeat());
    if (!stage.display.handleEvents(wait))
      return;
  }
}

}  // namespace screencapture::wayland
