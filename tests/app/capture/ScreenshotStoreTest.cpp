#include "app/capture/AppPaths.h"
#include "app/capture/RetentionService.h"
#include "app/capture/ScreenshotStore.h"
#include "platform/base/MainQueue.h"
#include "platform/base/UserDefaults.h"
#include "tests/support/Files.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScratchHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace sorrel;
using namespace platform;
using testing_support::LogCapture;

namespace {

const QString daysKey = u"autoDeleteDays"_s;

class ScreenshotStoreTest : public testing::Test {
 protected:
  void putAged(const QString& name, double days) const {
    testing_support::setModified(home.write(u"Documents/Sorrel bottle/"_s + name),
                                 MainQueue::main().now().addMSecs(-qRound64(days * 86'400'000)));
  }
  [[nodiscard]] static QStringList listed() {
    QStringList names;
    for (const auto& screenshot : ScreenshotStore::all())
      names << FilePath::text(FilePath::name(screenshot.path));
    return names;
  }
  [[nodiscard]] QStringList trashed() const {
    return QDir(home.path(u".local/share/Trash/files"_s)).entryList(QDir::Files, QDir::Name);
  }

  testing_support::ScratchHome home;
  ManualClock clock{QDateTime(QDate(2026, 3, 14), QTime(12, 0), Qt::UTC)};
};

TEST_F(ScreenshotStoreTest, ListsWhatIsNamedLikeAPicture) {
  EXPECT_TRUE(ScreenshotStore::all().empty());
  int age = 0;
  for (const char* name : {"a.PNG", "b.Jpeg", "c.HEIC", "d.tiff", "e.gif", "f.jpg", "g.webp", "h.pdf",
                           "i.tif", ".hidden.png", "png", "j.png.txt", "k.", "l.pn"})
    putAged(QString::fromLatin1(name), ++age);
  EXPECT_EQ(listed().join(u' '), u"a.PNG b.Jpeg c.HEIC d.tiff e.gif f.jpg"_s);
}

TEST_F(ScreenshotStoreTest, TheSweepTrashesWhatIsOlderThanTheLimit) {
  putAged(u"OLD.PNG"_s, 31);
  putAged(u"at the limit.png"_s, 30);
  putAged(u"just over.png"_s, 30.0001);
  putAged(u"young.png"_s, 29);
  putAged(u"old.txt"_s, 100);
  const LogCapture log;
  EXPECT_EQ(RetentionService::sweep(), 2);
  EXPECT_EQ(listed().join(u'|'), u"young.png|at the limit.png"_s);
  EXPECT_EQ(trashed().join(u'|'), u"OLD.PNG|just over.png"_s);
  EXPECT_EQ(log.logged, QStringList({u"Sorrel retention: trashed 2 screenshot(s) older than 30 day(s)."_s}));
  EXPECT_EQ(RetentionService::sweep(), 0);
  EXPECT_EQ(log.logged.size(), 1);
}

TEST_F(ScreenshotStoreTest, ANameNeedNotBeText) {
  putAged(u"plain.png"_s, 40);
  const QByteArray bottle = FilePath::of(AppPaths::bottleDirectory());
  ASSERT_EQ(rename((bottle + "plain.png").constData(), (bottle + "caf\xe9.png").constData()), 0);
  ASSERT_EQ(ScreenshotStore::all().size(), 1);
  EXPECT_EQ(ScreenshotStore::all().front().path, bottle + "caf\xe9.png");
  const LogCapture log;
  EXPECT_EQ(RetentionService::sweep(), 1);
  EXPECT_EQ(RetentionService::sweep(), 0);
  EXPECT_TRUE(FilePath::exists(home.path(u".local/share/Trash/files/"_s).toUtf8() + "caf\xe9.png"));
}

TEST_F(ScreenshotStoreTest, WhatComesFromTheFutureIsNotOld) {
  putAged(u"tomorrow.png"_s, -1);
  putAged(u"in 300 years.png"_s, -300 * 365);
  EXPECT_EQ(RetentionService::sweep(), 0);
  EXPECT_EQ(listed().join(u'|'), u"in 300 years.png|tomorrow.png"_s);
}

TEST_F(ScreenshotStoreTest, TheLimitIsTheSetting) {
  auto& defaults = UserDefaults::standard();
  putAged(u"a.png"_s, 20'000);
  for (const int off : {0, -1}) {
    defaults.set(daysKey, off);
    EXPECT_EQ(RetentionService::sweep(), 0);
  }
  // What can't be read as a number of days must never delete.
  defaults.set(daysKey, u"never"_s);
  EXPECT_EQ(RetentionService::sweep(), 0);
  defaults.set(daysKey, std::numeric_limits<qint64>::max());
  EXPECT_EQ(RetentionService::sweep(), 0);
  EXPECT_EQ(listed().size(), 1);
  const LogCapture log;
  defaults.set(daysKey, u"1"_s);
  EXPECT_EQ(RetentionService::sweep(), 1);
}

TEST_F(ScreenshotStoreTest, NothingIsTrashedWhereTheSettingsCouldNotBeRead) {
  putAged(u"a.png"_s, 40);
  home.write(u".config/Sorrel/defaults.json"_s, "{\"autoDeleteDays\": 0,}");
  const LogCapture log;
  EXPECT_EQ(RetentionService::sweep(), 0);
  UserDefaults::standard().set(u"other"_s, 1);
  EXPECT_EQ(RetentionService::sweep(), 0) << "to the end of the run";
}

TEST_F(ScreenshotStoreTest, WhatCannotBeTrashedIsCountedAndStays) {
  putAged(u"a.png"_s, 40);
  putAged(u"b.png"_s, 41);
  home.write(u".local/share/Trash"_s, "not a folder");
  const LogCapture log;
  EXPECT_EQ(RetentionService::sweep(), 2);
  EXPECT_EQ(RetentionService::sweep(), 2);
  EXPECT_EQ(listed().size(), 2);
}

}  // namespace
