#include "platform/updater/FeedUpdater.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScratchHome.h"

#include <QDir>
#include <QSysInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace platform;

namespace {

/// The updater of version 1.9, with the fetching program played by the test.
class FeedUpdaterTest : public testing::Test {
 protected:
  FeedUpdaterTest() {
    Environment::provide(
        std::make_shared<TaskAsker>([this](const Task& task, auto onAnswer) -> Result<OwnedTask> {
          if (isMissing)
            return Error{u"no such file"_s};
          EXPECT_TRUE(task.executable.endsWith(u"/libexec/sorrel/updatefetcher"_s));
          fetches.push_back({task.arguments, onAnswer});
          return OwnedTask(std::make_shared<int>());
        }));
    start();
  }

  void start() {
    updater.emplace(UpdateSource{u"https://example.org/feed"_s, u"key"_s}, *Version::parse(u"1.9"_s),
                    [this](const UpdateReport& report) { reports.push_back(report); });
    activity = updater->observe([this] { activities.push_back(updater->activity()); });
  }
  void answer(int status, const QByteArray& output = {}) {
    fetches.back().second({status == 0, output, status});
  }
  static QByteArray feed(const QByteArray& version, int serial = 1) {
    const QByteArray processor = QSysInfo::buildCpuArchitecture().toLatin1();
    return R"({"format":"sorrel-feed-1","serial":)" + QByteArray::number(serial) +
           R"(,"releases":[{"version":")" + version +
           R"(","page":"https://example.org/","notes":{"en":"New."},"packages":{")" + processor +
           R"(":{"address":"https://example.org/s.deb","size":9,"signature":")" +
           QByteArray(64, 's').toBase64() + R"("}}}]})";
  }
  /// What has been told since the last question.
  QString told() {
    QStringList lines;
    for (const UpdateReport& report : std::exchange(reports, {})) {
      QString line = report.wasAsked ? u"asked: "_s : u"unasked: "_s;
      if (const auto* news = std::get_if<UpdateReport::Newer>(&report.outcome)) {
        line += news->release.version.text() + (news->package.isEmpty() ? u""_s : u" with package"_s);
        if (news->packageProblem)
          line += u" without package: %1"_s.arg(int(*news->packageProblem));
      } else if (const auto* problem = std::get_if<UpdateProblem>(&report.outcome))
        line += QString::number(int(*problem));
      else
        line += u"up to date"_s;
      lines << line;
    }
    return lines.join(u'|');
  }

  testing_support::ScratchHome home;
  testing_support::LogCapture log;
  ManualClock clock{QDateTime(QDate(2026, 3, 14), QTime(12, 0), Qt::UTC)};
  bool isMissing = false;
  std::vector<std::pair<QStringList, std::function<void(const TaskAnswer&)>>> fetches;
  std::vector<UpdateReport> reports;
  std::vector<Updater::Activity> activities;
  std::optional<FeedUpdater> updater;
  Subscription activity;
};

TEST_F(FeedUpdaterTest, ChecksByItselfOnceADayAndTellsOnlyNews) {
  UserDefaults::standard().set(UpdaterSettings::automaticallyUpdate, false);
  updater->setAutomaticallyChecksForUpdates(true);
  EXPECT_TRUE(fetches.empty()) << "the session has other things to do first";
  clock.advance(1h);
  ASSERT_EQ(fetches.size(), 1u);
  EXPECT_EQ(fetches[0].first, QStringList({u"feed"_s, u"https://example.org/feed"_s, u"key"_s}));
  answer(int(UpdateProblem::Unreachable));
  clock.advance(22h);
  EXPECT_EQ(fetches.size(), 1u) << "a failure is a check too";
  clock.advance(2h);
  EXPECT_EQ(fetches.size(), 2u);
  answer(0, feed("1.9"));
  EXPECT_EQ(told(), QString());

  start();  // the program again
  updater->setAutomaticallyChecksForUpdates(true);
  clock.advance(20h);
  EXPECT_EQ(fetches.size(), 2u) << "the day is remembered";
  clock.advance(5h);
  EXPECT_EQ(fetches.size(), 3u);
  answer(0, feed("1.10"));
  EXPECT_EQ(told(), u"unasked: 1.10"_s);
  clock.advance(25h);
  answer(0, feed("1.10"));
  EXPECT_EQ(told(), QString()) << "that is no news any more";
  clock.advance(25h);
  answer(0, feed("1.11"));
  EXPECT_EQ(told(), u"unasked: 1.11"_s);

  const auto before = fetches.size();
  clock.setNow(QDateTime(QDate(2020, 1, 1), QTime(0, 0), Qt::UTC));
  clock.advance(1h);
  EXPECT_EQ(fetches.size(), before + 1) << "a clock that was wrong doesn't hold the checks up for years";
  answer(0, feed("1.11"));
  updater->setAutomaticallyChecksForUpdates(false);
  clock.advance(48h);
  EXPECT_EQ(fetches.size(), before + 1);
}

