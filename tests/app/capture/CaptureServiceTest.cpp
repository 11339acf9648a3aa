#include "app/capture/AppPaths.h"
#include "app/capture/CaptureService.h"
#include "platform/base/Locations.h"
#include "platform/base/Log.h"
#include "platform/base/MainQueue.h"
#include "platform/base/Task.h"
#include "platform/base/UserDefaults.h"
#include "tests/support/ScratchHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace sorrel;
using namespace platform;

namespace {

/// The capture tool as a test plays it: what it was started with, and a way to end it.
class FakeTool {
 public:
  struct Run {
    QString executable;
    QStringList arguments;
    std::function<void()> end;
  };
  QList<Run> runs;
  std::optional<QString> launchError;

 private:
  TaskLauncherOverride override{[this](const Task& task, auto onTermination) {
    runs.append({task.executable, task.arguments, onTermination});
    return launchError;
  }};
};

class CaptureServiceTest : public testing::Test {
 protected:
  CaptureServiceTest() { UserDefaults::resetStandard(); }
  ~CaptureServiceTest() override { UserDefaults::resetStandard(); }

  /// What interactiveCaptureToFile() answered, in order.
  QList<std::optional<QUrl>> answers;
  void capture() {
    CaptureService::shared().interactiveCaptureToFile([this](auto url) { answers.append(url); });
  }

  testing_support::ScratchHome home;
  ManualClock clock{QDateTime(QDate(2026, 3, 14), QTime(9, 26, 53, 999))};
  FakeTool tool;
  const QString plainName = QStringLiteral("Sorrel 2026-03-14 at 09.26.53.png");
};

TEST_F(CaptureServiceTest, TheToolIsGivenANewFileInTheBottle) {
  capture();
  ASSERT_EQ(tool.runs.size(), 1);
  const QString path = home.path(QStringLiteral("Documents/Sorrel bottle/") + plainName);
  EXPECT_EQ(tool.runs[0].executable, Locations::systemTool(QStringLiteral("/usr/sbin/screencapture")));
  EXPECT_EQ(tool.runs[0].arguments, QStringList({QStringLiteral("-i"), path}));

  home.write(QStringLiteral("Documents/Sorrel bottle/") + plainName, "a picture");
  tool.runs[0].end();
  EXPECT_TRUE(answers.isEmpty()) << "the answer comes in a turn of its own";
  clock.run();
  ASSERT_EQ(answers.size(), 1);
  EXPECT_EQ(answers[0], QUrl::fromLocalFile(path));
}

TEST_F(CaptureServiceTest, NamesAreNumberedFromTwoAndTheFirstFreeOneWins) {
  const auto nameOfNext = [this] {
    capture();
    return QFileInfo(tool.runs.last().arguments[1]).fileName();
  };
  const QDir bottle(AppPaths::bottleDirectory().toLocalFile());
  const auto fill = [&](const QString& name) { QFile(bottle.filePath(name)).open(QIODevice::WriteOnly); };
  fill(plainName);
  EXPECT_EQ(nameOfNext(), QStringLiteral("Sorrel 2026-03-14 at 09.26.53 (2).png"));
  fill(QStringLiteral("Sorrel 2026-03-14 at 09.26.53 (2).png"));
  fill(QStringLiteral("Sorrel 2026-03-14 at 09.26.53 (4).png"));
  EXPECT_EQ(nameOfNext(), QStringLiteral("Sorrel 2026-03-14 at 09.26.53 (3).png"));
  clock.advance(std::chrono::milliseconds(1));
  EXPECT_EQ(nameOfNext(), QStringLiteral("Sorrel 2026-03-14 at 09.26.54.png"));
}

TEST_F(CaptureServiceTest, WithoutAFileThereIsNothingToAnswer) {
  capture();
  CaptureService::shared().interactiveCaptureToClipboard();
  EXPECT_EQ(tool.runs[1].arguments, QStringList({QStringLiteral("-i"), QStringLiteral("-c")}));
  tool.runs[1].end();
  tool.runs[0].end();
  clock.run();
  EXPECT_EQ(answers, QList<std::optional<QUrl>>({std::nullopt}));
}

TEST_F(CaptureServiceTest, AToolThatCannotBeStartedIsLoggedAndAnsweredLater) {
  const LogCapture log;
  tool.launchError = QStringLiteral("no such thing");
  capture();
  EXPECT_EQ(log.logged, QStringList({QStringLiteral("Sorrel screencapture launch failed: no such thing")}));
  EXPECT_TRUE(answers.isEmpty());
  clock.run();
  EXPECT_EQ(answers, QList<std::optional<QUrl>>({std::nullopt}));
}

TEST_F(CaptureServiceTest, TheFolderIsReadAtEachCapture) {
  auto& defaults = UserDefaults::standard();
  defaults.set(QStringLiteral("storageDirectory"), QStringLiteral("~/다른 곳/shots"));
  capture();
  EXPECT_EQ(tool.runs[0].arguments[1], home.path(QStringLiteral("다른 곳/shots/") + plainName));
  EXPECT_TRUE(QFileInfo(home.path(QStringLiteral("다른 곳/shots"))).isDir());

  defaults.set(QStringLiteral("storageDirectory"), QString());
  EXPECT_EQ(AppPaths::bottleDirectory(),
            QUrl::fromLocalFile(home.path(QStringLiteral("Documents/Sorrel bottle/"))));
  ASSERT_TRUE(QDir(AppPaths::bottleDirectory().toLocalFile()).removeRecursively());
  EXPECT_TRUE(QFileInfo(AppPaths::bottleDirectory().toLocalFile()).isDir()) << "asking brings it back";
}

TEST_F(CaptureServiceTest, AFolderThatCannotBeMadeIsStillTheAnswer) {
  const QString file = home.write(QStringLiteral("file"));
  UserDefaults::standard().set(QStringLiteral("storageDirectory"), file + QStringLiteral("/below"));
  capture();
  EXPECT_EQ(tool.runs[0].arguments[1], file + QStringLiteral("/below/") + plainName);
  EXPECT_EQ(AppPaths::supportDirectory(),
            QUrl::fromLocalFile(home.path(QStringLiteral(".local/share/Sorrel/"))));
}

}  // namespace
