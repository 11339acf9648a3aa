#pragma once

#include "platform/desktop/Alert.h"
#include "platform/updater/FeedUpdater.h"

#include <QPointer>
#include <QWidget>

namespace sorrel {

/// Tells the user what came of a look for newer versions, in one alert at a time. Main thread only.
class UpdateAlert {
 public:
  /// `running` is this program's version.
  explicit UpdateAlert(platform::Version running) : running(std::move(running)) {}
  ~UpdateAlert() { delete shown; }
  UpdateAlert(const UpdateAlert&) = delete;
  UpdateAlert& operator=(const UpdateAlert&) = delete;

  /// In place of the alert before, if that is still there.
  void present(const platform::UpdateReport& report);

 private:
  const platform::Version running;
  QPointer<QWidget> shown;
};

}  // namespace sorrel
