#pragma once

#include "app/capture/ScreenshotStore.h"
#include "platform/base/MainQueue.h"
#include "platform/base/Published.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace sorrel {

/// What the history shows, kept for as long as the program runs: panels come and go around it. It never reads
/// the folder by itself; whoever knows that the folder may have changed sets the list. Main thread only.
class HistoryViewModel {
 public:
  static std::shared_ptr<HistoryViewModel> create();
  HistoryViewModel(const HistoryViewModel&) = delete;
  HistoryViewModel& operator=(const HistoryViewModel&) = delete;

  /// Calls `observer` before each change of a field below.
  [[nodiscard]] platform::Subscription observe(std::function<void()> observer);

 private:
  HistoryViewModel();
  platform::Observers observers;

 public:
  /// Newest first.
  platform::Published<std::vector<Screenshot>> screenshots{observers};
  /// Whether the panel stays open when it loses the keyboard: the setting of that name, whoever changes it.
  platform::Published<bool> isLocked;
  /// The short message on show, if there is one. The latest stays for its full time.
  platform::PublishedBy<HistoryViewModel, std::optional<QString>> toast{observers};

  /// Copies the screenshot to the pasteboard and says so. Where the companion program isn't installed, the
  /// very first time opens its page instead, and copies nothing.
  void handleQuillonButton(const Screenshot& screenshot);

 private:
  void showToast(const QString& text);

  platform::WorkItem dismissal;  // of the toast on show
  platform::Subscription lockSetting;
};

}  // namespace sorrel
