#pragma once

namespace platform {

/// Looks for newer versions of the program.
class Updater {
 public:
  virtual ~Updater() = default;

  /// Whether the updater looks from time to time without being asked.
  virtual void setAutomaticallyChecksForUpdates(bool isAutomatic) = 0;
  /// Looks now, and tells the user what it finds.
  virtual void checkForUpdates() = 0;
};

}  // namespace platform
