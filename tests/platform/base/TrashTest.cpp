#include "platform/base/MainQueue.h"
#include "platform/base/Trash.h"
#include "tests/support/ScratchHome.h"

#include <QDir>
#include <QFileInfo>

#include <filesystem>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace Trash = platform::Trash;

namespace {

QByteArray contents(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

/// The names in a folder, sorted, one after another with a bar between.
QString listing(const QString& folder) {
  return QDir(folder)
      .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name)
      .join(u'|');
}

/// The value of the info file's line "key=...".
QByteArray infoValue(const QString& trash, const QString& name, const QByteArray& key) {
  const auto lines =
      contents(trash + QStringLiteral("/info/") + name + QStringLiteral(".trashinfo")).split('\n');
  for (const QByteArray& line : lines)
    if (line.startsWith(key + '='))
      return line.sliced(key.size() + 1);
  return "no such line";
}

class TrashTest : public testing::Test {
 protected:
  TrashTest() : trash(home.path(QStringLiteral(".local/share/Trash"))) {}

  [[nodiscard]] QString trashed(const QString& name) const {
    return trash + QStringLiteral("/files/") + name;
  }

  void expectRefused(const QByteArray& path) const {
    const QString infoBefore = listing(trash + QStringLiteral("/info"));
    const QString filesBefore = listing(trash + QStringLiteral("/files"));
    QString error;
    EXPECT_FALSE(Trash::moveItem(path, &error)) << path.constData();
    EXPECT_FALSE(error.isEmpty()) << path.constData();
    EXPECT_EQ(listing(trash + QStringLiteral("/info")), infoBefore) << path.constData();
    EXPECT_EQ(listing(trash + QStringLiteral("/files")), filesBefore) << path.constData();
  }

  const testing_support::ScratchHome home;
  const QString trash;
};

/// Takes root's powers away while it lives, so that permissions count; the home folder becomes the ordinary
/// user's.
class AsOrdinaryUser {
 public:
  explicit AsOrdinaryUser(const testing_support::ScratchHome& home) {
    if (geteuid() != 0)
      return;
    constexpr uid_t nobody = 65534;
    for (const char* folder : {"", ".local", ".local/share"}) {
      const QByteArray path = QFile::encodeName(home.path(QString::fromLatin1(folder)));
      mkdir(path.constData(), 0700);
      if (chown(path.constData(), nobody, nobody) != 0)
        ADD_FAILURE() << "cannot give " << path.constData() << " away";
    }
    EXPECT_EQ(seteuid(nobody), 0);
  }
  ~AsOrdinaryUser() { EXPECT_EQ(seteuid(getuid()), 0); }
  AsOrdinaryUser(const AsOrdinaryUser&) = delete;
  AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;
};

/// A device of its own, mounted where only this process sees it.
class Disk {
 public:
  explicit Disk(const QString& folder) : path(QFile::encodeName(folder)) {
    QDir().mkpath(folder);
    isMounted = unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                mount("tmpfs", path.constData(), "tmpfs", 0, nullptr) == 0;
  }
  ~Disk() {
    if (isMounted)
      umount2(path.constData(), MNT_DETACH);
  }
  Disk(const Disk&) = delete;
  Disk& operator=(const Disk&) = delete;

  bool isMounted = false;

