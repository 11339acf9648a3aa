#pragma once

namespace platform {

/// While it lives, the toolkit decides how windows come to a Wayland compositor: as memory that is shared. It
/// would else load the whole of the graphics drivers for windows in which nothing is drawn by them. Not where
/// the compositor leaves windows' frames to the programs: the toolkit draws none in windows of that kind.
///
/// To be made before the application object, to go after it was made. What the user has set stays, and
/// programs that are started later don't inherit it.
class SoftwareWindows {
 public:
  SoftwareWindows();
  ~SoftwareWindows();
  SoftwareWindows(const SoftwareWindows&) = delete;
  SoftwareWindows& operator=(const SoftwareWindows&) = delete;

 private:
  bool isChosen;
};

}  // namespace platform
