#include "platform/imaging/drawing/DrawingSurface.h"

#include <gtest/gtest.h>

using platform::DrawingSurface;
using platform::RoundLine;

namespace {

QImage plain(const QSize& size, const QColor& colour) {
  QImage picture(size, QImage::Format_RGBA8888_Premultiplied);
  picture.fill(colour);
  return picture;
}

TEST(DrawingSurface, sharesItsPixelsUntilSomethingIsDrawn) {
  const QImage picture = plain({20, 10}, Qt::blue);
  EXPECT_EQ(DrawingSurface(picture).finish().constBits(), picture.constBits());
  DrawingSurface surface(picture);
  surface.draw(plain({1, 1}, Qt::red), {0, 0, 1, 1});
  const QImage drawn = surface.finish();
  EXPECT_EQ(drawn.pixelColor(0, 0), QColor(Qt::red));
  EXPECT_EQ(drawn.pixelColor(0, 9), QColor(Qt::blue));
  EXPECT_EQ(picture.pixelColor(0, 0), QColor(Qt::blue));
}

TEST(DrawingSurface, coversTheEdgesOfARectangleInPart) {
  DrawingSurface surface(plain({20, 20}, Qt::black));
  const QImage white = plain({20, 20}, Qt::white);
  surface.replace(QRectF(2.5, 12.75, 30, 4), white, {0, 0});
  const QImage drawn = surface.finish();
  const int expected[][3] = {{2, 16, 96}, {3, 16, 191}, {2, 15, 128}, {3, 15, 255}, {19, 13, 255},
                             {3, 12, 64}, {3, 11, 0},   {1, 15, 0},   {3, 17, 0}};
  for (const auto& [x, y, value] : expected)
    EXPECT_NEAR(qRed(drawn.pixel(x, y)), value, 2) << x << ", " << y;
}

TEST(DrawingSurface, replacesWithoutShiningThrough) {
  const QColor faint(255, 0, 0, 64);
  for (const bool isLine : {false, true}) {
    DrawingSurface surface(plain({40, 40}, Qt::white));
    const QList<QPointF> points{{10, 20}, {30, 20}};
    // The image covers the shape only; its pixels are laid one on one.
    QImage part = plain({40, 20}, faint);
    part.setPixelColor(20, 5, QColor(0, 0, 255, 128));
    if (isLine)
      surface.replace(RoundLine{points, 16}, part, {0, 10});
    else
      surface.replace(QRectF(2, 12, 36, 16), part, {0, 10});
    const QImage drawn = surface.finish();
    EXPECT_EQ(drawn.pixel(15, 20), plain({1, 1}, faint).pixel(0, 0));
    EXPECT_EQ(drawn.pixelColor(20, 15).alpha(), 128);
    EXPECT_EQ(drawn.pixelColor(20, 5), QColor(Qt::white));
  }
}

TEST(DrawingSurface, aSliverOfAnImageShowsNothingOfItsOtherEdge) {
  QImage image = plain({400, 300}, Qt::white);
  QPainter(&image).fillRect(0, 0, 200, 300, Qt::blue);
  for (const double inside : {0.01, 0.022, 0.028, 0.04, 0.1, 0.19})
    for (const double width : {4.1, 7.3, 12.02, 22.062, 75.0}) {
      DrawingSurface surface(plain({60, 50}, Qt::black));
      surface.draw(image, {inside - width, -11, width, 40});
      const QImage drawn = surface.finish();
      for (int y = 0; y < 50; ++y)
        ASSERT_EQ(qBlue(drawn.pixel(0, y)), qRed(drawn.pixel(0, y))) << inside << " of " << width;
    }
}

TEST(DrawingSurface, changesNothingOutsideOfItsDirtyRectangle) {
  const QImage before = plain({200, 160}, Qt::black);
  const QImage white = plain({200, 160}, Qt::white);
  const QList<QPointF> points{{-10, 20}, {190, 150}, {30, 90}};
  const auto drawnIn = [&](const QRect& dirty) {
    DrawingSurface surface(before, dirty);
    surface.replace(QRectF(10.5, 10.5, 120, 40), white, {0, 0});
    surface.lay(plain({300, 30}, QColor(0, 0, 255, 100)), {-20, 60});
    surface.replace(RoundLine{points, 24}, white, {0, 0});
    surface.draw({{RoundLine{points, 7}, Qt::red}});
    surface.draw(plain({9, 9}, Qt::green), {100, 90, 60.5, 40}, 0.5);
    return surface.finish();
  };
  const QImage whole = drawnIn({});
  QImage tiled = before;
  for (const QRect& dirty :
       {QRect(-5, -5, 78, 70), QRect(73, 0, 300, 65), QRect(0, 65, 31, 95), QRect(31, 65, 169, 95)}) {
    const QImage part = drawnIn(dirty);
    for (int y = 0; y < 160; ++y)
      for (int x = 0; x < 200; ++x) {
        if (dirty.contains(x, y))
          tiled.setPixel(x, y, part.pixel(x, y));
        else
          ASSERT_EQ(part.pixel(x, y), before.pixel(x, y)) << x << ", " << y;
      }
  }
  EXPECT_EQ(tiled, whole);
}

}  // namespace
