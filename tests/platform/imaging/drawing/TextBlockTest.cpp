#include "platform/imaging/drawing/TextBlock.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

using platform::TextAlignment;
using platform::TextBlock;
using platform::TextStyle;

namespace {

TextStyle styled(double fontSize, const QString& font = QStringLiteral("DejaVu Sans Bold")) {
  TextStyle style;
  style.font = font;
  style.fontSize = fontSize;
  style.colour = Qt::white;
  return style;
}

QImage painted(const TextBlock& block, double zoom = 1, const QSize& size = {900, 500}) {
  QImage picture(size, QImage::Format_RGBA8888_Premultiplied);
  picture.fill(Qt::black);
  QPainter painter(&picture);
  painter.scale(zoom, zoom);
  block.draw(painter, QPointF(100, 50) / zoom);
  return picture;
}

QRect inked(const QImage& picture, const QRect& within) {
  QRect box;
  for (int y = within.top(); y <= within.bottom(); ++y)
    for (int x = within.left(); x <= within.right(); ++x)
      if (qRed(picture.pixel(x, y)) > 100)
        box |= QRect(x, y, 1, 1);
  return box;
}
QRect inked(const QImage& picture) {
  return inked(picture, picture.rect());
}

const QString mixed = QStringLiteral("소렐 Sorrel — AV, fi\nשלום\n\n워터마크 😀");

TEST(TextBlock, measuresAndDrawsTheSameAtEverySize) {
  TextStyle style = styled(30);
  style.tracking = 1.5;
  style.lineSpacing = 7;
  const TextBlock block(mixed, style);
  const QImage large = painted(TextBlock(mixed, [&] {
    TextStyle twice = style;
    twice.fontSize *= 2, twice.tracking *= 2, twice.lineSpacing *= 2;
    return twice;
  }()));
  for (const double factor : {0.1, 0.37, 1.0, 2.88, 11.0}) {
    TextStyle scaled = style;
    scaled.fontSize *= factor, scaled.tracking *= factor, scaled.lineSpacing *= factor;
    const QSizeF size = TextBlock(mixed, scaled).size();
    EXPECT_NEAR(size.width(), block.size().width() * factor, 0.02 * factor);
    EXPECT_NEAR(size.height(), block.size().height() * factor, 0.02 * factor);
  }
  EXPECT_EQ(painted(block, 2), large) << "a painter's zoom and a larger size are one thing";
}

TEST(TextBlock, alignsTheLinesInTheBlock) {
  for (const TextAlignment alignment : {TextAlignment::left, TextAlignment::centre, TextAlignment::right}) {
    TextStyle style = styled(60);
    style.alignment = alignment;
    const TextBlock block(QStringLiteral("HHHHHH\nH"), style);
    const QImage picture = painted(block);
    const int middle = 50 + int(block.size().height() / 2);
    const QRect wide = inked(picture, {0, 0, 900, middle});
    const QRect narrow = inked(picture, {0, middle, 900, 500 - middle});
    if (alignment == TextAlignment::left)
      EXPECT_NEAR(narrow.left(), wide.left(), 1);
    else if (alignment == TextAlignment::right)
      EXPECT_NEAR(narrow.right(), wide.right(), 1);
    else
      EXPECT_NEAR(narrow.center().x(), wide.center().x(), 1);
    EXPECT_TRUE(QRectF({100, 50}, block.size()).toAlignedRect().contains(wide | narrow));
  }
}

TEST(TextBlock, shapesHangulAndRightToLeftText) {
  const auto widthOf = [](const char* text) {
    return TextBlock(QString::fromUtf8(text), styled(40, QStringLiteral("NanumGothic"))).size().width();
  };
  EXPECT_NEAR(widthOf("\u1112\u1161\u11AB"), widthOf("한"), 0.5) << "letters join into a syllable";
  // Shin is wide and stands on the line; yod hangs at its top, so the lower part shows where the first letter
  // is.
  const TextBlock block(QStringLiteral("שיייי"), styled(80));
  const QImage picture = painted(block);
  const QRect whole = inked(picture);
  const QRect low = inked(picture, {0, whole.bottom() - 8, 900, 9});
  EXPECT_GT(low.left(), whole.center().x());
}

TEST(TextBlock, findsAFamilyOrAFontByName) {
  const auto imageOf = [](const char* font) {
    return painted(TextBlock(QStringLiteral("Sorrel"), styled(60, QString::fromUtf8(font))));
  };
  const QImage regular = imageOf("DejaVu Sans");
  const QImage bold = imageOf("DejaVu Sans Bold");
  EXPECT_NE(regular, bold);
  EXPECT_EQ(imageOf("DejaVuSans-Bold"), bold);
  EXPECT_NE(imageOf("NanumGothic"), regular);
  EXPECT_NE(imageOf("NanumGothic Bold"), imageOf("NanumGothic"));
  const QFontInfo system(QFontDatabase::systemFont(QFontDatabase::GeneralFont));
  EXPECT_EQ(imageOf("No Such Font"), imageOf(""));
  EXPECT_NE(imageOf(""), painted(TextBlock(QStringLiteral("Sorrel"), styled(60, system.family()))))
      << "the system font is the bold one";
}

TEST(TextBlock, theShadowIsSoftAndOfTheTextsOwnAlpha) {
  TextStyle style = styled(100);
  style.colour = QColor(255, 255, 255, 128);
  const TextBlock plain(QStringLiteral("■"), style);
  style.shadow = platform::TextShadow{QColor(255, 0, 0, 128), 12, {200, 30}};
  QImage picture(600, 300, QImage::Format_RGBA8888_Premultiplied);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  TextBlock(QStringLiteral("■"), style).draw(painter, {100, 50});
  painter.end();

  const QRect text = inked(painted(plain));
  const QRect shadow = text.translated(200, 30);
  EXPECT_EQ(picture.pixelColor(text.center()).alpha(), 128);
  EXPECT_NEAR(picture.pixelColor(shadow.center()).alpha(), 64, 2);
  EXPECT_NEAR(picture.pixelColor(shadow.right() + 1, shadow.center().y()).alpha(), 32, 4)
      << "half at its edge";
  const int oneSigmaOut = 64 * 16 / 100;  // 15.9 % of a gaussian lie beyond one sigma: 6 pixels
  EXPECT_NEAR(picture.pixelColor(shadow.right() + 7, shadow.center().y()).alpha(), oneSigmaOut, 3);
  EXPECT_EQ(picture.pixelColor(shadow.right() + 40, shadow.center().y()).alpha(), 0);
  EXPECT_NEAR(picture.pixelColor(shadow.center()).red(), 255, 2);
}

TEST(TextBlock, aTextFarLargerThanThePictureCostsNoMoreThanThePicture) {
  TextStyle style = styled(400);
  style.shadow = platform::TextShadow{Qt::black, 40, {0, 16}};
  EXPECT_FALSE(inked(painted(TextBlock(QString(2000, u'M'), style))).isEmpty());
  EXPECT_TRUE(inked(painted(TextBlock(QString(200, u' '), style))).isEmpty());
}

TEST(TextBlock, drawsPicturesOfEmoji) {
  if (!QFontDatabase::hasFamily(QStringLiteral("Noto Color Emoji")))
    GTEST_SKIP() << "no font with pictures is installed";
  const TextBlock block(QStringLiteral("👍"), styled(80));
  const QImage picture = painted(block);
  int colourful = 0;
  for (int y = 0; y < 500; ++y)
    for (int x = 0; x < 900; ++x)
      colourful += qRed(picture.pixel(x, y)) > qBlue(picture.pixel(x, y)) + 80;
  EXPECT_GT(colourful, 1500);
  EXPECT_TRUE(QRectF({100, 50}, block.size()).adjusted(-8, -8, 8, 8).contains(QRectF(inked(picture))));
}

}  // namespace
