#include "platform/base/MainQueue.h"
#include "platform/base/Trash.h"
#include "tests/support/Files.h"
#include "tests/support/ScratchHome.h"

#include <QDir>
#include <QFileInfo>

#include <filesystem>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
namespace Trash = platform::Trash;
using testing_support::contentsOf;

namespace {

/// The names in a folder, sorted, one after another with a bar between.
QString listing(const QString& folder) {
  return QDir(folder)
      .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name)
      .join(u'|');
}

/// Where the info file says that the file of this name in the trash was.
QByteArray origin(const QString& trash, const QString& name) {
  const auto lines = contentsOf(trash + u"/info/"_s + name + u".trashinfo"_s).split('\n');
  return lines.value(1).startsWith("Path=") ? lines[1].sliced(5) : "nowhere";
}

class TrashTest : public testing::Test {
 protected:
  [[nodiscard]] QString trashed(const QString& name) const { return trash + u"/files/"_s + name; }
  void expectMoved(const QString& path) const { EXPECT_TRUE(Trash::moveItem(path)) << qPrintable(path); }
  void expectRefused(const QByteArray& path) const {
    const auto state = [this] { return listing(trash + u"/info"_s) + u'/' + listing(trash + u"/files"_s); };
    const QString before = state();
    const auto moved = Trash::moveItem(path);
    ASSERT_FALSE(moved) << path.constData();
    EXPECT_NE(moved.error().number, 0) << path.constData();
    EXPECT_EQ(state(), before) << path.constData();
  }

  const testing_support::ScratchHome home;
  const QString trash = home.path(u".local/share/Trash"_s);
  const QByteArray root = QFile::encodeName(home.path());
};

/// A device of its own, mounted where only this process sees it.
class TrashOfDeviceTest : public TrashTest {
 protected:
  void SetUp() override {
    QDir().mkpath(home.path(u"disk"_s));
    if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("tmpfs", (root + "/disk").constData(), "tmpfs", 0, nullptr) != 0)
      GTEST_SKIP() << "only root may mount the file system that this needs";
  }
  ~TrashOfDeviceTest() override { umount2((root + "/disk").constData(), MNT_DETACH); }

  const QString user = QString::number(geteuid());
  const QString own = home.path(u"disk/.Trash-"_s + user);
};

TEST_F(TrashTest, movesFilesFoldersAndLinksWithTheirOrigin) {
  const QString file = home.write(u"Pictures/shot.png"_s, "pixels");
  home.write(u"Pictures/folder/inner.txt"_s, "inner");
  const QString target = home.write(u"target.txt"_s, "target");
  ASSERT_TRUE(QFile::link(target, home.path(u"Pictures/link"_s)));
  ASSERT_TRUE(QFile::link(home.path(u"Pictures"_s), home.path(u"way"_s)));
  expectMoved(home.path(u"way/shot.png"_s));
  expectMoved(home.path(u"Pictures/folder/"_s));
  expectMoved(home.path(u"Pictures/link"_s));
  EXPECT_EQ(listing(home.path(u"Pictures"_s)), QString());
  EXPECT_EQ(contentsOf(trashed(u"shot.png"_s)), "pixels");
  EXPECT_EQ(contentsOf(trashed(u"folder/inner.txt"_s)), "inner");
  EXPECT_TRUE(QFileInfo(trashed(u"link"_s)).isSymLink());
  EXPECT_EQ(contentsOf(target), "target");
  EXPECT_EQ(origin(trash, u"shot.png"_s), file.toUtf8()) << "where it really was";
  EXPECT_EQ(QFileInfo(trash).permissions() & (QFile::ReadGroup | QFile::ReadOther), 0);
}

TEST_F(TrashTest, storesTheLocalTimeOfTheDeletion) {
  const platform::ManualClock clock(QDateTime(QDate(2026, 3, 14), QTime(18, 26, 53), Qt::UTC));
  const QByteArray zone = qgetenv("TZ");
  qputenv("TZ", "Asia/Seoul");
  tzset();
  expectMoved(home.write(u"shot.png"_s));
  zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
  tzset();
  EXPECT_EQ(contentsOf(trash + u"/info/shot.png.trashinfo"_s),
            "[Trash Info]\nPath=" + root + "/shot.png\nDeletionDate=2026-03-15T03:26:53\n");
}

