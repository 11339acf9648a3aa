#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "app/capture/AppPaths.h"
#include "app/capture/Notifications.h"
#include "app/settings/LocalizationManager.h"
#include "app/shell/AppDelegate.h"
#include "app/shell/ShortcutNames.h"
#include "platform/base/Task.h"
#include "platform/base/UserDefaults.h"
#include "tests/support/Files.h"
#include "tests/support/HotKeyServiceDouble.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScratchHome.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorrel;
using namespace platform;
using testing_support::LogCapture;
using namespace std::chrono_literals;
using KeyboardShortcuts::Key;

namespace {

class UpdaterDouble : public Updater {
 public:
  explicit UpdaterDouble(QStringList& log) : calls(log) {}
  void setAutomaticallyChecksForUpdates(bool isAutomatic) override {
    calls << (isAutomatic ? u"automatic"_s : u"manual"_s);
  }
  void checkForUpdates() override { calls << u"check for updates"_s; }
  [[nodiscard]] Activity activity() const override { return Activity::None; }
  [[nodiscard]] Subscription observe(std::function<void()>) override { return {}; }

 private:
  QStringList& calls;
};

/// The coordinator with everything around it played by the test: windows that note what is asked of them, a
/// capture tool, a hot-key service, a clock, a home folder.
class AppDelegateTest : public testing::Test {
 protected:
  AppDelegateTest() {
    Environment::provide<HotKeyService>(service);
    Environment::provide(
        std::make_shared<TaskLauncher>([this](const Task& task, auto onTermination) -> Result<> {
          if (task.executable.endsWith(u"/screencapture"_s))
            tools.append({task, onTermination});
          return {};
        }));
    windows.openEditor = [this](const QUrl& url) {
      calls << u"edit "_s + url.fileName();
      return !url.fileName().endsWith(u".txt"_s);
    };
    windows.openSettings = [this] { calls << u"settings"_s; };
  }

  enum class UntilTheTrayHasAnswered { No, Yes };
  void launch(UntilTheTrayHasAnswered wait = UntilTheTrayHasAnswered::Yes) {
    delegate = std::make_unique<AppDelegate>(windows, std::make_unique<UpdaterDouble>(calls),
                                             [this] { calls << u"terminate"_s; });
    historyToken = delegate->history().observe([this] { calls << u"list"_s; });
    delegate->applicationDidFinishLaunching();
    if (wait == UntilTheTrayHasAnswered::Yes)
      clock.advance(1s);
  }
  /// What has happened since the last question: calls in their order, then whether the panel came or went.
  QString taken() {
    const bool isOpen = delegate && delegate->historyPanel().isVisible();
    if (isOpen != std::exchange(wasOpen, isOpen))
      calls << (isOpen ? u"opened"_s : u"closed"_s);
    return std::exchange(calls, {}).join(u'|');
  }
  void put(const QString& name, qint64 ageInDays = 0) const {
    testing_support::setModified(home.write(u"Documents/Sorrel bottle/"_s + name),
                                 MainQueue::main().now().addDays(-ageInDays));
  }
  void press(const Key& key) { service->press(static_cast<quint32>(key.rawValue), altShift); }
  [[nodiscard]] QString description() const {
    return delegate->statusItem()->image().accessibilityDescription;
  }
  static void post(const char* name, const QVariant& object = {}) {
    NotificationCenter::defaultCenter().post(QString::fromLatin1(name), object);
  }

