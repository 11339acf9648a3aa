#include "app/capture/AppPaths.h"
#include "app/capture/CaptureService.h"
#include "platform/base/Locations.h"
#include "platform/base/MainQueue.h"
#include "platform/base/Task.h"
#include "platform/base/UserDefaults.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScratchHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorrel;
using namespace platform;
using testing_support::LogCapture;

namespace {

class CaptureServiceTest : public testing::Test {
 protected:
  /// What interactiveCaptureToFile() answered, in order.
  QList<std::optional<QUrl>> answers;
  void capture() {
    CaptureService::shared().interactiveCaptureToFile([this](auto url) { answers.append(url); });
  }

  testing_support::ScratchHome home;
  ManualClock clock{QDateTime(QDate(2026, 3, 14), QTime(9, 26, 53, 999))};
  QString launchError;
  /// How the capture tool was started, and a way to end it.
  QList<std::pair<Task, std::function<void()>>> runs;
  const std::shared_ptr<TaskLauncher> replaced = Environment::provide(
      std::make_shared<TaskLauncher>([this](const Task& task, auto onTermination) -> Result<> {
        runs.append({task, onTermination});
        return launchError.isEmpty() ? Result<>() : Error{launchError};
      }));
  const QString plainName = u"Sorrel 2026-03-14 at 09.26.53.png"_s;
};

TEST_F(CaptureServiceTest, TheToolIsGivenANewFileInTheBottle) {
  capture();
  ASSERT_EQ(runs.size(), 1);
  const QString path = home.path(u"Documents/Sorrel bottle/"_s + plainName);
  EXPECT_EQ(runs[0].first.executable, Locations::systemTool(u"/usr/sbin/screencapture"_s));
  EXPECT_EQ(runs[0].first.arguments, QStringList({u"-i"_s, path}));

  home.write(u"Documents/Sorrel bottle/"_s + plainName, "a picture");
  runs[0].second();
  EXPECT_TRUE(answers.isEmpty()) << "the answer comes in a turn of its own";
  clock.run();
  ASSERT_EQ(answers.size(), 1);
  EXPECT_EQ(answers[0], QUrl::fromLocalFile(path));
}

TEST_F(CaptureServiceTest, NamesAreNumberedFromTwoAndTheFirstFreeOneWins) {
  const auto nameOfNext = [this] {
    capture();
    runs.last().second();
    clock.run();
    return QFileInfo(runs.last().first.arguments[1]).fileName();
  };
  const QDir bottle(AppPaths::bottleDirectory().toLocalFile());
  const auto fill = [&](const QString& name) { QFile(bottle.filePath(name)).open(QIODevice::WriteOnly); };
  fill(plainName);
  EXPECT_EQ(nameOfNext(), u"Sorrel 2026-03-14 at 09.26.53 (2).png"_s);
  fill(u"Sorrel 2026-03-14 at 09.26.53 (2).png"_s);
  fill(u"Sorrel 2026-03-14 at 09.26.53 (4).png"_s);
  EXPECT_EQ(nameOfNext(), u"Sorrel 2026-03-14 at 09.26.53 (3).png"_s);
  clock.advance(std::chrono::milliseconds(1));
  EXPECT_EQ(nameOfNext(), u"Sorrel 2026-03-14 at 09.26.54.png"_s);
}

TEST_F(CaptureServiceTest, TwoCapturesOfOneSecondKeepApart) {
  const auto nameOf = [this](int run) { return QFileInfo(runs[run].first.arguments[1]).fileName(); };
  capture();
  capture();
  EXPECT_EQ(nameOf(0), plainName);
  EXPECT_EQ(nameOf(1), u"Sorrel 2026-03-14 at 09.26.53 (2).png"_s);
  runs[0].second();
  clock.run();
  capture();
  EXPECT_EQ(nameOf(2), plainName) << "that one was cancelled";
}

TEST_F(CaptureServiceTest, WithoutAFileThereIsNothingToAnswer) {
  capture();
  CaptureService::shared().interactiveCaptureToClipboard();
  EXPECT_EQ(runs[1].first.arguments, QStringList({u"-i"_s, u"-c"_s}));
  runs[1].second();
  runs[0].second();
  const LogCapture log;
  launchError = u"no such thing"_s;
  capture();
  EXPECT_EQ(log.logged, QStringList({u"Sorrel screencapture launch failed: no such thing"_s}));
  EXPECT_TRUE(answers.isEmpty());
  clock.run();
  EXPECT_EQ(answers, QList<std::optional<QUrl>>({std::nullopt, std::nullopt}));
}

TEST_F(CaptureServiceTest, TheFolderIsReadAtEachCapture) {
  auto& defaults = UserDefaults::standard();
  defaults.set(u"storageDirectory"_s, u"~/다른 곳/shots"_s);
  capture();
  EXPECT_EQ(runs[0].first.arguments[1], home.path(u"다른 곳/shots/"_s + plainName));
  EXPECT_TRUE(QFileInfo(home.path(u"다른 곳/shots"_s)).isDir());

  defaults.set(u"storageDirectory"_s, QString());
  EXPECT_EQ(AppPaths::bottleDirectory(), QUrl::fromLocalFile(home.path(u"Documents/Sorrel bottle/"_s)));
  ASSERT_TRUE(QDir(AppPaths::bottleDirectory().toLocalFile()).removeRecursively());
  EXPECT_TRUE(QFileInfo(AppPaths::bottleDirectory().toLocalFile()).isDir()) << "asking brings it back";
}

}  // namespace