TEST_F(TrashTest, anyNameSurvivesTheWayToTheTrashAndBack) {
  for (const QByteArray& name : {QByteArray("100%41 sure.png"), QByteArray("two\nlines"),
                                 QByteArray("한글 그림.png"), QByteArray("not \xff\xfe text"),
                                 QByteArray("[x]=#?;&+\"'\\.png"), QByteArray(".hidden"), QByteArray("--")}) {
    const std::filesystem::path path((root + '/' + name).toStdString()), bin(trash.toStdString());
    close(creat(path.c_str(), 0600));
    ASSERT_TRUE(Trash::moveItem(root + '/' + name)) << name.constData();
    EXPECT_TRUE(std::filesystem::exists(bin / "files" / name.toStdString())) << name.constData();
    // The info file's name needn't be text either, so Qt can't open it by name.
    QFile info;
    ASSERT_TRUE(info.open(std::fopen((bin / "info" / (name.toStdString() + ".trashinfo")).c_str(), "r"),
                          QIODevice::ReadOnly, QFile::AutoCloseHandle));
    const auto lines = info.readAll().split('\n');
    ASSERT_EQ(lines.size(), 4) << name.constData();
    EXPECT_EQ(QByteArray::fromPercentEncoding(lines[1].sliced(5)), root + '/' + name);
    EXPECT_TRUE(std::ranges::all_of(lines[1], [](char each) { return each > ' ' && each < '\x7f'; }));
  }
  std::filesystem::remove_all(trash.toStdString());  // QTemporaryDir can't remove what isn't text
}

TEST_F(TrashTest, namesInTheTrashAreUniqueAndFit) {
  const QString longest = QString(83, u'가') + u".png"_s;  // 253 bytes
  for (const QString& name : {u"shot.png"_s, longest, QString(255, u'x')})
    for (const char* text : {"one", "two", "three"})
      expectMoved(home.write(name, text));
  EXPECT_EQ(contentsOf(trashed(u"shot.png"_s)), "one");
  EXPECT_EQ(contentsOf(trashed(u"shot 2.png"_s)), "two");
  EXPECT_EQ(contentsOf(trashed(u"shot 3.png"_s)), "three");
  const QStringList names = QDir(trash + u"/files"_s).entryList(QDir::Files);
  EXPECT_EQ(names.size(), 9);
  for (const QString& name : names) {
    EXPECT_FALSE(name.contains(QChar::ReplacementCharacter)) << "cut within a character";
    EXPECT_NE(origin(trash, name), "nowhere");
  }
  // What others left behind: a file without its info, and an info without its file.
  home.write(u".local/share/Trash/files/lone"_s, "theirs");
  home.write(u".local/share/Trash/info/lone 2.trashinfo"_s, "theirs");
  expectMoved(home.write(u"lone"_s, "ours"));
  EXPECT_EQ(contentsOf(trashed(u"lone"_s)), "theirs");
  EXPECT_EQ(contentsOf(trashed(u"lone 3"_s)), "ours");
  EXPECT_FALSE(QFile::exists(trash + u"/info/lone.trashinfo"_s)) << "rolled back";
  EXPECT_EQ(contentsOf(trash + u"/info/lone 2.trashinfo"_s), "theirs");
}

TEST_F(TrashTest, refusesWhatIsNoItemOrHoldsTheTrash) {
  expectMoved(home.write(u"shot.png"_s));
  for (const char* path : {"", "/", ".", "..", "/no/such/folder/file"})
    expectRefused(path);
  for (const char* path : {"/missing.png", "/.local/..", "/.local/share/Trash/files/shot.png",
                           "/.local/share/Trash/files", "/.local/share/Trash", "/.local/share", ""})
    expectRefused(root + path);
  EXPECT_TRUE(QFile::exists(trashed(u"shot.png"_s)));
}

