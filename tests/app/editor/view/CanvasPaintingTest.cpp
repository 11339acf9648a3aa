// What the canvas paints besides the document's layers, on a screen of two device pixels a point.

#include "app/editor/view/Guide.h"
#include "app/editor/view/StretchedView.h"

#include <QPainter>

#include <gtest/gtest.h>

using namespace sorrel;

namespace {

QImage fineScreen() {
  QImage screen(200, 200, QImage::Format_RGB32);
  screen.fill(Qt::gray);
  screen.setDevicePixelRatio(2);
  return screen;
}

TEST(StretchedViewTest, whatWasBeyondTheViewIsSeenInTheWholePicture) {
  QImage shown(128, 128, QImage::Format_RGB32), base(50, 50, QImage::Format_RGB32);
  shown.fill(Qt::red);
  base.fill(Qt::blue);
  StretchedView stretched;
  stretched.begin(shown, CanvasView::of({200, 200}, {0, 0, 128, 128}, 1, {200, 200}), base, {100, 100});
  QImage screen = fineScreen();
  QPainter painter(&screen);
  painter.scale(0.5, 0.5);
  stretched.paint(painter, {0, 0, 200, 200}, {0, 0, 160, 200});
  painter.end();
  EXPECT_EQ(screen.pixelColor(127, 127), Qt::red);
  EXPECT_EQ(screen.pixelColor(128, 50), Qt::blue);
  EXPECT_EQ(screen.pixelColor(50, 199), Qt::blue);
  EXPECT_EQ(screen.pixelColor(160, 50), QColor(Qt::gray)) << "not exposed";
}

TEST(GuideCircleTest, looksAsStrokedOfEachSizeAndAtEachZoomOnAnotherPixel) {
  GuideCircle circle;
  for (const auto& [diameter, zoom] : {std::pair(34.0, 1.0), {20.0, 1.0}, {20.0, 1.5}}) {
    const QPointF center(30 / zoom, 40 / zoom);
    const auto painted = [&, zoom = zoom](const auto& paint) {
      QImage screen = fineScreen();
      QPainter painter(&screen);
      painter.setRenderHint(QPainter::Antialiasing);
      painter.scale(zoom, zoom);
      paint(painter);
      return screen;
    };
    QPainterPath path;
    path.addEllipse(center, diameter / 2, diameter / 2);
    const QImage stroked =
        painted([&](QPainter& painter) { strokeGuide(painter, path, Emphasis::Emphasized); });
    const QImage kept = painted([&, diameter = diameter](QPainter& painter) {
      painter.save();
      painter.translate(5, 0);
      circle.paint(painter, center - QPointF(5, 0), diameter);
      painter.restore();
    });
    const QRgb ground = fineScreen().pixel(0, 0);
    int worst = 0, drawn = 0;
    for (int y = 0; y < stroked.height(); ++y)
      for (int x = 0; x < stroked.width(); ++x) {
        worst = std::max(worst, std::abs(qGreen(stroked.pixel(x, y)) - qGreen(kept.pixel(x, y))));
        drawn += stroked.pixel(x, y) != ground;
      }
    EXPECT_GT(drawn, 100);
    EXPECT_LE(worst, 1) << diameter << " at " << zoom;
  }
}

}  // namespace
