#pragma once

class QScreen;

namespace platform {

/// Whether a window covers the whole output, bars included; no where the compositor doesn't tell of windows.
/// Waits for its answer.
[[nodiscard]] bool hasFullScreenWindow(const QScreen& screen);

}  // namespace platform
