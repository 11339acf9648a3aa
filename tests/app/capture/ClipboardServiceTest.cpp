#include "app/capture/ClipboardService.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/Screen.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorrel;
using namespace testing_support;

namespace {

QByteArray fileOf(const QImage& picture, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  picture.save(&buffer, format);
  return bytes;
}

TEST(ClipboardServiceTest, ACopyHoldsThePictureWhereThereIsOneAndAlwaysTheAddress) {
  const ScratchHome home;
  const QImage picture = randomPicture({40, 30}, 1);
  const QByteArray png = fileOf(picture, "PNG");
  struct Case {
    const char* name;
    QByteArray bytes;
    bool isPicture;
  };
  for (const Case& each : {Case{"한 장.png", png, true}, Case{"a.bmp", fileOf(picture, "BMP"), true},
                           Case{"cut.png", png.first(png.size() / 2), false}, Case{"empty.png", {}, false}}) {
    const QString path = home.write(QString::fromUtf8(each.name), each.bytes);
    EXPECT_TRUE(ClipboardService::copy(QUrl::fromLocalFile(path)));
    QFile::remove(path);  // what was copied doesn't hang on the file
    const QMimeData* const contents = QGuiApplication::clipboard()->mimeData();
    EXPECT_EQ(contents->urls(), QList{QUrl::fromLocalFile(path)}) << each.name;
    QStringList formats{u"text/uri-list"_s, u"x-special/gnome-copied-files"_s};
    if (each.isPicture)
      formats.prepend(u"image/png"_s);
    EXPECT_EQ(contents->formats(), formats) << each.name;
    const QByteArray pasted = contents->data(u"image/png"_s);
    EXPECT_EQ(QImage::fromData(pasted).convertToFormat(picture.format()), each.isPicture ? picture : QImage())
        << each.name;
    EXPECT_TRUE(each.bytes != png || pasted == png) << "passed on as it was";
  }
  EXPECT_TRUE(ClipboardService::copy(QUrl::fromLocalFile(home.path(u"missing.png"_s))));
  EXPECT_FALSE(QGuiApplication::clipboard()->mimeData()->hasFormat(u"image/png"_s));
}

}  // namespace
