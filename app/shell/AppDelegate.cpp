#include "app/shell/AppDelegate.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "app/capture/AppPaths.h"
#include "app/capture/CaptureService.h"
#include "app/capture/Notifications.h"
#include "app/capture/RetentionService.h"
#include "app/capture/ScreenshotStore.h"
#include "app/history/ThumbnailLoader.h"
#include "app/settings/LocalizationManager.h"
#include "app/settings/SettingsKeys.h"
#include "app/shell/ShortcutNames.h"
#include "app/shell/SorrelIcon.h"
#include "platform/base/Log.h"
#include "platform/desktop/UserNote.h"
#include "platform/desktop/Workspace.h"

namespace sorrel {

using platform::MainQueue;
using platform::NotificationCenter;

namespace {

constexpr int statusImageSize = 18;

template <typename Window, typename... Arguments>
void callIfPresent(const Window& window, Arguments&&... arguments) {
  if (window)
    window(std::forward<Arguments>(arguments)...);
}

/// Once for all starts.
void tellOfMissingTray() {
  const auto told = [] { platform::UserDefaults::standard().set(SettingsKeys::trayAbsenceTold, true); };
  if (!platform::UserDefaults::standard().value(SettingsKeys::trayAbsenceTold))
    platform::tellUser(localized(QStringLiteral("tray.missing.title")),
                       localized(QStringLiteral("tray.missing.text")), told);
}

}  // namespace

AppDelegate::AppDelegate(Windows windows, std::unique_ptr<platform::Updater> updater,
                         std::function<void()> terminate)
    : windows(std::move(windows)), updater(std::move(updater)), terminate(std::move(terminate)) {
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::applicationDidFinishLaunching() {
  setUpShortcuts();  // before anything that may have to wait for the disk or for other programs
  [[maybe_unused]] const QUrl created = AppPaths::bottleDirectory();
  if (updater)
    updater->setAutomaticallyChecksForUpdates(true);
  buildContextMenu();
  item = std::make_unique<platform::StatusItem>(
      SorrelIcon::image(0, statusImageSize),
      [this](const platform::Event& event) { statusItemClicked(event); },
      [this] { return buildContextMenu(); }, tellOfMissingTray);
  awaitIcon();
  registerObservers();
  runRetentionSweep();
  scheduleRetentionSweep();
  showCount(static_cast<qint64>(ScreenshotStore::all().size()));
}

void AppDelegate::applicationShouldHandleReopen() {
  showPanel();
}

void AppDelegate::setUpShortcuts() {
  const auto bind = [this](const KeyboardShortcuts::Name& name, Action action) {
    subscriptions.push_back(KeyboardShortcuts::onKeyDown(name, [this, action] { perform(action); }));
  };
  bind(ShortcutNames::captureNormal(), Action::Capture);
  bind(ShortcutNames::captureFeature(), Action::CaptureAndEdit);
  bind(ShortcutNames::captureClipboard(), Action::CaptureToClipboard);
  bind(ShortcutNames::openHistory(), Action::History);
}

void AppDelegate::perform(Action action) {
  // An open menu holds the pointer and the keyboard, which the capture tool needs.
  if (item)
    item->cancelTracking();
  switch (action) {
    case Action::Capture:
      return presentCaptureMenu(CaptureMode::normal);
    case Action::CaptureAndEdit:
      return presentCaptureMenu(CaptureMode::feature);
    case Action::CaptureToClipboard:
      return CaptureService::shared().interactiveCaptureToClipboard();
    case Action::History:
      return openPanel();
    case Action::Settings:
      return openSettings();
    case Action::Quit:
      return quit();
  }
}

void AppDelegate::open(const QList<QUrl>& urls) {
  bool isOpened = false;
  for (const QUrl& url : urls) {
    // What the editor can't load it says itself.
    if (!isOpened && url.isLocalFile())
      isOpened = windows.openEditor && windows.openEditor(url);
    else
      platform::log(QStringLiteral("Sorrel: not opened: ") + url.toDisplayString());
  }
}

void AppDelegate::registerObservers() {
  using platform::Notification;
  const auto observe = [this](const char* name, void (*action)(AppDelegate&, const Notification&)) {
    subscriptions.push_back(NotificationCenter::defaultCenter().addObserver(
        QString::fromLatin1(name), NotificationCenter::Queue::Main,
        [this, action](const Notification& notification) { action(*this, notification); }));
  };
  observe(Notifications::openSettings, [](AppDelegate& self, const auto&) { self.showSettingsWindow(); });
  observe(Notifications::screenshotsChanged, [](AppDelegate& self, const auto&) { self.refresh(); });
  observe(Notifications::editScreenshot, [](AppDelegate& self, const Notification& notification) {
    if (notification.object.metaType() != QMetaType::fromType<QUrl>())
      return;
    self.historyPanel().close();
    callIfPresent(self.windows.openEditor, notification.object.toUrl());
  });
  observe(Notifications::retentionChanged, [](AppDelegate& self, const auto&) { self.runRetentionSweep(); });
  observe(Notifications::storageLocationChanged, [](AppDelegate& self, const auto&) { self.refresh(); });
  observe(Notifications::closeHistoryPanel,
          [](AppDelegate& self, const auto&) { self.historyPanel().close(); });
  observe(Notifications::checkForUpdates, [](AppDelegate& self, const auto&) { self.checkForUpdates(); });
  // The settings' file may be edited by hand, too.
  subscriptions.push_back(
      platform::UserDefaults::standard().observe(SettingsKeys::storageDirectory, [this] { refresh(); }));
  subscriptions.push_back(platform::UserDefaults::standard().observe([](const QString& key) {
    using namespace ShortcutNames;
    for (const auto& name : {captureNormal(), captureFeature(), captureClipboard(), openHistory()})
      if (key == KeyboardShortcuts::storeKey(name))
        KeyboardShortcuts::enable({name});
  }));
  subscriptions.push_back(LocalizationManager::shared().observe([this] {
    item->setToolTip(SorrelIcon::toolTip(shownCount));
    item->menuChanged();
  }));
}

void AppDelegate::runRetentionSweep() {
  if (RetentionService::sweep() >= 1)
    refresh();
}

void AppDelegate::scheduleRetentionSweep() {
  using namespace std::chrono_literals;
  retentionTimer = MainQueue::main().scheduleRepeating(24h, 1h, [this] { runRetentionSweep(); });
}

void AppDelegate::refresh() {
  // Two looks at the folder: the list belongs to the history, the count to the status item.
  viewModel->screenshots = ScreenshotStore::all();
  showCount(static_cast<qint64>(ScreenshotStore::all().size()));
}

void AppDelegate::showCount(qint64 count) {
  shownCount = count;
  item->setImage(SorrelIcon::image(count, statusImageSize));
  item->setToolTip(SorrelIcon::toolTip(count));
  updateFolderIcon(count == 0);
}

void AppDelegate::updateFolderIcon(bool isEmpty) {
  const QString folder = AppPaths::bottleDirectory().toLocalFile();
  const QString key = folder + (isEmpty ? QStringLiteral("|true") : QStringLiteral("|false"));
  if (key == folderIconKey)
    return;
  folderIconKey = key;
  platform::Workspace::setIcon(isEmpty ? QStringLiteral("FolderIconEmpty") : QStringLiteral("FolderIconFull"),
                               folder);
}

void AppDelegate::statusItemClicked(const platform::Event& event) {
  if (event.type == platform::EventType::RightMouseUp ||
      event.modifierFlags.testFlag(platform::ModifierFlag::Control)) {
    item->popUpMenu(buildContextMenu());
    return;
  }
  if (!historyPanel().isClosedByPresentClick())
    openPanel();
}

std::shared_ptr<const platform::Menu> AppDelegate::buildContextMenu() {
  using platform::MenuItem;
  struct Row {
    const char* titleKey;  // null for a separator
    const char* keyEquivalent;
    bool isEnabled;
    void (AppDelegate::*action)();
  };
  const Row rows[] = {
      {"menu.openHistory", "", true, &AppDelegate::openPanel},
      {"menu.settings", ",", bool(windows.openSettings), &AppDelegate::openSettings},
      {"menu.checkForUpdates", "", bool(updater), &AppDelegate::checkForUpdates},
      {},
      {"menu.openBottleFolder", "", true, &AppDelegate::openBottleFolder},
      {},
      {"menu.quit", "q", true, &AppDelegate::quit},
  };
  menu = std::make_shared<platform::Menu>();
  for (const Row& row : rows) {
    if (!row.titleKey) {
      menu->items.push_back(MenuItem::separator());
      continue;
    }
    MenuItem entry;
    entry.title = localized(QString::fromLatin1(row.titleKey));
    entry.keyEquivalent = QString::fromLatin1(row.keyEquivalent);
    entry.isEnabled = row.isEnabled;
    entry.action = [this, action = row.action] { (this->*action)(); };
    menu->items.push_back(std::move(entry));
  }
  return menu;
}

HistoryPanelController& AppDelegate::historyPanel() {
  if (!panelController)
    panelController = std::make_unique<HistoryPanelController>(viewModel, ThumbnailLoader::shared());
  return *panelController;
}

void AppDelegate::openPanel() {
  if (historyPanel().isVisible())
    historyPanel().close();
  else if (!std::exchange(isPanelAwaited, false))
    showPanel();
}

void AppDelegate::showPanel() {
  if (historyPanel().isVisible())
    return;
  isPanelAwaited = iconArrival.isPending() && !item->anchor();
  if (!isPanelAwaited)
    historyPanel().show(item->anchor());
}

void AppDelegate::awaitIcon() {
  using namespace std::chrono_literals;
  constexpr int mostLooks = 15;  // a tray that doesn't tell the icon's place never will
  iconArrival = MainQueue::main().scheduleRepeating(40ms, 0ms, [this, looks = 0]() mutable {
    if (!item->anchor() && ++looks < mostLooks)
      return;
    iconArrival.cancel();
    if (std::exchange(isPanelAwaited, false))
      showPanel();
  });
}

void AppDelegate::openSettings() {
  showSettingsWindow();
}

void AppDelegate::openBottleFolder() {
  platform::Workspace::open(AppPaths::bottleDirectory());
}

void AppDelegate::checkForUpdates() {
  if (updater)
    updater->checkForUpdates();
}

void AppDelegate::quit() {
  terminate();
}

void AppDelegate::presentCaptureMenu(CaptureMode mode) {
  const auto completion = [this, mode](const std::optional<QUrl>& url) {
    if (!url)
      return;  // cancelled, or failed: nothing to tell either way
    NotificationCenter::defaultCenter().post(QString::fromLatin1(Notifications::screenshotsChanged));
    if (mode == CaptureMode::feature)
      callIfPresent(windows.openEditor, *url);
    else
      showPanel();
  };
  CaptureService::shared().interactiveCaptureToFile(lifetime.guarded(completion));
}

void AppDelegate::showSettingsWindow() {
  // One turn later: the menu or panel that asked is gone by then.
  openingSettings = MainQueue::main().asyncAfter({}, [this] { callIfPresent(windows.openSettings); });
}

}  // namespace sorrel
