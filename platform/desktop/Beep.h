#pragma once

#include <functional>

namespace platform {

/// What makes the sound; the environment's, or else the desktop's bell.
struct Bell {
  std::function<void()> ring;
};

/// The short sound that says that something can't be done here. Silent where the user has turned it off.
void beep();

}  // namespace platform
