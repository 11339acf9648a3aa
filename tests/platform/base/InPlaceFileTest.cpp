#include "platform/base/FilePath.h"
#include "platform/base/InPlaceFile.h"
#include "platform/base/SavingCopy.h"
#include "tests/support/Files.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScratchHome.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <random>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace platform;
using testing_support::contentsOf;
using testing_support::LogCapture;
using testing_support::ScratchHome;

namespace {

struct stat status(const QString& path) {
  struct stat found = {};
  EXPECT_EQ(stat(QFile::encodeName(path).constData(), &found), 0);
  return found;
}

FileIdentity identityOf(const QString& path) {
  return InPlaceFile::identity(QFile::encodeName(path)).value_or(FileIdentity());
}

Result<QByteArray> write(const QString& path, const QByteArray& data) {
  return InPlaceFile::write(QFile::encodeName(path), data, identityOf(path));
}

/// A write that must fail for this reason and leave the file as it is.
void expectRefusal(const QString& path, const QByteArray& data, int reason) {
  const QByteArray before = contentsOf(path);
  const auto written = write(path, data);
  ASSERT_FALSE(written);
  EXPECT_EQ(written.error(), Error::fromErrno(reason));
  EXPECT_EQ(contentsOf(path), before);
}

QStringList copies(const ScratchHome& home) {
  return QDir(home.path(QStringLiteral(".local/state/Sorrel/saving"))).entryList(QDir::Files | QDir::Hidden);
}

/// On a disk of 256 KiB.
void expectFilesWholeWhenItIsFull(const QString& disk) {
  const auto make = [&](const char* name, const QByteArray& data) {
    QFile file(disk + u'/' + QLatin1String(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(data) == data.size());
    return file.fileName();
  };
  const QString path = make("picture.png", QByteArray(100'000, 'o'));
  make("other.png", QByteArray(60'000, 'x'));
  expectRefusal(path, QByteArray(300'000, 'n'), ENOSPC);
  expectRefusal(path, QByteArray(220'000, 'n'), ENOSPC);
  EXPECT_FALSE(write(disk + QStringLiteral("/new.png"), QByteArray(300'000, 'n')));
  EXPECT_FALSE(QFile::exists(disk + QStringLiteral("/new.png")));
  // What could not be reserved was given back: what fits still does.
  EXPECT_TRUE(write(path, QByteArray(150'000, 'n')));
  EXPECT_EQ(contentsOf(path), QByteArray(150'000, 'n'));
}

/// A file system in a file, mounted while this lives.
class Disk {
 public:
  Disk(qint64 size, const QStringList& maker) {
    QFile image(folder.filePath(QStringLiteral("image")));
    const auto run = [](QStringList command) {
      const QString program = command.takeFirst();
      return QProcess::execute(program, command) == 0;
    };
    QDir().mkdir(path());
    isMounted = image.open(QIODevice::WriteOnly) && image.resize(size) &&
                run(maker + QStringList(image.fileName())) &&
                run({QStringLiteral("mount"), QStringLiteral("-oloop"), image.fileName(), path()});
  }
  ~Disk() {
    if (isMounted && umount(QFile::encodeName(path()).constData()) != 0)
      ADD_FAILURE() << "still in use";
  }
  Disk(const Disk&) = delete;
  Disk& operator=(const Disk&) = delete;

  [[nodiscard]] QString path() const { return folder.filePath(QStringLiteral("disk")); }
  bool isMounted = false;  // only the administrator can

 private:
  QTemporaryDir folder;
};

/// All pictures of the kill test: the letter tells the length.
QByteArray pictureOf(char letter) {
  return QByteArray(200'000 + (letter - 'a') * 330'000, letter);
}

[[noreturn]] void overwriteUntilKilled(const QByteArray& path, int tellsReady) {
  const FileIdentity file = *InPlaceFile::identity(path);
  for (char letter = 'a';; letter = letter == 'z' ? 'a' : char(letter + 1)) {
    if (!InPlaceFile::write(path, pictureOf(letter), file))
      _exit(1);
    [[maybe_unused]] const auto told = ::write(tellsReady, "", 1);
  }
}

}  // namespace

TEST(InPlaceFile, replacesTheContentsOfTheSameFile) {
  const ScratchHome home;
  const QString path = home.write(QStringLiteral("picture.png"), "old");
  const QByteArray name = QFile::encodeName(path);
  ASSERT_EQ(chmod(name.constData(), 0640), 0);
  const QString linked = home.path(QStringLiteral("link.png"));
  ASSERT_TRUE(QFile::link(path, linked));
  const auto before = status(path);
  for (const qsizetype length : {5, 100'000, 70'000, 0, 1}) {
    const QByteArray data(length, 'n');
    ASSERT_TRUE(write(linked, data));
    EXPECT_EQ(contentsOf(path), data);
    const auto after = status(path);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_LE(after.st_blocks * 512, length + 65536);  // what was reserved and isn't needed is given back
  }
  EXPECT_TRUE(QFileInfo(linked).isSymLink());
  EXPECT_EQ(QDir(home.path()).entryList({QStringLiteral("*pic*")}, QDir::Files | QDir::Hidden).size(), 1);
  EXPECT_EQ(copies(home), QStringList());
}

TEST(InPlaceFile, writesBesideWhatHasTakenTheName) {
  const ScratchHome home;
  const QString path = home.write(QStringLiteral("a.b.png"), "opened");
  const FileIdentity opened = identityOf(path);
  QFile::remove(path);
  EXPECT_EQ(*InPlaceFile::write(QFile::encodeName(path), "1", opened), QFile::encodeName(path)) << "is gone";
  EXPECT_EQ(contentsOf(path), "1");
  QFile::remove(path);
  home.write(QStringLiteral("a.b.png"), "another");  // which may well get the same inode
  const QString second = home.path(QStringLiteral("a.b (2).png")),
                third = home.path(QStringLiteral("a.b (3).png"));
  EXPECT_EQ(*InPlaceFile::write(QFile::encodeName(path), "2", opened), QFile::encodeName(second));
  EXPECT_EQ(*InPlaceFile::write(QFile::encodeName(path), "3", opened), QFile::encodeName(third));
  EXPECT_EQ(contentsOf(path) + contentsOf(second) + contentsOf(third), "another23");
}

TEST(InPlaceFile, refusesWhatIsNoPlainFile) {
  const ScratchHome home;
  const auto refusal = [](const QString& path) { return write(path, "new").error(); };
  EXPECT_EQ(refusal(home.path()), Error::fromErrno(EISDIR));
  EXPECT_EQ(refusal(home.path(QStringLiteral("no/such/folder.png"))), Error::fromErrno(ENOENT));
  const QString pipe = home.path(QStringLiteral("pipe.png"));
  ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
  EXPECT_FALSE(write(pipe, "new"));
}

TEST(InPlaceFile, isWholeAfterTheNextStartWhereverAWriteWasKilled) {
  const ScratchHome home;
  // In memory, where there is such a folder: on a disk nearly all of the time goes into waiting for it.
  const QString memory = QStringLiteral("/dev/shm");
  const QTemporaryDir folder((QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) +
                             QStringLiteral("/sorrel-test-XXXXXX"));
  qputenv("XDG_STATE_HOME", QFile::encodeName(folder.filePath(QStringLiteral("state"))));
  const QString path = folder.filePath(QStringLiteral("picture.png"));
  QFile picture(path);
  ASSERT_TRUE(picture.open(QIODevice::WriteOnly) && picture.write(pictureOf('a')) > 0);
  picture.close();
  std::minstd_rand random(8);
  LogCapture log;
  // On a busy machine a writer may not get far before it is killed.
  constexpr int turns = 200, most = 4000;
  for (int turn = 0; turn < turns || (turn < most && log.logged.isEmpty()); ++turn) {
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t child = fork();
    if (child == 0)
      overwriteUntilKilled(QFile::encodeName(path), ready[1]);
    char told;
    ASSERT_EQ(read(ready[0], &told, 1), 1);
    usleep(static_cast<useconds_t>(random() % 20'000));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    close(ready[0]);
    close(ready[1]);
    InPlaceFile::finishInterrupted();
    const QByteArray now = contentsOf(path);
    ASSERT_TRUE(!now.isEmpty() && now == pictureOf(now.front())) << "torn by kill " << turn;
  }
  EXPECT_FALSE(log.logged.isEmpty()) << "no write was interrupted: this has tried nothing";
}

TEST(InPlaceFile, finishesOnlyTheVeryFileThatWasBeingWritten) {
  const ScratchHome home;
  const QString path = home.write(QStringLiteral("picture.png"), "half");
  const auto interrupt = [&](const QByteArray& data) {
    ASSERT_TRUE(SavingCopy::make({QFile::encodeName(path), identityOf(path)}, data));
  };
  LogCapture log;
  interrupt("first");
  interrupt("second");
  InPlaceFile::finishInterrupted();
  EXPECT_EQ(contentsOf(path), "second") << "the later one counts";
  EXPECT_EQ(copies(home), QStringList());
  for (const QByteArray& ending : {QByteArray("bad"), QByteArray("bAd"), QByteArray()}) {
    interrupt("incomplete: bad");
    const QString copy = home.path(QStringLiteral(".local/state/Sorrel/saving/") + copies(home).value(0));
    testing_support::writeFile(copy, contentsOf(copy).chopped(3) + ending);
    InPlaceFile::finishInterrupted();
    EXPECT_EQ(contentsOf(path), ending == "bad" ? "incomplete: bad" : "second");
    EXPECT_EQ(copies(home), QStringList());
    testing_support::writeFile(path, "second");
  }
  {
    const auto byAnotherInstance = SavingCopy::make({QFile::encodeName(path), identityOf(path)}, "third");
    InPlaceFile::finishInterrupted();
    EXPECT_EQ(contentsOf(path), "second") << "still under way";
  }
  QFile::remove(path);
  home.write(QStringLiteral("picture.png"), "another");
  log.logged.clear();
  InPlaceFile::finishInterrupted();
  EXPECT_EQ(contentsOf(path), "another");
  const QString kept = home.path(QStringLiteral(".local/state/Sorrel/kept/picture.png"));
  EXPECT_EQ(contentsOf(kept), "third");
  EXPECT_TRUE(log.logged.join(u'\n').contains(kept));
  EXPECT_EQ(copies(home), QStringList()) << "told once";
}

TEST(InPlaceFile, isWrittenWithoutACopyWhereNoneCanBeKept) {
  const ScratchHome home;
  const QString path = home.write(QStringLiteral("picture.png"), "old");
  home.write(QStringLiteral(".local/state"), "no folder");
  LogCapture log;
  EXPECT_TRUE(write(path, "new"));
  EXPECT_EQ(contentsOf(path), "new");
  EXPECT_EQ(log.logged.size(), 1);
}

TEST(InPlaceFile, leavesTheFileWholeBeyondALimitOfItsLength) {
  const ScratchHome home;
  const QString path = home.write(QStringLiteral("picture.png"), "old");
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  const rlimit low{1000, before.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &low), 0);
  expectRefusal(path, QByteArray(2000, 'n'), EFBIG);
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
}

TEST(InPlaceFile, leavesTheFileWholeOnAFullDisk) {
  const ScratchHome home;
  const QByteArray disk = QFile::encodeName(home.path(QStringLiteral("disk")));
  mkdir(disk.constData(), 0700);
  if (mount("none", disk.constData(), "tmpfs", 0, "size=256k") != 0)
    GTEST_SKIP() << "only the administrator can make a small disk";
  expectFilesWholeWhenItIsFull(QFile::decodeName(disk));
  EXPECT_EQ(umount(disk.constData()), 0);
}

TEST(InPlaceFile, leavesTheFileWholeOnAFullDiskThatReservesNothing) {
  const ScratchHome home;
  const Disk disk(300 << 10, {QStringLiteral("mke2fs"), QStringLiteral("-qt"), QStringLiteral("ext2")});
  if (!disk.isMounted)
    GTEST_SKIP() << "only the administrator can make a small disk";
  expectFilesWholeWhenItIsFull(disk.path());
}

TEST(InPlaceFile, needsNoRoomForWhatIsThereAlready) {
  const ScratchHome home;
  const Disk disk(300 << 20, {QStringLiteral("mkfs.xfs"), QStringLiteral("-q")});
  if (!disk.isMounted)
    GTEST_SKIP() << "only the administrator can make a disk, and only with this file system's tools";
  const QString path = disk.path() + QStringLiteral("/picture.png");
  QFile picture(path), rest(disk.path() + QStringLiteral("/rest"));
  ASSERT_TRUE(picture.open(QIODevice::WriteOnly) && picture.write(QByteArray(4 << 20, 'o')) > 0);
  ASSERT_TRUE(rest.open(QIODevice::WriteOnly));
  for (off_t step = 1 << 20, end = 0; step >= 4096;)
    fallocate(rest.handle(), 0, end, step) == 0 ? end += step : step /= 2;
  const auto written = write(path, QByteArray(3 << 20, 'n'));
  EXPECT_TRUE(written) << written.error().reason.toStdString();
}
