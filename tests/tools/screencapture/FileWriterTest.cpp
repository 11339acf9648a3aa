#include "tests/support/FileSizeLimit.h"
#include "tests/support/Files.h"
#include "tests/support/ScratchHome.h"
#include "tools/screencapture/FileWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace screencapture;

namespace {

const std::vector<std::uint8_t> picture(100'000, 7);
const QByteArray pictureBytes(100'000, 7);

class FileWriter : public testing::TestWithParam<Unfinished> {
 protected:
  [[nodiscard]] std::string path(const char* name) const {
    return home.path(QString::fromUtf8(name)).toStdString();
  }
  [[nodiscard]] QByteArray contents(const char* name) const {
    return testing_support::contentsOf(home.path(QString::fromUtf8(name)));
  }
  [[nodiscard]] mode_t permissions(const char* name) const {
    struct stat file {};
    return stat(path(name).c_str(), &file) == 0 ? file.st_mode & 07777 : 0;
  }
  /// All names in the folder, hidden ones too, but for the scratch home's own.
  [[nodiscard]] QStringList names() const {
    QStringList all =
        QDir(home.path()).entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
    all.removeAll(u".runtime"_s);
    return all;
  }

  testing_support::ScratchHome home;
};

INSTANTIATE_TEST_SUITE_P(Ways, FileWriter, testing::Values(Unfinished::Nameless, Unfinished::Hidden));

}  // namespace

TEST_P(FileWriter, aNewFileGetsWhatTheUmaskAllows) {
  const mode_t before = umask(027);
  EXPECT_EQ(writeFile(path("new.png"), picture, GetParam()), 0);
  umask(before);
  EXPECT_EQ(contents("new.png"), pictureBytes);
  EXPECT_EQ(permissions("new.png"), 0640U);
  EXPECT_EQ(names(), QStringList{u"new.png"_s});
}

TEST_P(FileWriter, anExistingFileKeepsItsPermissionsAndALinkStays) {
  home.write(u"old.png"_s, "old");
  chmod(path("old.png").c_str(), 0604);
  ASSERT_EQ(symlink("old.png", path("link.png").c_str()), 0);
  EXPECT_EQ(writeFile(path("link.png"), picture, GetParam()), 0);
  EXPECT_EQ(contents("old.png"), pictureBytes);
  EXPECT_EQ(permissions("old.png"), 0604U);
  EXPECT_TRUE(QFileInfo(home.path(u"link.png"_s)).isSymLink());
  EXPECT_EQ(names().size(), 2);
}

TEST_P(FileWriter, whatCannotBeWrittenIsLeftAlone) {
  home.write(u"guarded.png"_s, "old");
  chmod(path("guarded.png").c_str(), 0444);
  chmod(home.path().toLocal8Bit().constData(), 0777);
  mkdir(path("closed").c_str(), 0555);
  mkfifo(path("pipe").c_str(), 0666);
  // The administrator may write everything, so for this test be nobody.
  const uid_t user = geteuid();
  constexpr uid_t nobody = 65534;
  if (user == 0) {
    ASSERT_EQ(seteuid(nobody), 0);
  }
  EXPECT_EQ(writeFile(path("guarded.png"), picture, GetParam()), EACCES);
  EXPECT_EQ(writeFile(path("closed/new.png"), picture, GetParam()), EACCES);
  EXPECT_EQ(writeFile(path("missing/new.png"), picture, GetParam()), ENOENT);
  EXPECT_EQ(writeFile(path("closed"), picture, GetParam()), EISDIR);
  EXPECT_EQ(writeFile(path("pipe"), picture, GetParam()), EINVAL);
  if (user == 0) {
    ASSERT_EQ(seteuid(user), 0);
  }
  EXPECT_EQ(contents("guarded.png"), "old");
  EXPECT_EQ(names().size(), 3);
}

TEST_P(FileWriter, aFullDiskLeavesTheOldFileAndNothingElse) {
  home.write(u"old.png"_s, "old");
  {
    const testing_support::FileSizeLimit limit(50'000);
    EXPECT_EQ(writeFile(path("old.png"), picture, GetParam()), EFBIG);
    EXPECT_EQ(writeFile(path("new.png"), picture, GetParam()), EFBIG);
  }
  EXPECT_EQ(contents("old.png"), "old");
  EXPECT_EQ(names(), QStringList{u"old.png"_s});
}
