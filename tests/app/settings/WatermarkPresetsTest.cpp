#include "app/settings/WatermarkPresets.h"
#include "tests/support/Files.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScratchHome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

namespace WatermarkPresets = sorrel::WatermarkPresets;

namespace {

class WatermarkPresetsTest : public testing::Test {
 protected:
  [[nodiscard]] QUrl file(const QString& name, const QByteArray& contents = {}) const {
    return QUrl::fromLocalFile(home.write(name, contents));
  }
  [[nodiscard]] QString folder() const {
    return home.path(QStringLiteral(".local/share/Sorrel/watermark-logos"));
  }
  [[nodiscard]] static QString listed() {
    QStringList names;
    for (const QUrl& preset : WatermarkPresets::all())
      names << preset.fileName();
    return names.join(u',');
  }

  const testing_support::ScratchHome home;
};

TEST_F(WatermarkPresetsTest, addingCopiesUnderAFreeName) {
  const struct {
    const char* source;
    const char* target;
  } cases[] = {
      {"logo.png", "logo.png"},     {"logo.png", "logo (2).png"},   {"logo", "logo (3).png"},
      {"v1.2.JPEG", "v1.2.JPEG"},   {"v1.2.JPEG", "v1.2 (2).JPEG"}, {"로고 (2).tiff", "로고 (2).tiff"},
      {"photo.heic", "photo.heic"},
  };
  for (const auto& [source, target] : cases) {
    const QByteArray contents = QByteArray("not even a picture, ") + target;
    const QUrl from = file(QString::fromUtf8(source), contents);
    const auto added = WatermarkPresets::add(from);
    ASSERT_TRUE(added) << target;
    EXPECT_EQ(added->toLocalFile(), folder() + u'/' + QString::fromUtf8(target));
    EXPECT_EQ(testing_support::contentsOf(added->toLocalFile()), contents);
    EXPECT_TRUE(QFile::exists(from.toLocalFile())) << "the source stays";
  }
  EXPECT_FALSE(listed().contains(QStringLiteral("heic"))) << "added, but not a kind that is listed";
}

TEST_F(WatermarkPresetsTest, NamesAsLongAsTheyGetAreCutToLeaveRoom) {
  const QString longest = QString(83, QChar(0xac00)) + QStringLiteral(".png");  // 253 bytes
  const auto first = WatermarkPresets::add(file(longest)), second = WatermarkPresets::add(file(longest));
  ASSERT_TRUE(first && second);
  const QString kept = longest.first(78);
  EXPECT_EQ(first->fileName(), kept + QStringLiteral(".png"));
  EXPECT_EQ(second->fileName(), kept + QStringLiteral(" (2).png"));
}

TEST_F(WatermarkPresetsTest, aFailedCopyIsLogged) {
  testing_support::LogCapture log;
  EXPECT_FALSE(WatermarkPresets::add(QUrl::fromLocalFile(home.path(QStringLiteral("missing.png")))));
  EXPECT_FALSE(WatermarkPresets::add(QUrl::fromLocalFile(home.path())));
  QDir(home.path(QStringLiteral(".local/share/Sorrel"))).removeRecursively();
  home.write(QStringLiteral(".local/share/Sorrel"), "in the folder's place");
  EXPECT_FALSE(WatermarkPresets::add(file(QStringLiteral("logo.png"))));
  EXPECT_TRUE(WatermarkPresets::all().isEmpty());
  ASSERT_EQ(log.logged.size(), 3);
  for (const QString& line : log.logged) {
    EXPECT_TRUE(line.startsWith(QStringLiteral("Sorrel preset add failed: "))) << line.toStdString();
    EXPECT_GT(line.size(), 30);
  }
}

}  // namespace
