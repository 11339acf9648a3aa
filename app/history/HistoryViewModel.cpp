#include "app/history/HistoryViewModel.h"

#include "app/capture/ClipboardService.h"
#include "app/settings/LocalizationManager.h"
#include "app/settings/SettingsKeys.h"
#include "platform/desktop/Workspace.h"

namespace sorrel {

using platform::UserDefaults;

namespace {

constexpr std::chrono::milliseconds toastDuration(1600);

}  // namespace

std::shared_ptr<HistoryViewModel> HistoryViewModel::create() {
  return std::shared_ptr<HistoryViewModel>(new HistoryViewModel);
}

HistoryViewModel::HistoryViewModel()
    : isLocked(observers, UserDefaults::standard().value(SettingsKeys::historyPanelLocked),
               [this] { UserDefaults::standard().set(SettingsKeys::historyPanelLocked, isLocked.get()); }),
      lockSetting(UserDefaults::standard().observe(SettingsKeys::historyPanelLocked, [this] {
        if (const bool stored = UserDefaults::standard().value(SettingsKeys::historyPanelLocked);
            stored != isLocked.get())
          isLocked = stored;
      })) {
}

platform::Subscription HistoryViewModel::observe(std::function<void()> observer) {
  return observers.add(std::move(observer));
}

void HistoryViewModel::handleQuillonButton(const Screenshot& screenshot) {
  if (!ClipboardService::isQuillonInstalled() &&
      !UserDefaults::standard().value(SettingsKeys::quillonPromptShown)) {
    UserDefaults::standard().set(SettingsKeys::quillonPromptShown, true);
    platform::Workspace::open(ClipboardService::quillonPageURL());
    showToast(localized(QStringLiteral("clipboard.quillon.promo")));
    return;
  }
  showToast(ClipboardService::copy(screenshot.url()) ? ClipboardService::copyConfirmation()
                                                     : localized(QStringLiteral("clipboard.failed")));
}

void HistoryViewModel::showToast(const QString& text) {
  toast = text;
  dismissal = platform::MainQueue::main().asyncAfter(toastDuration, [this] { toast = std::nullopt; });
}

}  // namespace sorrel
