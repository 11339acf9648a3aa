#include "platform/base/MainQueue.h"
#include "platform/base/UserDefaults.h"
#include "tests/support/Files.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using platform::UserDefaults;
using testing_support::contentsOf;
using testing_support::LogCapture;
using testing_support::until;
using testing_support::writeFile;

namespace {

const QString key = u"key"_s, other = u"other"_s;

class UserDefaultsTest : public testing::Test {
 protected:
  [[nodiscard]] QJsonObject onDisk() const { return QJsonDocument::fromJson(contentsOf(file)).object(); }
  /// As editors do that never leave half a file.
  void replace(const QByteArray& contents) const {
    writeFile(file + u".new"_s, contents);
    ASSERT_EQ(rename(qPrintable(file + u".new"_s), qPrintable(file)), 0);
  }

  testing_support::ScratchHome home;
  const QDir folder{home.path(u"config/Sorrel"_s)};
  const QString file = folder.filePath(u"defaults.json"_s);
  platform::ManualClock clock;
  LogCapture log;
};

TEST_F(UserDefaultsTest, ValuesOutliveTheProcessWithTheirTypes) {
  const QString text = u"false 한글 \"\\\n"_s;
  {
    UserDefaults defaults(file);
    defaults.set(u"false"_s, false);
    defaults.set(u"text"_s, text);
    defaults.set(u"number"_s, qint64(9007199254740993));  // more digits than a double holds
    defaults.set(u"gone"_s, 1);
    defaults.remove(u"gone"_s);
  }
  const UserDefaults defaults(file);
  EXPECT_TRUE(defaults.object(u"false"_s).isBool());
  EXPECT_EQ(defaults.string(u"false"_s), std::nullopt);
  EXPECT_EQ(defaults.string(u"text"_s), text);
  EXPECT_EQ(defaults.integer(u"number"_s), 9007199254740993);
  EXPECT_EQ(defaults.keys().size(), 3);
}

TEST_F(UserDefaultsTest, WhatAUserTypesIsReadAsWellAsItCanBe) {
  constexpr qint64 most = std::numeric_limits<qint64>::max();
  const struct {
    const char* json;
    qint64 integer;
    bool boolean;
  } cases[] = {
      {"7", 7, true},
      {"\"7\"", 7, true},
      {"7.9", 7, true},
      {"-0.5", 0, true},
      {"true", 1, true},
      {"false", 0, false},
      {"\" 7 days\"", 7, true},
      {"\"-7\"", -7, true},
      {"\"true\"", 0, true},
      {"\"Yes\"", 0, true},
      {"\"no\"", 0, false},
      {"\"\"", 0, false},
      {"\"-007\"", -7, true},
      {"\"000\"", 0, false},
      {"null", 0, false},
      {"[7]", 0, false},
      {"1e300", most, true},
      {"-1e300", -most - 1, true},
      {"\"99999999999999999999\"", most, true},
  };
  for (const auto& [json, integer, boolean] : cases) {
    writeFile(file, QByteArray("{\"key\": ") + json + "}");
    const UserDefaults defaults(file);
    EXPECT_EQ(defaults.integer(key), integer) << json;
    EXPECT_EQ(defaults.boolean(key), boolean) << json;
  }
  writeFile(file, "{\"key\": 7, \"none\": true}");
  const UserDefaults defaults(file);
  EXPECT_EQ(defaults.string(key), u"7"_s);
  EXPECT_EQ(defaults.value(platform::SettingsKey<qint64>{"key", 30}), 7);
  EXPECT_EQ(defaults.value(platform::SettingsKey<qint64>{"absent", 30}), 30);
}

TEST_F(UserDefaultsTest, WhatMakesNoSenseIsSetAsideWhole) {
  const QByteArray texts[] = {"{\"a\": 1", "[1, 2]", QByteArray(), QByteArray("\0\xff", 2)};
  for (int number = 0; number <= 4; ++number) {
    // The last is a folder in the file's place: no user, not even root, can read that as a file.
    QFile::remove(file);
    const QString inside = number < 4 ? QString() : u"/mine"_s;
    const QByteArray kept = number < 4 ? texts[number] : "kept";
    writeFile(file + inside, kept);
    log.logged.clear();
    UserDefaults defaults(file);
    EXPECT_TRUE(defaults.keys().isEmpty() && defaults.isInDoubt());
    ASSERT_EQ(log.logged.size(), 1);
    EXPECT_FALSE(log.logged.front().contains(u"no error"_s));
    EXPECT_EQ(contentsOf(file + u".broken%1"_s.arg(number + 1) + inside), kept);
    defaults.set(key, 1);
    EXPECT_EQ(onDisk(), QJsonObject({{key, 1}}));
    EXPECT_TRUE(defaults.isInDoubt()) << "to the end of the run";
    EXPECT_FALSE(UserDefaults(file).isInDoubt());
  }
}

TEST_F(UserDefaultsTest, AWriteChangesItsOwnKeyAlone) {
  writeFile(file, "{\"key\": 1, \"other\": 1, \"third\": 1}");
  UserDefaults defaults(file);
  replace("{\"other\": 2, \"theirs\": [2]}");
  QStringList heard;
  const auto listening = defaults.observe([&](const QString& changed) { heard << changed; });
  defaults.set(key, 3);
  EXPECT_EQ(onDisk(), QJsonObject({{key, 3}, {other, 2}, {u"theirs"_s, QJsonArray{2}}}));
  EXPECT_EQ(defaults.keys(), onDisk().keys());
  EXPECT_EQ(heard, QStringList({other, u"third"_s, u"theirs"_s, key}));
}

TEST_F(UserDefaultsTest, TakesWhatOthersWriteWhileItWatches) {
  UserDefaults defaults(file);
  defaults.watch();
  qint64 heard = 0;
  const auto listening = defaults.observe(key, [&] { heard = defaults.integer(key); });
  const auto expectHeard = [&](qint64 value) { until("it is heard", [&] { return heard == value; }); };
  replace("{\"key\": 1}");
  expectHeard(1);
  writeFile(file, "{\"key\": 2}");
  expectHeard(2);
  defaults.set(other, 1);  // which puts another file there
  writeFile(file, "{\"key\": 3}");
  expectHeard(3);
  // The file is kept elsewhere, and linked: edited there, and then linked to another.
  const QString real = home.path(u"real.json"_s), next = home.path(u"next.json"_s);
  writeFile(real, "{\"key\": 4}");
  writeFile(next, "{\"key\": 6}");
  QFile::remove(file);
  ASSERT_TRUE(QFile::link(real, file));
  expectHeard(4);
  writeFile(real, "{\"key\": 5}");
  expectHeard(5);
  QFile::remove(file);
  ASSERT_TRUE(QFile::link(next, file));
  expectHeard(6);
  EXPECT_EQ(log.logged, QStringList());
}

TEST_F(UserDefaultsTest, HalfAFileIsWaitedFor) {
  writeFile(file, "{\"key\": 1, \"other\": 1}");
  UserDefaults defaults(file);
  defaults.watch();
  for (const char* half : {"", "{\"key\": 2, \"oth"}) {
    writeFile(file, half);
    until("it is heard", [&] { return defaults.isInDoubt(); });
    EXPECT_EQ(defaults.integer(other), 1);
    defaults.set(other, 3);
    EXPECT_EQ(contentsOf(file), half) << "a write waits too";
    writeFile(file, "{\"key\": 2, \"other\": 1}");
    until("the rest is heard", [&] { return !defaults.isInDoubt(); });
    EXPECT_EQ(defaults.integer(key), 2);
    EXPECT_EQ(onDisk(), QJsonObject({{key, 2}, {other, 3}}));
    defaults.set(other, 1);
  }
  QFile::remove(file);
  until("it is heard", [&] { return defaults.isInDoubt(); });
  EXPECT_EQ(defaults.integer(key), 2) << "another file may be about to come";
  clock.advance(2s);
  EXPECT_EQ(defaults.keys(), QStringList());
  EXPECT_FALSE(defaults.isInDoubt());
  EXPECT_EQ(folder.entryList(QDir::Files), QStringList()) << "nothing was set aside";
}

TEST_F(UserDefaultsTest, WhatStaysBrokenIsLeftUntilAWriteNeedsItsPlace) {
  writeFile(file, "{\"key\": 1}");
  UserDefaults defaults(file);
  defaults.watch();
  bool isDoubtTold = false;
  const auto listening =
      defaults.observe([&](const QString& changed) { isDoubtTold = isDoubtTold || changed.isEmpty(); });
  writeFile(file, "{\"key\": 0,}");
  until("it is heard", [&] { return defaults.isInDoubt(); });
  clock.advance(2s);
  EXPECT_EQ(log.logged.size(), 1);
  EXPECT_EQ(contentsOf(file), "{\"key\": 0,}");
  EXPECT_EQ(defaults.integer(key), 1);
  EXPECT_TRUE(defaults.isInDoubt());
  EXPECT_TRUE(std::exchange(isDoubtTold, false));
  writeFile(file, "{\"key\": 1}");
  until("its repair is told", [&] { return isDoubtTold; });
  EXPECT_FALSE(defaults.isInDoubt());

  writeFile(file, "{\"key\": 0,}");
  until("it is heard", [&] { return defaults.isInDoubt(); });
  clock.advance(2s);
  defaults.set(other, 2);
  EXPECT_EQ(contentsOf(file + u".broken1"_s), "{\"key\": 0,}");
  EXPECT_EQ(onDisk(), QJsonObject({{key, 1}, {other, 2}})) << "nothing that was known is lost";
  EXPECT_TRUE(defaults.isInDoubt());
}

TEST_F(UserDefaultsTest, AWriteThatFailsIsLoggedAndLeavesTheOldFile) {
  UserDefaults defaults(file);
  defaults.set(key, 1);
  const QByteArray before = contentsOf(file);
  // A folder that nothing can be made in, whoever runs the test: it is gone.
  ASSERT_TRUE(QDir().rename(folder.path(), home.path(u"elsewhere"_s)));
  home.write(u"config/Sorrel"_s, "not a folder");
  defaults.set(key, 2);
  EXPECT_EQ(log.logged.size(), 1);
  EXPECT_EQ(defaults.integer(key), 2);
  EXPECT_EQ(contentsOf(home.path(u"elsewhere/defaults.json"_s)), before);
}

}  // namespace
