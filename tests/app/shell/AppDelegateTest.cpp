#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "app/capture/AppPaths.h"
#include "app/capture/Notifications.h"
#include "app/settings/LocalizationManager.h"
#include "app/shell/AppDelegate.h"
#include "app/shell/ShortcutNames.h"
#include "platform/base/Log.h"
#include "platform/base/Task.h"
#include "platform/base/UserDefaults.h"
#include "tests/support/HotKeyServiceDouble.h"
#include "tests/support/ScratchHome.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace sorrel;
using namespace platform;
using namespace std::chrono_literals;
using KeyboardShortcuts::Key;

namespace {

class UpdaterDouble : public Updater {
 public:
  explicit UpdaterDouble(QStringList& log) : calls(log) {}
  void setAutomaticallyChecksForUpdates(bool isAutomatic) override {
    calls << (isAutomatic ? QStringLiteral("automatic") : QStringLiteral("manual"));
  }
  void checkForUpdates() override { calls << QStringLiteral("check for updates"); }

 private:
  QStringList& calls;
};

/// The coordinator with everything around it played by the test: windows that note what is asked of them, a
/// capture tool, a hot-key service, a clock, a home folder.
class AppDelegateTest : public testing::Test {
 protected:
  AppDelegateTest() {
    UserDefaults::resetStandard();
    LocalizationManager::resetShared();
    KeyboardShortcuts::resetStatics();
    HotKeyService::setCurrent(service);
    windows.setScreenshots = [this](const auto& screenshots) {
      calls << QStringLiteral("%1 screenshots").arg(screenshots.size());
    };
    windows.toggleHistory = [this](auto) { calls << QStringLiteral("toggle history"); };
    windows.showHistory = [this](auto) { calls << QStringLiteral("show history"); };
    windows.closeHistory = [this] { calls << QStringLiteral("close history"); };
    windows.openEditor = [this](const QUrl& url) { calls << QStringLiteral("edit ") + url.fileName(); };
    windows.openSettings = [this] { calls << QStringLiteral("settings"); };
  }

  ~AppDelegateTest() override {
    delegate.reset();
    KeyboardShortcuts::resetStatics();
    HotKeyService::setCurrent(nullptr);
    LocalizationManager::resetShared();
    UserDefaults::resetStandard();
  }

  void launch() {
    delegate = std::make_shared<AppDelegate>(windows, std::make_unique<UpdaterDouble>(calls),
                                             [this] { calls << QStringLiteral("terminate"); });
    delegate->applicationDidFinishLaunching();
    storeDefaults();
  }
  static void storeDefaults() {
    // The names are declared once in a process, and so their defaults stored; a later test's home lacks them.
    for (const auto* name : {&ShortcutNames::captureNormal(), &ShortcutNames::captureFeature(),
                             &ShortcutNames::captureClipboard(), &ShortcutNames::openHistory()})
      name->setShortcut(name->defaultShortcut());
  }
  QStringList takeCalls() { return std::exchange(calls, {}); }
  void put(const QString& name, qint64 ageInDays = 0) const {
    QFile file(home.write(QStringLiteral("Documents/Sorrel bottle/") + name));
    ASSERT_TRUE(
        file.open(QIODevice::ReadWrite) &&
        file.setFileTime(MainQueue::main().now().addDays(-ageInDays), QFileDevice::FileModificationTime));
  }
  void press(const Key& key) { service->press(static_cast<quint32>(key.rawValue), altShift); }
  /// Ends the capture tool's last run, with a picture or without.
  void endTool(bool hasPicture) {
    if (hasPicture)
      QFile(tools.last().first.arguments.last()).open(QIODevice::WriteOnly);
    tools.last().second();
    clock.run();
  }
  [[nodiscard]] QString description() const {
    return delegate->statusItem()->image().accessibilityDescription;
  }
  [[nodiscard]] QStringList menuTitles() const {
    QStringList titles;
    for (const MenuItem& item : delegate->contextMenu().items)
      titles << (item.isSeparator ? QStringLiteral("-") : item.title);
    return titles;
  }
  static void post(const char* name, const QVariant& object = {}) {
    NotificationCenter::defaultCenter().post(QString::fromLatin1(name), object);
  }

