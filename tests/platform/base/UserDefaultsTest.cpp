#include "platform/base/Log.h"
#include "platform/base/UserDefaults.h"
#include "tests/support/Files.h"
#include "tests/support/ScratchHome.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using platform::LogCapture;
using platform::UserDefaults;
using testing_support::contentsOf;

namespace {

const QString key = u"key"_s;

class UserDefaultsTest : public testing::Test {
 protected:
  testing_support::ScratchHome home;
  const QDir folder{home.path(u"config/Sorrel"_s)};
  const QString file = folder.filePath(u"defaults.json"_s);
};

TEST_F(UserDefaultsTest, ValuesOutliveTheProcessWithTheirTypes) {
  const QString text = u"false 한글 \"\\\n"_s;
  {
    UserDefaults defaults(file);
    defaults.set(u"false"_s, false);
    defaults.set(u"text"_s, text);
    defaults.set(u"number"_s, qint64(9007199254740993));  // more digits than a double holds
    defaults.set(u"zero"_s, 0);
    defaults.set(u"gone"_s, 1);
    defaults.remove(u"gone"_s);
  }
  const UserDefaults defaults(file);
  EXPECT_TRUE(defaults.object(u"false"_s).isBool());
  EXPECT_EQ(defaults.string(u"false"_s), std::nullopt);
  EXPECT_EQ(defaults.string(u"text"_s), text);
  EXPECT_FALSE(defaults.boolean(u"text"_s));
  EXPECT_EQ(defaults.integer(u"text"_s), 0);
  EXPECT_EQ(defaults.integer(u"number"_s), 9007199254740993);
  EXPECT_TRUE(defaults.contains(u"zero"_s));
  EXPECT_TRUE(defaults.object(u"gone"_s).isUndefined());
  EXPECT_EQ(defaults.keys().size(), 4);
}

TEST_F(UserDefaultsTest, WhatMakesNoSenseIsSetAsideWhole) {
  const QByteArray texts[] = {"{\"a\": 1", "[1, 2]", QByteArray(), QByteArray("\0\xff", 2)};
  for (int number = 0; number <= 4; ++number) {
    // The last is a folder in the file's place: no user, not even root, can read that as a file.
    QFile::remove(file);
    const QString inside = number < 4 ? QString() : u"/mine"_s;
    const QByteArray kept = number < 4 ? texts[number] : "kept";
    home.write(u"config/Sorrel/defaults.json"_s + inside, kept);
    LogCapture log;
    UserDefaults defaults(file);
    EXPECT_TRUE(defaults.keys().isEmpty());
    EXPECT_EQ(log.logged.size(), 1);
    EXPECT_EQ(contentsOf(file + u".broken%1"_s.arg(number + 1) + inside), kept);
    defaults.set(key, 1);
    EXPECT_EQ(QJsonDocument::fromJson(contentsOf(file)).object(), QJsonObject({{key, 1}}));
  }
}

TEST_F(UserDefaultsTest, AWriteThatFailsIsLoggedAndLeavesTheOldFile) {
  UserDefaults defaults(file);
  defaults.set(key, 1);
  const QByteArray before = contentsOf(file);
  // A folder that nothing can be made in, whoever runs the test: it is gone.
  ASSERT_TRUE(QDir().rename(folder.path(), home.path(u"elsewhere"_s)));
  home.write(u"config/Sorrel"_s, "not a folder");
  LogCapture log;
  defaults.set(key, 2);
  EXPECT_EQ(log.logged.size(), 1);
  EXPECT_EQ(defaults.integer(key), 2);
  EXPECT_EQ(contentsOf(home.path(u"elsewhere/defaults.json"_s)), before);
}

TEST_F(UserDefaultsTest, ObserversHearTheirKeyWhenItChanges) {
  UserDefaults defaults(file);
  int heard = 0;
  auto token = defaults.observe(key, [&] {
    ++heard;
    EXPECT_EQ(defaults.integer(key), heard);  // the new value is in place
  });
  defaults.set(key, 1);
  defaults.set(key, 1);
  defaults.set(u"other"_s, 1);
  defaults.set(key, 2);
  EXPECT_EQ(heard, 2);
  token.end();
  defaults.remove(key);
  EXPECT_EQ(heard, 2);
}

}  // namespace