  static constexpr quint32 altShift = 0x800 | 0x200;
  std::shared_ptr<testing_support::HotKeyServiceDouble> service =
      std::make_shared<testing_support::HotKeyServiceDouble>();
  testing_support::ScratchHome home;
  const QString bottle = home.path(u"Documents/Sorrel bottle"_s);
  ManualClock clock{QDateTime(QDate(2026, 3, 14), QTime(12, 0), Qt::UTC)};
  LogCapture log;
  QStringList calls;
  bool wasOpen = false;
  platform::Subscription historyToken;
  QList<std::pair<Task, std::function<void()>>> tools;
  AppDelegate::Windows windows;
  std::unique_ptr<AppDelegate> delegate;
};

TEST_F(AppDelegateTest, LaunchMakesTheFolderAndShowsWhatIsInIt) {
  launch();
  EXPECT_TRUE(QFileInfo(bottle).isDir());
  EXPECT_EQ(description(), u"Sorrel — 0 screenshots"_s);
  EXPECT_EQ(taken(), u"automatic"_s) << "the history learns nothing before it opens";
  EXPECT_EQ(service->live.size(), 4u);
  delegate.reset();
  put(u"a.png"_s);
  launch();
  EXPECT_EQ(description(), u"Sorrel — 1 screenshots"_s);
}

TEST_F(AppDelegateTest, OldPicturesGoAtLaunchAndThenDaily) {
  put(u"old.png"_s, 31);
  put(u"soon old.png"_s, 29);
  launch();
  EXPECT_EQ(taken(), u"automatic|list"_s);
  clock.advance(24h);
  EXPECT_EQ(taken(), QString()) << "a sweep that trashes nothing refreshes nothing";
  clock.advance(24h);
  EXPECT_EQ(taken(), u"list"_s);
  EXPECT_TRUE(delegate->history().screenshots->empty());
  EXPECT_EQ(description(), u"Sorrel — 0 screenshots"_s);
}

TEST_F(AppDelegateTest, EachHotKeyHasItsAction) {
  launch();
  taken();
  const auto captured = [this](const Key& key, bool hasPicture) {
    press(key);
    EXPECT_EQ(taken(), QString());
    if (hasPicture)
      QFile(tools.last().first.arguments.last()).open(QIODevice::WriteOnly);
    tools.last().second();
    clock.run();
    return taken();
  };
  for (const Key& key : {Key::s, Key::d, Key::a})
    EXPECT_EQ(captured(key, false), QString()) << "cancelled, or to the clipboard";
  EXPECT_EQ(tools.last().first.arguments, QStringList({u"-i"_s, u"-c"_s}));
  EXPECT_EQ(description(), u"Sorrel — 0 screenshots"_s);
  EXPECT_EQ(captured(Key::s, true), u"list|list|opened"_s);
  EXPECT_EQ(description(), u"Sorrel — 1 screenshots"_s);
  const QString edited = captured(Key::d, true);
  EXPECT_EQ(edited, u"list|edit "_s + QFileInfo(tools.last().first.arguments.last()).fileName());
  const auto runs = tools.size();
  press(Key::s);
  press(Key::d);
  EXPECT_EQ(tools.size(), runs + 2) << "nothing keeps a second capture from starting";
  EXPECT_EQ(captured(Key::s, true), u"list"_s) << "an open panel only gets the new list";
  delegate->history().isLocked = true;
  taken();
  press(Key::f);
  EXPECT_EQ(taken(), u"closed"_s) << "locked or not";
  delegate->applicationShouldHandleReopen();
  EXPECT_EQ(taken(), u"list|opened"_s);
  delegate->applicationShouldHandleReopen();
  EXPECT_EQ(taken(), QString());
  UserDefaults::standard().set(
      u"KeyboardShortcuts_openHistory"_s,
      KeyboardShortcuts::Shortcut(Key::g, ModifierFlag::Option | ModifierFlag::Shift).encoded());
  press(Key::f);
  EXPECT_EQ(taken(), QString());
  press(Key::g);
  EXPECT_EQ(taken(), u"closed"_s) << "the settings' file was edited by hand";
  ShortcutNames::openHistory().setShortcut(std::nullopt);
  press(Key::g);
  EXPECT_EQ(taken(), QString());
  press(Key::d);
  delegate.reset();
  taken();
  EXPECT_EQ(captured(Key::d, true), QString()) << "what ends after the coordinator did";
}

TEST_F(AppDelegateTest, TheHistoryWaitsForTheIconThatItHangsBelow) {
  launch(UntilTheTrayHasAnswered::No);
  taken();
  delegate->applicationShouldHandleReopen();
  EXPECT_EQ(taken(), QString());
  clock.advance(1s);
  EXPECT_EQ(taken(), u"list|opened"_s) << "there is no tray, but a history";
  launch(UntilTheTrayHasAnswered::No);
  wasOpen = false;
  taken();
  delegate->perform(Action::History);
  delegate->perform(Action::History);
  clock.advance(1s);
  EXPECT_EQ(taken(), QString()) << "opened and closed again";
}

TEST_F(AppDelegateTest, OfWhatOthersWantOpenedTheFirstPictureIs) {
  launch();
  taken();
  log.logged.clear();
  delegate->open({QUrl(u"https://example.org/x/web.png"_s), QUrl(u"relative.png"_s),
                  QUrl::fromLocalFile(u"/x/notes.txt"_s), QUrl::fromLocalFile(u"/x/a b.png"_s),
                  QUrl::fromLocalFile(u"/x/c.png"_s)});
  EXPECT_EQ(taken(), u"edit notes.txt|edit a b.png"_s);
  EXPECT_EQ(log.logged.size(), 3) << "what nobody else tells of";
  delegate->perform(Action::Settings);
  delegate->perform(Action::Quit);
  clock.run();
  EXPECT_EQ(taken(), u"terminate|settings"_s);
}

TEST_F(AppDelegateTest, EachNotificationHasItsAction) {
  put(u"a.png"_s);
  launch();
  taken();
  const struct {
    const char* name;
    QVariant object;
    QString expected;
  } rows[] = {
      {Notifications::openSettings, {}, u"settings"_s},
      {Notifications::screenshotsChanged, {}, u"list"_s},
      {Notifications::editScreenshot, QUrl::fromLocalFile(u"/x/a.png"_s), u"edit a.png|closed"_s},
      {Notifications::editScreenshot, u"/x/a.png"_s, QString()},
      {Notifications::retentionChanged, {}, QString()},
      {Notifications::storageLocationChanged, {}, u"list"_s},
      {Notifications::closeHistoryPanel, {}, u"closed"_s},
      {Notifications::checkForUpdates, {}, u"check for updates"_s},
  };
  delegate->history().isLocked = true;
  for (const auto& row : rows) {
    delegate->applicationShouldHandleReopen();
    taken();
    post(row.name, row.object);
    clock.run();
    EXPECT_EQ(taken(), row.expected) << row.name;
  }
  UserDefaults::standard().set(u"autoDeleteDays"_s, 1);
  put(u"old.png"_s, 2);
  post(Notifications::retentionChanged);
  EXPECT_EQ(taken(), u"list"_s);
  delegate.reset();
  taken();
  post(Notifications::checkForUpdates);
  EXPECT_EQ(taken(), QString()) << "nobody is left to hear";
}

TEST_F(AppDelegateTest, TheMenuSpeaksTheChosenLanguageAndDoesWhatItSays) {
  LocalizationManager::shared().setLanguage(AppLanguage::ko);
  launch();
  EXPECT_EQ(delegate->contextMenu().items[0].title, u"캡처 기록 열기"_s);
  LocalizationManager::shared().setLanguage(AppLanguage::en);
  launch();
  taken();
  const auto& items = delegate->contextMenu().items;
  EXPECT_EQ(items[0].title, u"Open History"_s);
  EXPECT_EQ(items[1].keyEquivalent, u","_s);
  EXPECT_EQ(items[6].keyEquivalent, u"q"_s);
  for (const size_t row : {0u, 1u, 2u, 6u})
    delegate->contextMenu().items[row].action();
  clock.run();
  EXPECT_EQ(taken(), u"list|check for updates|terminate|settings|opened"_s);
}

}  // namespace
