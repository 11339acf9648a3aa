#include "platform/base/Directory.h"
#include "platform/base/Locations.h"
#include "platform/base/SingleInstance.h"
#include "platform/base/Task.h"
#include "platform/base/TerminationSignals.h"
#include "tests/support/ScratchHome.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace platform;
using testing_support::ScratchHome;

namespace {

/// Seconds and nanoseconds since the epoch.
void setModified(const QString& path, time_t seconds, long nanoseconds = 0) {
  const timespec times[2] = {{0, UTIME_OMIT}, {seconds, nanoseconds}};
  ASSERT_EQ(utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, AT_SYMLINK_NOFOLLOW), 0);
}

QStringList names(const std::vector<DirectoryEntry>& entries) {
  QStringList result;
  for (const auto& entry : entries)
    result << QFileInfo(entry.path).fileName();
  return result;
}

bool endsInWanted(std::string_view name) {
  return name.ends_with(".w");
}

TEST(DirectoryTest, ListsWantedVisibleChildrenNewestFirst) {
  const ScratchHome home;
  setModified(home.write(QStringLiteral("old.w")), 100);
  setModified(home.write(QStringLiteral("새것.w")), 200, 2);
  setModified(home.write(QStringLiteral("nearly as new.w")), 200, 1);
  home.write(QStringLiteral("unwanted.x"));
  home.write(QStringLiteral(".hidden.w"));
  home.write(QStringLiteral("folder.w/inner.w"));
  setModified(home.path(QStringLiteral("folder.w")), 50);
  ASSERT_TRUE(QFile::link(QStringLiteral("nowhere"), home.path(QStringLiteral("broken link.w"))));
  setModified(home.path(QStringLiteral("broken link.w")), 40);

  const auto entries = newestFirst(home.path(), endsInWanted);
  ASSERT_TRUE(entries);
  EXPECT_EQ(names(*entries).join(u'|'),
            QStringLiteral("새것.w|nearly as new.w|old.w|folder.w|broken link.w"));
  EXPECT_EQ(entries->at(0).path, home.path(QStringLiteral("새것.w")));
  EXPECT_EQ(entries->at(0).modificationDate, Date(std::chrono::nanoseconds(200'000'000'002)));
  EXPECT_FALSE(newestFirst(home.path(QStringLiteral("missing")), endsInWanted));
  EXPECT_FALSE(newestFirst(home.path(QStringLiteral("old.w")), endsInWanted));
}

TEST(DirectoryTest, EqualDatesKeepTheFoldersOrder) {
  const ScratchHome home;
  for (int number = 0; number < 40; ++number)
    setModified(home.write(QStringLiteral("%1.w").arg(number)), number % 2 ? 100 : 300);
  const auto all = [](std::string_view) { return true; };
  const auto first = newestFirst(home.path(), all);
  for (int number = 0; number < 40; ++number)
    setModified(home.path(QStringLiteral("%1.w").arg(number)), 100);
  const auto listed = newestFirst(home.path(), all);
  QStringList newer;
  for (const auto& name : names(*listed))
    if (name.chopped(2).toInt() % 2 == 0)
      newer << name;
  EXPECT_EQ(names(*first).mid(0, 20), newer);
  EXPECT_EQ(names(*newestFirst(home.path(), all)), names(*listed));
}

TEST(LocationsTest, ExpandsATildeOnlyWhereItMeansAHome) {
  const ScratchHome home;
  const auto expand = [](const char* path) { return Locations::expandingTilde(QString::fromLatin1(path)); };
  EXPECT_EQ(expand("~"), home.path());
  EXPECT_EQ(expand("~/a b"), home.path(QStringLiteral("a b")));
  EXPECT_EQ(expand("~root/x"), QStringLiteral("/root/x"));
  EXPECT_EQ(expand("~no such user/x"), QStringLiteral("~no such user/x"));
  EXPECT_EQ(expand("/a/~"), QStringLiteral("/a/~"));
  EXPECT_EQ(expand(""), QString());
}

TEST(LocationsTest, DocumentsAreWhereTheDesktopSaysTheyAre) {
  const ScratchHome home;
  home.write(QStringLiteral(".config/user-dirs.dirs"), "XDG_DOCUMENTS_DIR=\"$HOME/문서\"\n");
  EXPECT_EQ(Locations::documents(), home.path(QStringLiteral("문서")));
}

TEST(LocationsTest, ASystemToolThatIsMissingIsTheInstalledOne) {
  EXPECT_EQ(Locations::systemTool(QStringLiteral("/bin/sh")), QStringLiteral("/bin/sh"));
  const QString ours = Locations::systemTool(QStringLiteral("/usr/sbin/no-such-tool"));
  EXPECT_TRUE(ours.endsWith(QStringLiteral("/libexec/sorrel/no-such-tool"))) << qPrintable(ours);
  EXPECT_FALSE(ours.contains(QStringLiteral(".."))) << qPrintable(ours);
}

TEST(TaskTest, TellsOnceThatTheChildEndedHoweverItDid) {
  const ScratchHome home;
  const QString file = home.path(QStringLiteral("made by the child"));
  QEventLoop loop;
  int ended = 0;
  const auto error =
      launch({QStringLiteral("/bin/sh"),
              {QStringLiteral("-c"), QStringLiteral(": > \"$1\"; kill -9 $$"), QStringLiteral("sh"), file}},
             [&] {
               ++ended;
               loop.quit();
             });
  ASSERT_FALSE(error);
  EXPECT_EQ(ended, 0);
  loop.exec();
  EXPECT_EQ(ended, 1);
  EXPECT_TRUE(QFile::exists(file));
}

TEST(TaskTest, AProgramThatCannotBeStartedIsAnErrorAndNoTermination) {
  const ScratchHome home;
  const QString notAProgram = home.write(QStringLiteral("text"), "just text");
  for (const QString& path : {notAProgram, home.path(), QStringLiteral("/no/such/program")}) {
    const auto error = launch({path, {}}, [] { FAIL(); });
    ASSERT_TRUE(error) << qPrintable(path);
    EXPECT_FALSE(error->isEmpty());
  }
  QCoreApplication::processEvents();
}

TEST(SingleInstanceTest, TheSecondRingsTheFirst) {
  const ScratchHome home;
  auto first = std::make_unique<SingleInstance>();
  ASSERT_TRUE(first->isFirst());
  QEventLoop loop;
  int rung = 0;
  first->setRungHandler([&] {
    ++rung;
    loop.quit();
  });
  EXPECT_FALSE(SingleInstance().isFirst());
  loop.exec();
  EXPECT_EQ(rung, 1);

  qputenv("DISPLAY", "another:7.1");
  EXPECT_TRUE(SingleInstance().isFirst()) << "another display has an instance of its own";
  qunsetenv("DISPLAY");

  first.reset();
  EXPECT_TRUE(SingleInstance().isFirst()) << "after the first ended, the next is the first";
}

TEST(SingleInstanceTest, WithoutAFolderForItTheProgramStillRuns) {
  const ScratchHome home;
  qputenv("XDG_RUNTIME_DIR", QFile::encodeName(home.write(QStringLiteral("not a folder"))));
  EXPECT_TRUE(SingleInstance().isFirst());
}

TEST(TerminationSignalsTest, ASignalBecomesACallFromTheEventLoop) {
  QEventLoop loop;
  bool isHandled = false;
  handleTerminationSignals([&] {
    isHandled = true;
    loop.quit();
  });
  raise(SIGTERM);
  EXPECT_FALSE(isHandled);
  loop.exec();
  EXPECT_TRUE(isHandled);
}

}  // namespace