TEST_F(FeedUpdaterTest, AnswersWhoAsks) {
  const auto ask = [&](int status, const QByteArray& output = {}) {
    updater->checkForUpdates();
    answer(status, output);
    return told();
  };
  UserDefaults::standard().set(UpdaterSettings::automaticallyUpdate, false);
  EXPECT_EQ(ask(0, feed("1.9", 5)), u"asked: up to date"_s);
  EXPECT_EQ(ask(0, feed("1.10", 5)), u"asked: 1.10"_s);
  EXPECT_EQ(ask(0, feed("1.10", 6)), u"asked: 1.10"_s) << "as often as he asks";
  EXPECT_EQ(ask(0, feed("1.10", 5)), u"asked: %1"_s.arg(int(UpdateProblem::Outdated)));
  EXPECT_EQ(ask(0, "{}"), u"asked: %1"_s.arg(int(UpdateProblem::Malformed)));
  EXPECT_EQ(ask(int(UpdateProblem::Forged), feed("1.12", 9)), u"asked: %1"_s.arg(int(UpdateProblem::Forged)));
  for (const int status : {-1, 1, 64, int(UpdateProblem::Outdated)})
    EXPECT_EQ(ask(status), u"asked: %1"_s.arg(int(UpdateProblem::Broken))) << status;
  isMissing = true;
  updater->checkForUpdates();
  EXPECT_EQ(told(), u"asked: %1"_s.arg(int(UpdateProblem::Broken)));
}

TEST_F(FeedUpdaterTest, WhoAsksDuringACheckHearsOfThatOne) {
  updater->setAutomaticallyChecksForUpdates(true);
  clock.advance(1h);
  updater->checkForUpdates();
  updater->checkForUpdates();
  EXPECT_EQ(fetches.size(), 1u);
  answer(0, feed("1.9"));
  EXPECT_EQ(told(), u"asked: up to date"_s);
  using enum Updater::Activity;
  EXPECT_EQ(activities, (std::vector{Checking, None}));
}

TEST_F(FeedUpdaterTest, FetchesThePackageBeforeItTellsTheNews) {
  home.write(u".cache/Sorrel/updates/sorrel_1.8.deb"_s);
  home.write(u".cache/Sorrel/updates/sorrel_1.10.deb.part"_s);
  const auto files = [&] { return QDir(home.path(u".cache/Sorrel/updates"_s)).entryList(QDir::Files); };
  updater->checkForUpdates();
  answer(0, feed("1.10"));
  EXPECT_EQ(told(), QString());
  EXPECT_EQ(files(), QStringList{u"sorrel_1.10.deb.part"_s}) << "what can be resumed stays, the rest goes";
  const QString path = home.path(u".cache/Sorrel/updates/sorrel_1.10.deb"_s);
  EXPECT_EQ(fetches.back().first,
            QStringList({u"package"_s, u"https://example.org/s.deb"_s, u"key"_s,
                         QString::fromLatin1(QByteArray(64, 's').toBase64()), u"9"_s, path}));
  answer(0);
  EXPECT_EQ(told(), u"asked: 1.10 with package"_s);
  using enum Updater::Activity;
  EXPECT_EQ(activities, (std::vector{Checking, Downloading, None}));

  updater->checkForUpdates();
  answer(0, feed("1.10"));
  answer(int(UpdateProblem::Forged));
  EXPECT_EQ(told(), u"asked: 1.10 without package: %1"_s.arg(int(UpdateProblem::Forged)));
  updater->checkForUpdates();
  answer(0, feed("1.9"));
  EXPECT_EQ(files(), QStringList()) << "once it is installed, its package goes";
}

}  // namespace
