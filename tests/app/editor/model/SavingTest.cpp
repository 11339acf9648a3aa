#include "tests/app/editor/model/DocumentFixture.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/Files.h"
#include "tests/support/LogCapture.h"

#include <QDir>

using namespace sorrel;
using testing_support::contentsOf;
using testing_support::FileSizeLimit;

namespace {

using SavingTest = DocumentFixture;

TEST_F(SavingTest, theNameDecidesTheFormatAndTheFileStaysItself) {
  const QByteArray png("\x89PNG"), jpeg("\xff\xd8\xff"), tiff("II*\0", 4), gif("GIF8"), bmp("BM");
  const struct {
    const char* name;
    const QByteArray& beginning;
    int atMostOff;
  } cases[] = {
      {"a.png", png, 0},   {"a.PNG", png, 0},  {"a.jpg", jpeg, 12}, {"a.JPEG", jpeg, 12},
      {"a.tiff", tiff, 0}, {"a.Tif", tiff, 0}, {"a.gif", gif, 0},   {"a.BMP", bmp, 0},
      {"a.heic", png, 0},  {"a.webp", png, 0}, {"picture", png, 0}, {"a.png.jpg", jpeg, 12},
  };
  for (const auto& [name, beginning, atMostOff] : cases) {
    const auto model = open({300, 200}, Qt::white);
    const QString path = home.path(QString::fromUtf8(name));
    QFile::copy(model->fileURL.toLocalFile(), path);
    const auto edited = EditorModel::open(QUrl::fromLocalFile(path));
    ASSERT_TRUE(edited) << name << ": opened by what is in it";
    edited->blurBrushWidth = 20;
    drawStroke(*edited, {{-50, 100}, {400, 100}});
    ASSERT_TRUE(edited->save()) << name;
    EXPECT_TRUE(contentsOf(path).startsWith(beginning)) << name;
    const auto again = EditorModel::open(QUrl::fromLocalFile(path));
    ASSERT_TRUE(again) << name;
    EXPECT_LE(worstDifference(again->baseImage, flattened(*edited), [](int, int y) { return y < 90; }),
              atMostOff);
    EXPECT_NEAR(again->baseImage->pixelColor(150, 100).red(), 0xE5, 12) << name;
    EXPECT_NEAR(again->baseImage->pixelColor(150, 100).blue(), 0x4D, 12) << name;
    EXPECT_EQ(edited->strokes->size(), 1) << "saving changes nothing";
    EXPECT_EQ(edited->originalByteCount, QFile(model->fileURL.toLocalFile()).size());
    QFile::remove(path);
  }
}

TEST_F(SavingTest, aFullDiskLeavesTheFileWholeAndIsLogged) {
  auto& defaults = platform::UserDefaults::standard();
  defaults.set(QStringLiteral("rememberWatermarkText"), true);
  const auto model = open({900, 600});
  const QString path = model->fileURL.toLocalFile();
  const QByteArray before = contentsOf(path);
  model->setLogo(noise({400, 400}));  // what is to be saved is larger than what is there
  model->textWM.change([](auto& text) { text.text = QStringLiteral("text"); });
  testing_support::LogCapture log;
  {
    const FileSizeLimit limit(rlim_t(before.size()));
    EXPECT_FALSE(model->save());
  }
  EXPECT_EQ(contentsOf(path), before);
  ASSERT_EQ(log.logged.size(), 1);
  EXPECT_TRUE(log.logged.front().startsWith(QStringLiteral("Sorrel editor save failed: ")));
  EXPECT_GT(log.logged.front().size(), 30);
  EXPECT_FALSE(defaults.contains(QStringLiteral("lastWatermarkText")));
  EXPECT_TRUE(model->save()) << "as soon as there is room";
}

TEST_F(SavingTest, whatHasTakenTheFilesNameIsLeftAlone) {
  const auto model = open({90, 60});
  const QString path = model->fileURL.toLocalFile();
  QFile::remove(path);
  QDir().mkdir(path);
  testing_support::LogCapture log;
  EXPECT_TRUE(model->save());
  EXPECT_EQ(log.logged.size(), 1);
  EXPECT_TRUE(QFileInfo(path).isDir());
  const QFileInfo file(path);
  const QString beside = file.path() + u'/' + file.completeBaseName() + QStringLiteral(" (2).png");
  EXPECT_TRUE(EditorModel::open(QUrl::fromLocalFile(beside)));
}

}  // namespace