 private:
  const QByteArray path;
};

TEST_F(TrashTest, movesFilesFoldersAndLinksWithTheirOrigin) {
  const QString file = home.write(QStringLiteral("Pictures/shot.png"), "pixels");
  const QString inner = home.write(QStringLiteral("Pictures/folder/inner.txt"), "inner");
  const QString target = home.write(QStringLiteral("target.txt"), "target");
  const QString link = home.path(QStringLiteral("Pictures/link"));
  ASSERT_TRUE(QFile::link(target, link));
  QDir().mkpath(home.path(QStringLiteral("elsewhere")));
  ASSERT_TRUE(QFile::link(home.path(QStringLiteral("Pictures")), home.path(QStringLiteral("elsewhere/way"))));

  EXPECT_TRUE(Trash::moveItem(home.path(QStringLiteral("elsewhere/way/shot.png"))));
  EXPECT_TRUE(Trash::moveItem(QFileInfo(inner).path() + u'/'));
  EXPECT_TRUE(Trash::moveItem(link));

  EXPECT_EQ(listing(home.path(QStringLiteral("Pictures"))), QString());
  EXPECT_EQ(contents(trashed(QStringLiteral("shot.png"))), "pixels");
  EXPECT_EQ(contents(trashed(QStringLiteral("folder/inner.txt"))), "inner");
  EXPECT_TRUE(QFileInfo(trashed(QStringLiteral("link"))).isSymLink());
  EXPECT_EQ(contents(target), "target");
  EXPECT_EQ(infoValue(trash, QStringLiteral("shot.png"), "Path"), file.toUtf8()) << "where it really was";
  EXPECT_EQ(QFileInfo(trash).permissions() & (QFile::ReadGroup | QFile::ReadOther), 0);
}

TEST_F(TrashTest, storesTheLocalTimeOfTheDeletion) {
  const QByteArray zone = qgetenv("TZ");
  qputenv("TZ", "Asia/Seoul");
  tzset();
  const platform::ManualClock clock(
      QDateTime::fromString(QStringLiteral("2026-03-14T18:26:53Z"), Qt::ISODate));
  EXPECT_TRUE(Trash::moveItem(home.write(QStringLiteral("shot.png"))));
  if (zone.isNull())
    qunsetenv("TZ");
  else
    qputenv("TZ", zone);
  tzset();
  const QString info = trash + QStringLiteral("/info/shot.png.trashinfo");
  EXPECT_EQ(contents(info), "[Trash Info]\nPath=" + QFile::encodeName(home.path(QStringLiteral("shot.png"))) +
                                "\nDeletionDate=2026-03-15T03:26:53\n");
}

TEST_F(TrashTest, anyNameSurvivesTheWayToTheTrashAndBack) {
  for (const QByteArray& name : {QByteArray("100%41 sure.png"), QByteArray("two\nlines"),
                                 QByteArray("한글 그림.png"), QByteArray("not \xff\xfe text"),
                                 QByteArray("[x]=#?;&+\"'\\.png"), QByteArray(".hidden"), QByteArray("--")}) {
    const QByteArray path = QFile::encodeName(home.path()) + '/' + name;
    const int descriptor = creat(path.constData(), 0600);
    ASSERT_GE(descriptor, 0) << name.constData();
    close(descriptor);
    ASSERT_TRUE(Trash::moveItem(path)) << name.constData();

    const QByteArray inTrash = QFile::encodeName(trash);
    EXPECT_EQ(access((inTrash + "/files/" + name).constData(), F_OK), 0) << name.constData();
    // The info file's name needn't be text either, so Qt can't open it by name.
    std::FILE* info = std::fopen((inTrash + "/info/" + name + ".trashinfo").constData(), "r");
    ASSERT_NE(info, nullptr) << name.constData();
    QFile file;
    ASSERT_TRUE(file.open(info, QIODevice::ReadOnly, QFile::AutoCloseHandle));
    const auto lines = file.readAll().split('\n');
    ASSERT_EQ(lines.size(), 4) << name.constData();
    EXPECT_EQ(QByteArray::fromPercentEncoding(lines[1].sliced(5)), path);
    for (const char character : lines[1])
      EXPECT_TRUE(character > ' ' && character < '\x7f') << name.constData();
  }
  std::filesystem::remove_all(trash.toStdString());  // QTemporaryDir can't remove what isn't text
}

TEST_F(TrashTest, namesInTheTrashAreUnique) {
  for (const char* text : {"first", "second", "third"})
    ASSERT_TRUE(Trash::moveItem(home.write(QStringLiteral("shot.png"), text)));
  EXPECT_EQ(contents(trashed(QStringLiteral("shot.png"))), "first");
  EXPECT_EQ(contents(trashed(QStringLiteral("shot 2.png"))), "second");
  EXPECT_EQ(contents(trashed(QStringLiteral("shot 3.png"))), "third");

  // What others left behind: a file without its info, and an info without its file.
  home.write(QStringLiteral(".local/share/Trash/files/lone"), "theirs");
  home.write(QStringLiteral(".local/share/Trash/info/lone 2.trashinfo"), "theirs");
  ASSERT_TRUE(Trash::moveItem(home.write(QStringLiteral("lone"), "ours")));
  EXPECT_EQ(contents(trashed(QStringLiteral("lone"))), "theirs");
  EXPECT_EQ(contents(trashed(QStringLiteral("lone 3"))), "ours");
  EXPECT_FALSE(QFile::exists(trash + QStringLiteral("/info/lone.trashinfo"))) << "rolled back";
  EXPECT_EQ(contents(trash + QStringLiteral("/info/lone 2.trashinfo")), "theirs");
}

TEST_F(TrashTest, theLongestNamesFit) {
  const QString stem = QString(83, QChar(u'가'));  // 249 bytes
  for (const QString& name : {QString(stem + QStringLiteral(".png")), QString(255, u'x')})
    for (const char* text : {"one", "two"}) {
      const QString path = home.write(name, text);
      ASSERT_TRUE(Trash::moveItem(path));
      EXPECT_FALSE(QFile::exists(path));
    }
  const QStringList names = QDir(trash + QStringLiteral("/files")).entryList(QDir::Files);
  EXPECT_EQ(names.size(), 4);
  for (const QString& name : names) {
    EXPECT_FALSE(name.contains(QChar::ReplacementCharacter)) << "cut within a character";
    EXPECT_NE(infoValue(trash, name, "Path"), "no such line");
  }
}

TEST_F(TrashTest, refusesWhatIsNoItemOrHoldsTheTrash) {
  ASSERT_TRUE(Trash::moveItem(home.write(QStringLiteral("shot.png"))));
  const QByteArray root = QFile::encodeName(home.path());
  for (const char* path : {"", "/", ".", "..", "/no/such/folder/file"})
    expectRefused(path);
  for (const char* path : {"/missing.png", "/.local/..", "/.local/share/Trash/files/shot.png",
                           "/.local/share/Trash/files", "/.local/share/Trash", "/.local/share", ""})
    expectRefused(root + path);
  EXPECT_TRUE(QFile::exists(trashed(QStringLiteral("shot.png"))));
}

TEST_F(TrashTest, aTrashThatCantBeUsedLeavesTheFileInItsPlace) {
  const QString file = home.write(QStringLiteral("shot.png"), "pixels");
  home.write(QStringLiteral(".local/share/Trash/info"), "no folder");
  expectRefused(QFile::encodeName(file));
  EXPECT_EQ(contents(file), "pixels");
}

TEST_F(TrashTest, foldersThatMustNotBeWrittenLeaveEverythingInItsPlace) {
  const AsOrdinaryUser user(home);
  const QString file = home.write(QStringLiteral("locked/shot.png"), "pixels");
  ASSERT_TRUE(Trash::moveItem(home.write(QStringLiteral("before.png"))));
  for (const char* folder : {"locked", ".local/share/Trash/info", ".local/share/Trash/files"}) {
    const QByteArray path = QFile::encodeName(home.path(QString::fromLatin1(folder)));
    ASSERT_EQ(chmod(path.constData(), 0500), 0);
    expectRefused(QFile::encodeName(file));
    EXPECT_EQ(contents(file), "pixels") << folder;
    ASSERT_EQ(chmod(path.constData(), 0700), 0);
  }
  EXPECT_TRUE(Trash::moveItem(file)) << "and nothing else was in the way";
}

TEST_F(TrashTest, withoutADataFolderOfTheUsersChoiceTheUsualOneServes) {
  int number = 0;
  for (const char* value : {"", "relative/folder"}) {
    qputenv("XDG_DATA_HOME", value);
    const QString name = QStringLiteral("%1.png").arg(++number);
    ASSERT_TRUE(Trash::moveItem(home.write(name)));
    EXPECT_TRUE(QFile::exists(trashed(name))) << value;
  }
  qunsetenv("XDG_DATA_HOME");
  ASSERT_TRUE(Trash::moveItem(home.write(QStringLiteral("3.png"))));
  EXPECT_TRUE(QFile::exists(trashed(QStringLiteral("3.png"))));
}

TEST_F(TrashTest, takesARelativePathFromTheWorkingFolder) {
  const QString before = QDir::currentPath();
  ASSERT_TRUE(QDir::setCurrent(QFileInfo(home.write(QStringLiteral("Pictures/shot.png"))).path()));
  EXPECT_TRUE(Trash::moveItem(QByteArray("shot.png")));
  QDir::setCurrent(before);
  EXPECT_EQ(infoValue(trash, QStringLiteral("shot.png"), "Path"),
            QFile::encodeName(home.path(QStringLiteral("Pictures/shot.png"))));
}

TEST_F(TrashTest, anotherDeviceHasATrashOfItsOwn) {
  const Disk disk(home.path(QStringLiteral("disk")));
  if (!disk.isMounted)
    GTEST_SKIP() << "only root may mount the file system that this needs";
  const QString user = QString::number(geteuid());
  const QString own = home.path(QStringLiteral("disk/.Trash-") + user);
  const QString shared = home.path(QStringLiteral("disk/.Trash"));
  const QByteArray sharedPath = QFile::encodeName(shared);
  const auto trashOne = [this] {
    return Trash::moveItem(home.write(QStringLiteral("disk/some folder/shot.png"), "pixels"));
  };

  ASSERT_TRUE(trashOne());
  EXPECT_EQ(contents(own + QStringLiteral("/files/shot.png")), "pixels");
  EXPECT_EQ(infoValue(own, QStringLiteral("shot.png"), "Path"), "some%20folder/shot.png");
  struct stat status = {};
  ASSERT_EQ(stat(QFile::encodeName(own).constData(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0700u);
  EXPECT_FALSE(QFile::exists(trash)) << "the home folder's trash is not concerned";
  expectRefused(QFile::encodeName(own) + "/files/shot.png");
  expectRefused(QFile::encodeName(home.path(QStringLiteral("disk"))));

  // A trash for all users that is not safe is as good as none.
  ASSERT_EQ(mkdir(sharedPath.constData(), 0777), 0);
  ASSERT_TRUE(trashOne());
  EXPECT_EQ(listing(shared), QString());
  QDir().mkpath(home.path(QStringLiteral("disk/sticky")));
  ASSERT_EQ(chmod(QFile::encodeName(home.path(QStringLiteral("disk/sticky"))).constData(), 01777), 0);
  ASSERT_EQ(rmdir(sharedPath.constData()), 0);
  ASSERT_EQ(symlink("sticky", sharedPath.constData()), 0);
  ASSERT_TRUE(trashOne());
  EXPECT_EQ(listing(home.path(QStringLiteral("disk/sticky"))), QString());
  EXPECT_EQ(listing(own + QStringLiteral("/files")), QStringLiteral("shot 2.png|shot 3.png|shot.png"));

  ASSERT_EQ(unlink(sharedPath.constData()), 0);
  ASSERT_EQ(mkdir(sharedPath.constData(), 0777), 0);
  ASSERT_EQ(chmod(sharedPath.constData(), 01777), 0);
  ASSERT_TRUE(trashOne());
  const QString mine = shared + u'/' + user;
  EXPECT_EQ(contents(mine + QStringLiteral("/files/shot.png")), "pixels");
  EXPECT_EQ(infoValue(mine, QStringLiteral("shot.png"), "Path"), "some%20folder/shot.png");
}

TEST_F(TrashTest, aTrapAtTheTopOfADeviceIsNotSteppedInto) {
  const Disk disk(home.path(QStringLiteral("disk")));
  if (!disk.isMounted)
    GTEST_SKIP() << "only root may mount the file system that this needs";
  const QByteArray own = QFile::encodeName(home.path(QStringLiteral("disk/.Trash-%1").arg(geteuid())));
  QDir().mkpath(home.path(QStringLiteral("disk/trap")));
  ASSERT_EQ(symlink("trap", own.constData()), 0);
  const QString file = home.write(QStringLiteral("disk/shot.png"), "pixels");
  expectRefused(QFile::encodeName(file));

  ASSERT_EQ(unlink(own.constData()), 0);
  ASSERT_EQ(mkdir(own.constData(), 0777), 0);
  ASSERT_EQ(chown(own.constData(), 65534, 65534), 0);
  expectRefused(QFile::encodeName(file));
  EXPECT_EQ(contents(file), "pixels");
  EXPECT_EQ(listing(home.path(QStringLiteral("disk/trap"))), QString());
}

TEST_F(TrashTest, severalAtOnceKeepEveryFile) {
  constexpr int threads = 4;
  constexpr int each = 50;
  const auto path = [this](int thread, int number) {
    return home.path(QStringLiteral("%1-%2/shot.png").arg(thread).arg(number));
  };
  for (int thread = 0; thread < threads; ++thread)
    for (int number = 0; number < each; ++number)
      home.write(QStringLiteral("%1-%2/shot.png").arg(thread).arg(number), path(thread, number).toUtf8());
  std::atomic<int> moved = 0;
  {
    std::vector<std::jthread> workers;
    for (int thread = 0; thread < threads; ++thread)
      workers.emplace_back([&, thread] {
        for (int number = 0; number < each; ++number)
          moved += Trash::moveItem(path(thread, number)) ? 1 : 0;
      });
  }
  EXPECT_EQ(moved, threads * each);
  const QStringList names = QDir(trash + QStringLiteral("/files")).entryList(QDir::Files);
  EXPECT_EQ(names.size(), threads * each);
  for (const QString& name : names)
    EXPECT_EQ(contents(trashed(name)), infoValue(trash, name, "Path")) << "each file under its own info";
  EXPECT_EQ(QDir(trash + QStringLiteral("/info")).entryList(QDir::Files).size(), threads * each);
}

}  // namespace
