#include "platform/imaging/codecs/InPlaceFile.h"
#include "tests/support/Files.h"
#include "tests/support/ScratchHome.h"

#include <QFile>
#include <QProcess>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace platform;
using testing_support::contentsOf;
using testing_support::ScratchHome;

namespace {

struct stat status(const QString& path) {
  struct stat found = {};
  EXPECT_EQ(stat(QFile::encodeName(path).constData(), &found), 0);
  return found;
}

/// A write that must fail for this reason and leave the file as it is.
void expectRefusal(const QString& path, const QByteArray& data, int reason) {
  const QByteArray before = contentsOf(path);
  QString error;
  EXPECT_FALSE(InPlaceFile::write(path, data, &error));
  EXPECT_EQ(error, qt_error_string(reason));
  EXPECT_EQ(contentsOf(path), before);
}

/// On a disk of 256 KiB at the home folder.
void expectFilesWholeWhenItIsFull(const ScratchHome& home) {
  const QByteArray old(100'000, 'o');
  const QString path = home.write(QStringLiteral("picture.png"), old);
  home.write(QStringLiteral("other.png"), QByteArray(60'000, 'x'));
  expectRefusal(path, QByteArray(300'000, 'n'), ENOSPC);
  expectRefusal(path, QByteArray(220'000, 'n'), ENOSPC);
  QString error;
  EXPECT_FALSE(InPlaceFile::write(home.path(QStringLiteral("new.png")), QByteArray(300'000, 'n'), &error));
  EXPECT_FALSE(QFile::exists(home.path(QStringLiteral("new.png"))));
  // What could not be reserved was given back: what fits still does.
  EXPECT_TRUE(InPlaceFile::write(path, QByteArray(150'000, 'n'), &error)) << error.toStdString();
  EXPECT_EQ(contentsOf(path), QByteArray(150'000, 'n'));
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
    QString error;
    EXPECT_TRUE(InPlaceFile::write(linked, data, &error)) << error.toStdString();
    EXPECT_EQ(contentsOf(path), data);
    const auto after = status(path);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_LE(after.st_blocks * 512, length + 65536);  // what was reserved and isn't needed is given back
  }
  EXPECT_TRUE(QFileInfo(linked).isSymLink());
  EXPECT_EQ(QDir(home.path()).entryList({QStringLiteral("*pic*")}, QDir::Files | QDir::Hidden).size(), 1);
}

TEST(InPlaceFile, makesAFileThatIsGone) {
  const ScratchHome home;
  const QString path = home.path(QStringLiteral("gone.png"));
  EXPECT_TRUE(InPlaceFile::write(path, "new"));
  EXPECT_EQ(contentsOf(path), "new");
}

TEST(InPlaceFile, refusesWhatIsNoPlainFile) {
  const ScratchHome home;
  QString error;
  EXPECT_FALSE(InPlaceFile::write(home.path(), "new", &error));
  EXPECT_EQ(error, qt_error_string(EISDIR));
  EXPECT_FALSE(InPlaceFile::write(home.path(QStringLiteral("no/such/folder.png")), "new", &error));
  EXPECT_EQ(error, qt_error_string(ENOENT));
  const QString pipe = home.path(QStringLiteral("pipe.png"));
  ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
  EXPECT_FALSE(InPlaceFile::write(pipe, "new", &error));
}

TEST(InPlaceFile, leavesAFileThatMayNotBeWritten) {
  const ScratchHome home;
  const QString path = home.write(QStringLiteral("picture.png"), "old");
  const QByteArray name = QFile::encodeName(path);
  if (geteuid() != 0) {
    ASSERT_EQ(chmod(name.constData(), 0444), 0);
    expectRefusal(path, "new", EACCES);
    return;
  }
  // Nothing is read-only to the administrator but what is immutable.
  const int file = open(name.constData(), O_RDONLY | O_CLOEXEC);
  int flags = 0;
  ASSERT_EQ(ioctl(file, FS_IOC_GETFLAGS, &flags), 0);
  int immutable = flags | FS_IMMUTABLE_FL;
  if (ioctl(file, FS_IOC_SETFLAGS, &immutable) != 0) {
    close(file);
    GTEST_SKIP() << "this file system has no immutable files";
  }
  expectRefusal(path, "new", EPERM);
  ioctl(file, FS_IOC_SETFLAGS, &flags);
  close(file);
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
  const QByteArray disk = QFile::encodeName(home.path());
  if (mount("none", disk.constData(), "tmpfs", 0, "size=256k") != 0)
    GTEST_SKIP() << "only the administrator can make a small disk";
  expectFilesWholeWhenItIsFull(home);
  EXPECT_EQ(umount(disk.constData()), 0);
}

TEST(InPlaceFile, leavesTheFileWholeOnAFullDiskThatReservesNothing) {
  const ScratchHome home, other;
  const QString image = other.write(QStringLiteral("disk"), QByteArray(300 << 10, '\0'));
  const auto succeeds = [](const QString& program, const QStringList& arguments) {
    return QProcess::execute(program, arguments) == 0;
  };
  if (!succeeds(QStringLiteral("mke2fs"), {QStringLiteral("-qt"), QStringLiteral("ext2"), image}) ||
      !succeeds(QStringLiteral("mount"), {QStringLiteral("-oloop"), image, home.path()}))
    GTEST_SKIP() << "only the administrator can make a small disk";
  expectFilesWholeWhenItIsFull(home);
  EXPECT_EQ(umount(QFile::encodeName(home.path()).constData()), 0);
}