  static constexpr quint32 altShift = 0x800 | 0x200;
  testing_support::ScratchHome home;
  ManualClock clock{QDateTime(QDate(2026, 3, 14), QTime(12, 0), Qt::UTC)};
  std::shared_ptr<testing_support::HotKeyServiceDouble> service =
      std::make_shared<testing_support::HotKeyServiceDouble>();
  LogCapture log;
  QStringList calls;
  QList<std::pair<Task, std::function<void()>>> tools;
  TaskLauncherOverride launcher{[this](const Task& task, auto onTermination) -> std::optional<QString> {
    if (task.executable.endsWith(QStringLiteral("/screencapture")))
      tools.append({task, onTermination});
    return std::nullopt;
  }};
  AppDelegate::Windows windows;
  std::shared_ptr<AppDelegate> delegate;
};

TEST_F(AppDelegateTest, LaunchMakesTheFolderAndShowsWhatIsInIt) {
  launch();
  EXPECT_TRUE(QFileInfo(home.path(QStringLiteral("Documents/Sorrel bottle"))).isDir());
  EXPECT_EQ(description(), QStringLiteral("Sorrel — 0 screenshots"));
  EXPECT_EQ(takeCalls(), QStringList({QStringLiteral("automatic")}))
      << "the history learns nothing before it opens";
  EXPECT_EQ(service->live.size(), 4u);

  delegate.reset();
  put(QStringLiteral("a.png"));
  launch();
  EXPECT_EQ(description(), QStringLiteral("Sorrel — 1 screenshots"));
}

TEST_F(AppDelegateTest, OldPicturesGoAtLaunchAndThenDaily) {
  put(QStringLiteral("old.png"), 31);
  put(QStringLiteral("soon old.png"), 29);
  launch();
  EXPECT_EQ(takeCalls(), QStringList({QStringLiteral("automatic"), QStringLiteral("1 screenshots")}));
  clock.advance(24h);
  EXPECT_TRUE(takeCalls().isEmpty()) << "a sweep that trashes nothing refreshes nothing";
  clock.advance(24h);
  EXPECT_EQ(takeCalls(), QStringList({QStringLiteral("0 screenshots")}));
  EXPECT_EQ(description(), QStringLiteral("Sorrel — 0 screenshots"));
}

TEST_F(AppDelegateTest, ANormalCaptureShowsTheHistoryWithTheNewPicture) {
  launch();
  takeCalls();
  press(Key::s);
  ASSERT_EQ(tools.size(), 1);
  EXPECT_TRUE(takeCalls().isEmpty());
  endTool(true);
  EXPECT_EQ(takeCalls(), QStringList({QStringLiteral("1 screenshots"), QStringLiteral("show history")}));
  EXPECT_EQ(description(), QStringLiteral("Sorrel — 1 screenshots"));
}

TEST_F(AppDelegateTest, ACaptureForTheEditorLeavesTheHistoryAlone) {
  launch();
  takeCalls();
  press(Key::d);
  endTool(true);
  EXPECT_EQ(takeCalls(), QStringList({QStringLiteral("1 screenshots"),
                                      QStringLiteral("edit ") +
                                          QFileInfo(tools.last().first.arguments.last()).fileName()}));
}

TEST_F(AppDelegateTest, ACancelledCaptureAndOneToTheClipboardChangeNothing) {
  launch();
  takeCalls();
  for (const Key& key : {Key::s, Key::d, Key::a}) {
    press(key);
    endTool(false);
  }
  EXPECT_EQ(tools.last().first.arguments, QStringList({QStringLiteral("-i"), QStringLiteral("-c")}));
  EXPECT_TRUE(takeCalls().isEmpty());
  EXPECT_EQ(description(), QStringLiteral("Sorrel — 0 screenshots"));
}

TEST_F(AppDelegateTest, NothingKeepsASecondCaptureFromStarting) {
  launch();
  press(Key::s);
  press(Key::d);
  EXPECT_EQ(tools.size(), 2);
}

TEST_F(AppDelegateTest, EachNotificationHasItsAction) {
  put(QStringLiteral("a.png"));
  launch();
  takeCalls();
  const QUrl picture = QUrl::fromLocalFile(QStringLiteral("/x/a.png"));
  struct Row {
    const char* name;
    QVariant object;
    QString expected;
  };
  const Row rows[] = {
      {Notifications::openSettings, {}, QStringLiteral("settings")},
      {Notifications::screenshotsChanged, {}, QStringLiteral("1 screenshots")},
      {Notifications::editScreenshot, picture, QStringLiteral("close history|edit a.png")},
      {Notifications::editScreenshot, QStringLiteral("/x/a.png"), QString()},
      {Notifications::editScreenshot, {}, QString()},
      {Notifications::retentionChanged, {}, QString()},
      {Notifications::storageLocationChanged, {}, QStringLiteral("1 screenshots")},
      {Notifications::closeHistoryPanel, {}, QStringLiteral("close history")},
      {Notifications::checkForUpdates, {}, QStringLiteral("check for updates")},
  };
  for (const Row& row : rows) {
    post(row.name, row.object);
    clock.run();
    EXPECT_EQ(takeCalls().join(u'|'), row.expected) << row.name;
  }
  UserDefaults::standard().set(QStringLiteral("autoDeleteDays"), 1);
  put(QStringLiteral("old.png"), 2);
  post(Notifications::retentionChanged);
  EXPECT_EQ(takeCalls().join(u'|'), QStringLiteral("1 screenshots"));
  delegate.reset();
  post(Notifications::checkForUpdates);
  EXPECT_TRUE(takeCalls().isEmpty()) << "nobody is left to hear";
}

TEST_F(AppDelegateTest, TheFolderIconFollowsTheFolderAndWhetherItIsEmpty) {
  const auto icon = [this](const QString& folder) {
    QFile file(home.path(folder + QStringLiteral("/.directory")));
    const QByteArray text = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    return text.contains("FolderIconEmpty") ? 'e' : text.contains("FolderIconFull") ? 'f' : '-';
  };
  const QString bottle = QStringLiteral("Documents/Sorrel bottle");
  launch();
  EXPECT_EQ(icon(bottle), 'e');
  put(QStringLiteral("a.png"));
  post(Notifications::screenshotsChanged);
  EXPECT_EQ(icon(bottle), 'f');
  // A user's own icon stays until the folder fills or empties.
  QFile::remove(home.path(bottle + QStringLiteral("/.directory")));
  put(QStringLiteral("b.png"));
  post(Notifications::screenshotsChanged);
  EXPECT_EQ(icon(bottle), '-');
  // Another folder gets its icon though it is no emptier.
  home.write(QStringLiteral("elsewhere/a.png"));
  UserDefaults::standard().set(QStringLiteral("storageDirectory"), QStringLiteral("~/elsewhere"));
  post(Notifications::storageLocationChanged);
  EXPECT_EQ(icon(QStringLiteral("elsewhere")), 'f');
}

TEST_F(AppDelegateTest, TheMenuSpeaksTheChosenLanguageAndDoesWhatItSays) {
  LocalizationManager::shared().setLanguage(AppLanguage::ko);
  launch();
  EXPECT_EQ(menuTitles().join(u'|'),
            QStringLiteral("캡처 기록 열기|설정…|업데이트 확인…|-|병 폴더 열기|-|Sorrel 종료"));
  LocalizationManager::shared().setLanguage(AppLanguage::en);
  launch();
  EXPECT_EQ(menuTitles().join(u'|'),
            QStringLiteral("Open History|Settings…|Check for Updates…|-|Open Bottle Folder|-|Quit Sorrel"));
  EXPECT_EQ(delegate->contextMenu().items[1].keyEquivalent, QStringLiteral(","));
  EXPECT_EQ(delegate->contextMenu().items[6].keyEquivalent, QStringLiteral("q"));
  takeCalls();
  for (const int row : {0, 1, 2, 6})
    delegate->contextMenu().items[static_cast<size_t>(row)].action();
  clock.run();
  EXPECT_EQ(takeCalls().join(u'|'), QStringLiteral("toggle history|check for updates|terminate|settings"));
}

TEST_F(AppDelegateTest, WhatDoesNotExistYetCannotBeChosen) {
  windows = {};
  delegate = std::make_shared<AppDelegate>(windows, nullptr, [] {});
  delegate->applicationDidFinishLaunching();
  storeDefaults();
  QList<bool> enabled;
  for (const MenuItem& item : delegate->contextMenu().items)
    if (!item.isSeparator)
      enabled << item.isEnabled;
  EXPECT_EQ(enabled, QList<bool>({false, false, false, true, true}));
  press(Key::f);
  press(Key::d);
  for (const auto name :
       {Notifications::openSettings, Notifications::closeHistoryPanel, Notifications::checkForUpdates})
    post(name);
  delegate->applicationShouldHandleReopen();
  clock.run();
}

TEST_F(AppDelegateTest, TheHotKeyTogglesAndASecondStartShows) {
  launch();
  takeCalls();
  press(Key::f);
  delegate->applicationShouldHandleReopen();
  EXPECT_EQ(takeCalls().join(u'|'), QStringLiteral("toggle history|show history"));
  ShortcutNames::openHistory().setShortcut(std::nullopt);
  press(Key::f);
  EXPECT_TRUE(takeCalls().isEmpty());
}

}  // namespace
