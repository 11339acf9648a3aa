#include "platform/base/Directory.h"
#include "platform/base/FilePath.h"
#include "platform/base/Locations.h"
#include "platform/base/Task.h"
#include "platform/base/TerminationSignals.h"
#include "tests/support/Files.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/Waiting.h"

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

using namespace Qt::StringLiterals;
using namespace platform;
using testing_support::contentsOf;
using testing_support::ScratchHome;
using testing_support::until;

namespace {

/// Seconds and nanoseconds since the epoch.
void setModified(const QString& path, time_t seconds, long nanoseconds = 0) {
  const timespec times[2] = {{0, UTIME_OMIT}, {seconds, nanoseconds}};
  ASSERT_EQ(utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, AT_SYMLINK_NOFOLLOW), 0);
}

QStringList names(const std::vector<DirectoryEntry>& entries) {
  QStringList result;
  for (const auto& entry : entries)
    result << FilePath::text(FilePath::name(entry.path));
  return result;
}

bool endsInWanted(std::string_view name) {
  return name.ends_with(".w");
}

TEST(DirectoryTest, ListsWantedVisibleChildrenNewestFirst) {
  const ScratchHome home;
  setModified(home.write(u"old.w"_s), 100);
  setModified(home.write(u"새것.w"_s), 200, 2);
  setModified(home.write(u"nearly as new.w"_s), 200, 1);
  home.write(u"unwanted.x"_s);
  home.write(u".hidden.w"_s);
  home.write(u"folder.w/inner.w"_s);
  setModified(home.path(u"folder.w"_s), 50);
  ASSERT_TRUE(QFile::link(u"nowhere"_s, home.path(u"broken link.w"_s)));
  setModified(home.path(u"broken link.w"_s), 40);

  const auto entries = newestFirst(home.path(), endsInWanted);
  ASSERT_TRUE(entries);
  EXPECT_EQ(names(*entries).join(u'|'), u"새것.w|nearly as new.w|old.w|folder.w|broken link.w"_s);
  EXPECT_EQ(entries->at(0).path, home.path(u"새것.w"_s).toUtf8());
  EXPECT_EQ(entries->at(0).modificationDate, Date(std::chrono::nanoseconds(200'000'000'002)));
  EXPECT_FALSE(newestFirst(home.path(u"missing"_s), endsInWanted));
  EXPECT_FALSE(newestFirst(home.path(u"old.w"_s), endsInWanted));
}

TEST(DateTest, WhatIsOutOfRangeIsTheNearest) {
  using namespace std::chrono_literals;
  const auto most = Date::max().time_since_epoch() / 1s;
  EXPECT_EQ(dateOf(most - 1, 5), Date(std::chrono::seconds(most - 1) + 5ns));
  EXPECT_EQ(dateOf(-1, 999'999'999), Date(-1ns));
  for (const std::int64_t after : {most, most + 1, INT64_MAX})
    EXPECT_EQ(dateOf(after, 999'999'999), Date::max());
  for (const std::int64_t before : {-most - 1, -most - 2, INT64_MIN})
    EXPECT_EQ(dateOf(before, 0), distantPast);
}

TEST(FilePathTest, AddressesGiveBackEveryByte) {
  for (const char* name :
       {"a b", "100%25?#x;[1]&=+@:~'", "카페", "e\u0301", "caf\xe9 100%", "\x80\xff", "a\nb"}) {
    const QByteArray path = QByteArray("/folder/") + name + ".png";
    const QUrl url = FilePath::url(path);
    EXPECT_EQ(FilePath::of(url), path);
    EXPECT_EQ(FilePath::of(QUrl::fromEncoded(url.toEncoded())), path) << "as other programs read it";
    const bool isText = QUtf8StringView(path).isValidUtf8();
    EXPECT_EQ(url == QUrl::fromLocalFile(QString::fromUtf8(path)), isText);
  }
  EXPECT_EQ(FilePath::url("/caf\xe9.png").toEncoded(), "file:///caf%E9.png");
  EXPECT_EQ(FilePath::of(QUrl(u"https://host/a.png"_s)), QByteArray());
}

TEST(DirectoryTest, EqualDatesKeepTheFoldersOrder) {
  const ScratchHome home;
  const auto list = [&] { return names(*newestFirst(home.path(), endsInWanted)); };
  const auto setAll = [&](time_t even, time_t odd) {
    for (int number = 0; number < 40; ++number)
      setModified(home.write(u"%1.w"_s.arg(number)), number % 2 ? odd : even);
  };
  setAll(100, 100);
  QStringList newer = list();
  newer.removeIf([](const QString& name) { return name.chopped(2).toInt() % 2 != 0; });
  setAll(300, 100);
  EXPECT_EQ(list().mid(0, 20), newer);
}

TEST(LocationsTest, AreWhereTheUserExpectsThem) {
  const ScratchHome home;
  for (const auto& [path, expanded] :
       {std::pair(u"~"_s, home.path()), std::pair(u"~/a b"_s, home.path(u"a b"_s)),
        std::pair(u"~root/x"_s, u"/root/x"_s), std::pair(u"~no such user/x"_s, u"~no such user/x"_s),
        std::pair(u"/a/~"_s, u"/a/~"_s), std::pair(QString(), QString())})
    EXPECT_EQ(Locations::expandingTilde(path), expanded);
  home.write(u".config/user-dirs.dirs"_s, "XDG_DOCUMENTS_DIR=\"$HOME/문서\"\n");
  EXPECT_EQ(Locations::documents(), home.path(u"문서"_s));
  EXPECT_EQ(Locations::systemTool(u"/bin/sh"_s), u"/bin/sh"_s);
  const QString ours = Locations::systemTool(u"/usr/sbin/no-such-tool"_s);
  EXPECT_TRUE(ours.endsWith(u"/libexec/sorrel/no-such-tool"_s) && !ours.contains(u".."_s))
      << qPrintable(ours);
}

TEST(TaskTest, TellsOnceThatTheChildEndedHoweverItDid) {
  const ScratchHome home;
  const QString file = home.path(u"made by the child"_s);
  QEventLoop loop;
  int ended = 0;
  const QStringList arguments{u"-c"_s, u": > \"$1\"; kill -9 $$"_s, u"sh"_s, file};
  ASSERT_TRUE(launch({u"/bin/sh"_s, arguments}, [&] {
    ++ended;
    loop.quit();
  }));
  EXPECT_EQ(ended, 0);
  loop.exec();
  EXPECT_EQ(ended, 1);
  EXPECT_TRUE(QFile::exists(file));
  for (const QString& path : {home.write(u"text"_s, "just text"), home.path(), u"/no/such/program"_s})
    EXPECT_FALSE(launch({path, {}}, [] { FAIL(); }).error().reason.isEmpty()) << qPrintable(path);
  QCoreApplication::processEvents();
}

TEST(TaskTest, AnOwnedChildAnswersAndGoesWithItsOwner) {
  const auto run = [](const QString& script, OwnedTask& owner) {
    QEventLoop loop;
    TaskAnswer given{true, "none yet"};
    auto started = ask({u"/bin/sh"_s, {u"-c"_s, script}}, [&](const TaskAnswer& answer) {
      given = answer;
      owner.reset();
      loop.quit();
    });
    EXPECT_TRUE(started);
    owner = *started;
    started = OwnedTask();
    loop.exec();
    EXPECT_EQ(given.isGood, given.status == 0);
    return std::pair(given.status, given.output);
  };
  OwnedTask owner;
  EXPECT_EQ(run(u"echo one; echo two"_s, owner), std::pair(0, QByteArray("one\ntwo\n")));
  EXPECT_EQ(run(u"echo one; exit 17"_s, owner), std::pair(17, QByteArray("one\n")));
  EXPECT_EQ(run(u"echo one; kill -9 $$"_s, owner), std::pair(-1, QByteArray("one\n")));
  EXPECT_FALSE(ask({u"/no/such/program"_s, {}}, [](const TaskAnswer&) { FAIL(); }));

  const ScratchHome home;
  const QString file = home.path(u"number of the child"_s);
  const auto number = [&] { return QFile::exists(file) ? contentsOf(file).trimmed().toInt() : 0; };
  const QString waits = u"echo $$ > \"$0\"; exec sleep 1000"_s;
  auto unwanted = ask({u"/bin/sh"_s, {u"-c"_s, waits, file}}, [](const TaskAnswer&) { FAIL(); });
  until("the child waits", [&] { return number() > 0; });
  unwanted = OwnedTask();
  until("the child is gone", [&] { return kill(number(), 0) != 0; });
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
