#pragma once

#include "platform/base/Subscription.h"

namespace platform {

/// Looks for newer versions of the program.
class Updater {
 public:
  enum class Activity { None, Checking, Downloading };

  virtual ~Updater() = default;

  /// Whether the updater looks from time to time without being asked.
  virtual void setAutomaticallyChecksForUpdates(bool isAutomatic) = 0;
  /// Looks now, and tells the user what it finds.
  virtual void checkForUpdates() = 0;

  [[nodiscard]] virtual Activity activity() const = 0;
  /// Hears of each change of the activity, once it is made.
  [[nodiscard]] virtual Subscription observe(std::function<void()> observer) = 0;
};

}  // namespace platform
