#include "app/history/HistoryViewModel.h"

#include "app/capture/ClipboardService.h"
#include "app/settings/LocalizationManager.h"
#include "platform/base/UserDefaults.h"
#include "platform/desktop/Workspace.h"

namespace sorrel {

using platform::UserDefaults;

namespace {

const QString lockedKey = QStringLiteral("historyPanelLocked");
const QString promptShownKey = QStringLiteral("quillonPromptShown");
constexpr std::chrono::milliseconds toastDuration(1600);

}  // namespace

std::shared_ptr<HistoryViewModel> HistoryViewModel::create() {
  return std::shared_ptr<HistoryViewModel>(new HistoryViewModel);
}

HistoryViewModel::HistoryViewModel()
    : isLocked(observers, UserDefaults::standard().boolean(lockedKey),
               [this] { UserDefaults::standard().set(lockedKey, isLocked.get()); }) {
}

platform::Subscription HistoryViewModel::observe(std::function<void()> observer) {
  return observers.add(std::move(observer));
}

void HistoryViewModel::handleQuillonButton(const Screenshot& screenshot) {
  if (!ClipboardService::isQuillonInstalled() && !UserDefaults::standard().boolean(promptShownKey)) {
    UserDefaults::standard().set(promptShownKey, true);
    platform::Workspace::open(ClipboardService::quillonPageURL());
    showToast(localized(QStringLiteral("clipboard.quillon.promo")));
    return;
  }
  ClipboardService::copy(screenshot.url());
  showToast(ClipboardService::copyConfirmation());
}

void HistoryViewModel::showToast(const QString& text) {
  toast = text;
  dismissal = platform::MainQueue::main().asyncAfter(toastDuration, [this] { toast = std::nullopt; });
}

}  // namespace sorrel
