#include "app/capture/AppPaths.h"
#include "app/capture/RetentionService.h"
#include "app/capture/ScreenshotStore.h"
#include "platform/base/Log.h"
#include "platform/base/MainQueue.h"
#include "platform/base/UserDefaults.h"
#include "tests/support/ScratchHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace sorrel;
using namespace platform;

namespace {

const QString daysKey = QStringLiteral("autoDeleteDays");

class ScreenshotStoreTest : public testing::Test {
 protected:
  ScreenshotStoreTest() { UserDefaults::resetStandard(); }
  ~ScreenshotStoreTest() override { UserDefaults::resetStandard(); }

  void put(const QString& name, const QDateTime& modified) const {
    QFile file(home.write(QStringLiteral("Documents/Sorrel bottle/") + name));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) &&
                file.setFileTime(modified, QFileDevice::FileModificationTime));
  }
  void putAged(const QString& name, double days) const {
    put(name, MainQueue::main().now().addMSecs(-qRound64(days * 86'400'000)));
  }
  [[nodiscard]] static QStringList listed() {
    QStringList names;
    for (const auto& screenshot : ScreenshotStore::all())
      names << QFileInfo(screenshot.path).fileName();
    return names;
  }
  [[nodiscard]] QStringList trashed() const {
    return QDir(home.path(QStringLiteral(".local/share/Trash/files"))).entryList(QDir::Files, QDir::Name);
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
  EXPECT_EQ(listed().join(u' '), QStringLiteral("a.PNG b.Jpeg c.HEIC d.tiff e.gif f.jpg"));
  putAged(QStringLiteral("e.gif"), 0);
  EXPECT_EQ(listed().first(), QStringLiteral("e.gif")) << "a touched file comes first";
  const Screenshot first = ScreenshotStore::all().front();
  EXPECT_EQ(first.url().toLocalFile(), first.id());
  EXPECT_EQ(first.path, home.path(QStringLiteral("Documents/Sorrel bottle/e.gif")));
}

TEST_F(ScreenshotStoreTest, TheSweepTrashesWhatIsOlderThanTheLimit) {
  putAged(QStringLiteral("OLD.PNG"), 31);
  putAged(QStringLiteral("at the limit.png"), 30);
  putAged(QStringLiteral("just over.png"), 30.0001);
  putAged(QStringLiteral("young.png"), 29);
  putAged(QStringLiteral("old.txt"), 100);
  const LogCapture log;
  EXPECT_EQ(RetentionService::sweep(), 2);
  EXPECT_EQ(listed().join(u'|'), QStringLiteral("young.png|at the limit.png"));
  EXPECT_EQ(trashed().join(u'|'), QStringLiteral("OLD.PNG|just over.png"));
  EXPECT_EQ(log.logged,
            QStringList({QStringLiteral("Sorrel retention: trashed 2 screenshot(s) older than 30 day(s).")}));
  EXPECT_EQ(RetentionService::sweep(), 0);
  EXPECT_EQ(log.logged.size(), 1);
}

TEST_F(ScreenshotStoreTest, TheLimitIsTheSetting) {
  auto& defaults = UserDefaults::standard();
  putAged(QStringLiteral("a.png"), 20'000);
  for (const int off : {0, -1}) {
    defaults.set(daysKey, off);
    EXPECT_EQ(RetentionService::sweep(), 0);
  }
  // What can't be read as a number of days must never delete.
  defaults.set(daysKey, QStringLiteral("1"));
  EXPECT_EQ(RetentionService::sweep(), 0);
  defaults.set(daysKey, std::numeric_limits<qint64>::max());
  EXPECT_EQ(RetentionService::sweep(), 0);
  EXPECT_EQ(listed().size(), 1);
  const LogCapture log;
  defaults.set(daysKey, 1);
  EXPECT_EQ(RetentionService::sweep(), 1);
}

TEST_F(ScreenshotStoreTest, WhatCannotBeTrashedIsCountedAndStays) {
  putAged(QStringLiteral("a.png"), 40);
  putAged(QStringLiteral("b.png"), 41);
  home.write(QStringLiteral(".local/share/Trash"), "not a folder");
  const LogCapture log;
  EXPECT_EQ(RetentionService::sweep(), 2);
  EXPECT_EQ(RetentionService::sweep(), 2);
  EXPECT_EQ(listed().size(), 2);
}

}  // namespace
