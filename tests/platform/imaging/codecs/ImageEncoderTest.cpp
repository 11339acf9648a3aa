#include "platform/imaging/codecs/ImageDecoder.h"
#include "platform/imaging/codecs/ImageEncoder.h"
#include "tests/platform/imaging/codecs/PictureFiles.h"

#include <gtest/gtest.h>
#include <set>

using namespace platform;
using namespace testing_support;

namespace {

const std::pair<ImageFileType, const char*> exactTypes[]{
    {ImageFileType::Png, "png"}, {ImageFileType::Tiff, "tiff"}, {ImageFileType::Bmp, "bmp"}};

std::string properties(const QByteArray& file, const char* format, const char* wanted) {
  return convert({QString::fromLatin1(format) + QStringLiteral(":-"), QStringLiteral("-format"),
                  QString::fromLatin1(wanted), QStringLiteral("info:-")},
                 file)
      .toStdString();
}

QImage grey(QSize size) {
  QImage image(size, QImage::Format_RGBA8888_Premultiplied);
  for (int y = 0; y < size.height(); ++y)
    for (int x = 0; x < size.width(); ++x)
      image.setPixelColor(x, y, QColor::fromRgb(255 * x / size.width(), 255 * y / size.height(), 128));
  return image;
}

}  // namespace

TEST(ImageEncoder, keepsEveryPixelInTheExactFormats) {
  for (const QSize size : {QSize(1, 1), QSize(3, 2), QSize(61, 43), QSize(258, 7)}) {
    for (const auto kind : {SampleKind::Opaque, SampleKind::HasAlpha}) {
      const QImage picture = sample(size, kind);
      for (const auto& [type, format] : exactTypes) {
        const auto file = ImageEncoder::encode(picture, type);
        ASSERT_TRUE(file) << format;
        EXPECT_EQ(ImageDecoder::decode(*file).value_or(QImage()), picture) << format;
        EXPECT_LE(largestDifference(readByOther(*file, QString::fromLatin1(format)), picture),
                  kind == SampleKind::Opaque ? 0 : 1)
            << format << ' ' << size.width();
      }
    }
  }
}

TEST(ImageEncoder, writesPlainColoursWhereNothingIsClear) {
  const auto png = ImageEncoder::encode(sample({20, 20}, SampleKind::Opaque), ImageFileType::Png).value();
  EXPECT_EQ(png[25], 2);
  const auto clear = ImageEncoder::encode(sample({20, 20}, SampleKind::HasAlpha), ImageFileType::Png).value();
  EXPECT_EQ(clear[25], 6);
  const auto tiff = ImageEncoder::encode(sample({20, 20}, SampleKind::Opaque), ImageFileType::Tiff).value();
  EXPECT_EQ(properties(tiff, "tiff", "%C %A"), "LZW False");
}

TEST(ImageEncoder, writesJpegsWithFullColourOnWhite) {
  const QImage picture = grey({160, 120});
  const auto file = ImageEncoder::encode(picture, ImageFileType::Jpeg).value();
  EXPECT_EQ(properties(file, "jpeg", "%Q %[jpeg:sampling-factor]"), "90 1x1,1x1,1x1");
  EXPECT_LT(meanDifference(readByOther(file, QStringLiteral("jpeg")), picture), 1.5);
  QImage clear(16, 16, QImage::Format_RGBA8888_Premultiplied);
  clear.fill(Qt::transparent);
  const auto onWhite = ImageEncoder::encode(clear, ImageFileType::Jpeg).value();
  EXPECT_EQ(ImageDecoder::decode(onWhite).value().pixelColor(8, 8), QColor(Qt::white));
}

TEST(ImageEncoder, writesGifsOfFewColoursExactlyAndKeepsWhatIsClear) {
  QImage picture(64, 64, QImage::Format_RGBA8888_Premultiplied);
  picture.fill(Qt::transparent);
  for (int i = 0; i < 255; ++i)  // and clear is the 256th
    picture.setPixelColor(i % 64, 2 * (i / 64), QColor(i, 255 - i, i / 2));
  const auto file = ImageEncoder::encode(picture, ImageFileType::Gif).value();
  EXPECT_EQ(readByOther(file, QStringLiteral("gif")), picture);
  EXPECT_EQ(ImageDecoder::decode(file).value_or(QImage()), picture);

  const QImage manyColours = sample({200, 150}, SampleKind::HasAlpha);
  const QImage read =
      readByOther(ImageEncoder::encode(manyColours, ImageFileType::Gif).value(), QStringLiteral("gif"));
  for (int y = 0; y < 150; ++y)
    for (int x = 0; x < 200; ++x)
      ASSERT_EQ(read.pixelColor(x, y).alpha(), manyColours.pixelColor(x, y).alpha() < 128 ? 0 : 255);
}

TEST(ImageEncoder, dithersGifsOfManyColours) {
  QImage picture = grey({256, 256});
  picture.setPixelColor(0, 0, Qt::white);
  for (int y = 64; y < 192; ++y)  // a window on the slope
    for (int x = 64; x < 192; ++x)
      picture.setPixelColor(x, y, QColor(250, 251, 253));
  const QImage read =
      readByOther(ImageEncoder::encode(picture, ImageFileType::Gif).value(), QStringLiteral("gif"));
  ASSERT_EQ(read.size(), picture.size());
  EXPECT_LT(meanDifference(read, picture), 8);
  // From afar, the slope is as it was: no bands.
  const QSize afar(32, 32);
  EXPECT_LE(largestDifference(read.scaled(afar, Qt::IgnoreAspectRatio, Qt::SmoothTransformation),
                              picture.scaled(afar, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)),
            7);
  for (int y = 80; y < 192; ++y)
    for (int x = 80; x < 176; ++x)
      ASSERT_EQ(read.pixelColor(x, y), QColor(250, 251, 253)) << x << ' ' << y;
  EXPECT_FALSE(
      ImageEncoder::encode(QImage(65536, 1, QImage::Format_RGBA8888_Premultiplied), ImageFileType::Gif));
}
