#pragma once

class QPalette;

namespace platform {

/// While it lives, the toolkit draws the frames of windows that are shown for the first time in these colours
/// rather than in the application's: for good, since it asks for them once. For Wayland compositors that
/// leave the frames to their programs.
class FrameColors {
 public:
  /// `colors` must live as long.
  explicit FrameColors(const QPalette& colors);
  ~FrameColors();
  FrameColors(const FrameColors&) = delete;
  FrameColors& operator=(const FrameColors&) = delete;

 private:
  QPalette* const before;
};

}  // namespace platform
