#include "platform/base/Log.h"
#include "platform/base/UserDefaults.h"
#include "tests/support/ScratchHome.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using platform::LogCapture;
using platform::UserDefaults;

namespace {

const QString key = QStringLiteral("key");

class UserDefaultsTest : public testing::Test {
 protected:
  testing_support::ScratchHome home;
  const QString file = home.path(QStringLiteral("config/Sorrel/defaults.json"));

  [[nodiscard]] QByteArray contents() const {
    QFile in(file);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
  }
};

TEST_F(UserDefaultsTest, ValuesOutliveTheProcessWithTheirTypes) {
  {
    UserDefaults defaults(file);
    defaults.set(QStringLiteral("false"), false);
    defaults.set(QStringLiteral("text"), QStringLiteral("false 한글 \"\\\n"));
    defaults.set(QStringLiteral("number"), qint64(9007199254740993));  // more digits than a double holds
    defaults.set(QStringLiteral("zero"), 0);
    defaults.set(QStringLiteral("gone"), 1);
    defaults.remove(QStringLiteral("gone"));
  }
  const UserDefaults defaults(file);
  EXPECT_TRUE(defaults.object(QStringLiteral("false")).isBool());
  EXPECT_EQ(defaults.string(QStringLiteral("false")), std::nullopt);
  EXPECT_EQ(defaults.string(QStringLiteral("text")), QStringLiteral("false 한글 \"\\\n"));
  EXPECT_FALSE(defaults.boolean(QStringLiteral("text")));
  EXPECT_EQ(defaults.integer(QStringLiteral("number")), 9007199254740993);
  EXPECT_TRUE(defaults.contains(QStringLiteral("zero")));
  EXPECT_EQ(defaults.integer(QStringLiteral("text")), 0);
  EXPECT_TRUE(defaults.object(QStringLiteral("gone")).isUndefined());
  EXPECT_EQ(defaults.keys().size(), 4);
}

TEST_F(UserDefaultsTest, AFileThatCannotBeParsedIsSetAsideWhole) {
  for (const QByteArray& broken :
       {QByteArray("{\"a\": 1"), QByteArray("[1, 2]"), QByteArray(), QByteArray("\0\xff", 2)}) {
    home.write(QStringLiteral("config/Sorrel/defaults.json"), broken);
    LogCapture log;
    UserDefaults defaults(file);
    EXPECT_TRUE(defaults.keys().isEmpty());
    ASSERT_EQ(log.logged.size(), 1);
    defaults.set(key, 1);
    EXPECT_EQ(QJsonDocument::fromJson(contents()).object(), QJsonObject({{key, 1}}));
  }
  const auto aside =
      QDir(home.path(QStringLiteral("config/Sorrel"))).entryList({QStringLiteral("*.broken*")});
  EXPECT_EQ(aside.size(), 4);
  QFile first(home.path(QStringLiteral("config/Sorrel/") + aside.first()));
  ASSERT_TRUE(first.open(QIODevice::ReadOnly));
  EXPECT_EQ(first.readAll(), "{\"a\": 1");
}

TEST_F(UserDefaultsTest, WhatCannotBeOpenedIsSetAsideToo) {
  // A folder in the file's place: no user, not even root, can read that as a file.
  home.write(QStringLiteral("config/Sorrel/defaults.json/mine"), "kept");
  const QByteArray name = QFile::encodeName(file);
  LogCapture log;
  {
    UserDefaults defaults(file);
    defaults.set(key, 1);
    EXPECT_EQ(defaults.integer(key), 1);
  }
  EXPECT_EQ(log.logged.size(), 1);
  const QDir folder(home.path(QStringLiteral("config/Sorrel")));
  QFile kept(
      folder.filePath(folder.entryList({QStringLiteral("*.broken*")}).value(0) + QStringLiteral("/mine")));
  ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
  EXPECT_EQ(kept.readAll(), "kept");
}

TEST_F(UserDefaultsTest, AWriteThatFailsIsLoggedAndLeavesTheOldFile) {
  UserDefaults defaults(file);
  defaults.set(key, 1);
  const QByteArray before = contents();
  // A folder that nothing can be made in, whoever runs the test: it is gone.
  const QString folder = home.path(QStringLiteral("config/Sorrel"));
  const QString elsewhere = home.path(QStringLiteral("elsewhere"));
  ASSERT_TRUE(QDir().rename(folder, elsewhere));
  home.write(QStringLiteral("config/Sorrel"), "not a folder");
  LogCapture log;
  defaults.set(key, 2);
  EXPECT_EQ(log.logged.size(), 1);
  EXPECT_EQ(defaults.integer(key), 2);
  QFile old(elsewhere + QStringLiteral("/defaults.json"));
  ASSERT_TRUE(old.open(QIODevice::ReadOnly));
  EXPECT_EQ(old.readAll(), before);
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
  defaults.set(QStringLiteral("other"), 1);
  defaults.set(key, 2);
  EXPECT_EQ(heard, 2);
  token.reset();
  defaults.remove(key);
  EXPECT_EQ(heard, 2);
}

}  // namespace