TEST_F(TrashTest, whatMustNotBeWrittenLeavesEverythingInItsPlace) {
  constexpr uid_t nobody = 65534;  // permissions count only for somebody who isn't root
  for (const char* folder : {"", "/.local", "/.local/share"}) {
    mkdir((root + folder).constData(), 0700);
    EXPECT_TRUE(geteuid() != 0 || chown((root + folder).constData(), nobody, nobody) == 0);
  }
  EXPECT_TRUE(geteuid() != 0 || seteuid(nobody) == 0);
  const QString file = home.write(u"locked/shot.png"_s, "pixels");
  expectMoved(home.write(u"before.png"_s));
  for (const char* folder : {"/locked", "/.local/share/Trash/info", "/.local/share/Trash/files"}) {
    EXPECT_EQ(chmod((root + folder).constData(), 0500), 0);
    expectRefused(QFile::encodeName(file));
    EXPECT_EQ(contentsOf(file), "pixels") << folder;
    EXPECT_EQ(chmod((root + folder).constData(), 0700), 0);
  }
  expectMoved(file);  // nothing else was in the way
  EXPECT_EQ(seteuid(getuid()), 0);
}

TEST_F(TrashOfDeviceTest, isAtItsTop) {
  const QString shared = home.path(u"disk/.Trash"_s);
  const QByteArray sharedPath = QFile::encodeName(shared);
  const auto trashOne = [this] { expectMoved(home.write(u"disk/some folder/shot.png"_s, "pixels")); };
  const auto expectIn = [](const QString& place) {
    EXPECT_EQ(contentsOf(place + u"/files/shot.png"_s), "pixels");
    EXPECT_EQ(origin(place, u"shot.png"_s), "some%20folder/shot.png");
  };
  trashOne();
  expectIn(own);
  struct stat status = {};
  ASSERT_EQ(stat(QFile::encodeName(own).constData(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0700u);
  EXPECT_FALSE(QFile::exists(trash)) << "the home folder's trash is not concerned";
  expectRefused(QFile::encodeName(own) + "/files/shot.png");
  expectRefused(root + "/disk");

  // A trash for all users that is not safe is as good as none: not sticky, or a link.
  ASSERT_EQ(mkdir(sharedPath.constData(), 0777), 0);
  trashOne();
  EXPECT_EQ(listing(shared), QString());
  ASSERT_EQ(rename(sharedPath.constData(), (root + "/disk/sticky").constData()), 0);
  ASSERT_EQ(chmod((root + "/disk/sticky").constData(), 01777), 0);
  ASSERT_EQ(symlink("sticky", sharedPath.constData()), 0);
  trashOne();
  EXPECT_EQ(listing(shared), QString());
  EXPECT_EQ(listing(own + u"/files"_s), u"shot 2.png|shot 3.png|shot.png"_s);

  ASSERT_EQ(unlink(sharedPath.constData()), 0);
  ASSERT_EQ(rename((root + "/disk/sticky").constData(), sharedPath.constData()), 0);
  trashOne();
  expectIn(shared + u'/' + user);
}

TEST_F(TrashOfDeviceTest, aTrapAtItsTopIsNotSteppedInto) {
  const QByteArray path = QFile::encodeName(own);
  const QString file = home.write(u"disk/shot.png"_s, "pixels");
  QDir().mkpath(home.path(u"disk/trap"_s));
  ASSERT_EQ(symlink("trap", path.constData()), 0);
  expectRefused(QFile::encodeName(file));
  ASSERT_EQ(unlink(path.constData()), 0);
  ASSERT_EQ(mkdir(path.constData(), 0777), 0);
  ASSERT_EQ(chown(path.constData(), 65534, 65534), 0);
  expectRefused(QFile::encodeName(file));
  EXPECT_EQ(contentsOf(file), "pixels");
  EXPECT_EQ(listing(home.path(u"disk/trap"_s)), QString());
}

}  // namespace
