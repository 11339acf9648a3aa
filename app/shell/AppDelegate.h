#pragma once

#include "app/history/HistoryPanelController.h"
#include "app/history/HistoryViewModel.h"
#include "app/shell/Actions.h"
#include "platform/base/MainQueue.h"
#include "platform/base/Menu.h"
#include "platform/base/NotificationCenter.h"
#include "platform/desktop/StatusItem.h"
#include "platform/updater/Updater.h"

#include <QUrl>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace sorrel {

/// The one long-lived object of the program: it owns the status item, the history, the retention timer and
/// the updater, and is the only place where hot keys and the program's notifications become actions. Others
/// tell it things through the notifications of app/capture/Notifications.h, all posted on the main thread; it
/// calls them directly. Main thread only.
class AppDelegate {
 public:
  /// The windows that the coordinator opens besides the history panel. One that is empty doesn't exist: what
  /// leads to it does nothing, and its row in the menu can't be chosen.
  struct Windows {
    std::function<bool(QUrl)> openEditor;  // false for what is no picture
    std::function<void()> openSettings;
  };

  /// `updater` may be null where the program has none; `terminate` ends the program.
  AppDelegate(Windows windows, std::unique_ptr<platform::Updater> updater, std::function<void()> terminate);
  ~AppDelegate();
  AppDelegate(const AppDelegate&) = delete;
  AppDelegate& operator=(const AppDelegate&) = delete;

  void applicationDidFinishLaunching();
  /// The user started the program again: what he looks for is the history.
  void applicationShouldHandleReopen();

  /// What the hot key of the action does, or the row of the menu.
  void perform(Action action);

  /// The first of these that is a picture opens in the editor, of which there is one; the log names the
  /// others.
  void open(const QList<QUrl>& urls);

  [[nodiscard]] const platform::StatusItem* statusItem() const { return item.get(); }
  std::shared_ptr<const platform::Menu> buildContextMenu();
  /// The menu as it was last built.
  [[nodiscard]] const platform::Menu& contextMenu() const { return *menu; }
  [[nodiscard]] HistoryViewModel& history() { return *viewModel; }
  [[nodiscard]] HistoryPanelController& historyPanel();

 private:
  /// What follows a capture to a file: the history, or the editor.
  enum class CaptureMode { normal, feature };

  void setUpShortcuts();
  void registerObservers();
  void runRetentionSweep();
  void scheduleRetentionSweep();
  void refresh();
  void showCount(qint64 count);
  void updateFolderIcon(bool isEmpty);

  void statusItemClicked(const platform::Event& event);
  void openPanel();
  void showPanel();
  /// Just after the start the tray may not have the icon yet, which the panel hangs below: until it has, or
  /// isn't going to, a panel that is asked for waits.
  void awaitIcon();
  void openSettings();
  void openBottleFolder();
  void checkForUpdates();
  void quit();
  void presentCaptureMenu(CaptureMode mode);
  void showSettingsWindow();

  Windows windows;
  std::unique_ptr<platform::Updater> updater;
  std::function<void()> terminate;
  std::unique_ptr<platform::StatusItem> item;
  std::shared_ptr<platform::Menu> menu;
  const std::shared_ptr<HistoryViewModel> viewModel = HistoryViewModel::create();
  std::unique_ptr<HistoryPanelController> panelController;  // made at its first use
  qint64 shownCount = 0;                                    // of pictures, by the status item
  QString folderIconKey;                                    // what was last applied to the storage folder
  platform::Lifetime lifetime;
  platform::WorkItem retentionTimer;
  platform::WorkItem iconArrival;
  bool isPanelAwaited = false;
  platform::WorkItem openingSettings;
  std::vector<platform::Subscription> subscriptions;  // to hot keys and notifications
};

}  // namespace sorrel
