#include "platform/desktop/Symbols.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using platform::drawSymbol, platform::symbolPixmap;

namespace {

QString path(const QString& name) {
  return u":/sorrel/images/"_s + name;
}

/// The part of an image's pixels for which `holds`, 0 to 1.
double share(const QImage& image, const std::function<bool(int, int)>& holds) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      count += holds(x, y) ? 1 : 0;
  return double(count) / (image.width() * image.height());
}

/// Relative luminance by WCAG 2, 0 to 1.
double luminance(QRgb color) {
  const auto linear = [](int channel) {
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) + 0.0722 * linear(qBlue(color));
}

double contrast(QRgb one, QRgb other) {
  const auto [low, high] = std::minmax({luminance(one), luminance(other)});
  return (high + 0.05) / (low + 0.05);
}

TEST(Images, everyDrawingCanBeDrawn) {
  for (const char* name : {"FolderIconEmpty", "FolderIconFull", "HistoryEmptyArt", "MenuBarIcon",
                           "MenuBarIconEmpty", "sorrel"}) {
    QSvgRenderer drawing(path(QString::fromLatin1(name) + u".svg"_s));
    ASSERT_TRUE(drawing.isValid()) << name;
    QImage image(64, 64, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    EXPECT_GT(share(image, [&](int x, int y) { return qAlpha(image.pixel(x, y)) > 128; }), 0.25) << name;
  }
}

TEST(Images, theStatusItemTellsEmptyFromFullOnEveryBarAtEverySize) {
  for (const int size : {16, 18, 20, 22, 24, 32, 36, 44, 48, 64}) {
    const auto read = [size](const char* name) {
      return QImage(path(u"%1@%2.png"_s.arg(QString::fromLatin1(name)).arg(size)))
          .convertToFormat(QImage::Format_ARGB32);
    };
    const QImage full = read("MenuBarIcon");
    const QImage empty = read("MenuBarIconEmpty");
    ASSERT_EQ(full.size(), QSize(size, size));
    ASSERT_EQ(empty.size(), QSize(size, size));
    const auto tellsApart = [&](int x, int y) { return contrast(full.pixel(x, y), empty.pixel(x, y)) > 1.3; };
    EXPECT_GT(share(full, tellsApart), 0.2) << size;
    // Somewhere the bottle stands out by at least as many pixels as a line that is half as long again as its
    // side.
    for (const QRgb bar : {0xFFFFFFu, 0x808080u, 0x141414u}) {
      for (const QImage& image : {full, empty}) {
        const auto standsOut = [&](int x, int y) {
          return qAlpha(image.pixel(x, y)) == 255 && contrast(image.pixel(x, y), bar) > 2;
        };
        EXPECT_GT(share(image, standsOut), 1.5 / size) << size << " on " << std::hex << bar;
      }
    }
  }
}

TEST(Symbols, everyOneTakesItsColorsAndStaysInItsBox) {
  const QStringList marked =
      u"camera.viewfinder exclamationmark.triangle.fill xmark.circle.fill"_s.split(u' ');
  const QStringList files = QDir(u":/sorrel/symbols"_s).entryList();
  ASSERT_FALSE(files.isEmpty());
  for (const QString& file : files) {
    const QString name = QFileInfo(file).completeBaseName();
    const QImage image = symbolPixmap(name, 24, 2, {Qt::red, Qt::blue}).toImage();
    ASSERT_EQ(image.size(), QSize(48, 48)) << qPrintable(name);
    const auto is = [&](QRgb color) {
      return [&image, color](int x, int y) { return image.pixel(x, y) == color; };
    };
    const auto onEdge = [&](int x, int y) {
      return (x % 47 == 0 || y % 47 == 0) && qAlpha(image.pixel(x, y)) > 0;
    };
    EXPECT_EQ(share(image, onEdge), 0) << qPrintable(name);
    EXPECT_GT(share(image, is(0xFFFF0000)), 0.03) << qPrintable(name);
    EXPECT_EQ(share(image, is(0xFF0000FF)) > 0.01, marked.contains(name)) << qPrintable(name);
  }
}

TEST(Symbols, areDrawnOnWholePixelsAndUnknownOnesNotAtAll) {
  QImage image(30, 30, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  image.setDevicePixelRatio(1.25);
  QPainter painter(&image);
  EXPECT_FALSE(drawSymbol(painter, {0, 0, 12, 12}, u"MenuBarIcon"_s, {Qt::red}));
  EXPECT_TRUE(drawSymbol(painter, {3.3, 3.3, 12, 12}, u"crop"_s, {Qt::red}));
  painter.end();
  const QImage symbol = symbolPixmap(u"crop"_s, 12, 1.25, {Qt::red}).toImage();
  EXPECT_EQ(image.copy(4, 4, 15, 15).convertToFormat(symbol.format()), symbol);
  EXPECT_TRUE(symbolPixmap(u"MenuBarIcon"_s, 12, 1.25, {Qt::red}).isNull());
}

}  // namespace
