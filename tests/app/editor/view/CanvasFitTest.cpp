#include "app/editor/view/CanvasFit.h"

#include <gtest/gtest.h>

using namespace sorrel;

namespace {

CanvasFit fitOf(const QSizeF& display, const QSize& pixels, double ratio = 1,
                const QSizeF& area = QSizeF(1104, 744)) {
  return CanvasFit().resized(area, ratio, display, pixels);
}

TEST(CanvasFitTest, fitsThePictureBetweenBounds) {
  EXPECT_EQ(fitOf({500, 300}, {500, 300}).fit(), 1) << "not enlarged";
  EXPECT_EQ(fitOf({1000, 625}, {2880, 1800}, 1, {548, 744}).fit(), 0.5);
  EXPECT_EQ(fitOf({1000, 625}, {2880, 1800}, 1, {1104, 173}).fit(), 0.2);
  EXPECT_EQ(fitOf({1000, 625}, {2880, 1800}, 1, {50, 50}).fit(), 0.05) << "and may be larger than the canvas";
  EXPECT_EQ(fitOf({1000, 625}, {2880, 1800}, 1, {10, 10}).fit(), 0.05);
  EXPECT_EQ(fitOf({0, 640}, {1, 30'000}).fit(), 1);
}

TEST(CanvasFitTest, showsWholePixelsInTheFilesProportions) {
  EXPECT_EQ(fitOf({1000, 625}, {2880, 1800}).shown(), QSize(1000, 625));
  EXPECT_EQ(fitOf({1000, 625}, {2880, 1800}, 1.25).shown(), QSize(1250, 781));
  EXPECT_EQ(fitOf({410, 640}, {640, 1000}, 640 / 410.0).shown(), QSize(640, 1000)) << "as in the file";
  EXPECT_EQ(fitOf({23, 640}, {1055, 30'000}).shown(), QSize(23, 654)) << "with what lies below the display";
  EXPECT_EQ(fitOf({0, 640}, {1, 30'000}).shown(), QSize(1, 640));
}

TEST(CanvasFitTest, centresAndScrollsOnlyWhileZoomed) {
  const CanvasFit fitted = fitOf({500, 300}, {500, 300});
  EXPECT_EQ(fitted.picture(), QRect(302, 222, 500, 300));
  EXPECT_EQ(fitted.scrolledTo({50, 50}), fitted);
  EXPECT_FALSE(fitted.zoomedTo(1.0005, {}).isZoomed());

  const CanvasFit wide = fitted.zoomedTo(4, {552, 372});
  EXPECT_EQ(wide.content(), QSize(2000, 1200));
  EXPECT_EQ(wide.scrollLimit(), QPoint(896, 456));
  EXPECT_EQ(wide.scrolled, QPoint(448, 228)) << "the middle stays";
  EXPECT_EQ(wide.scrolledTo({-9, 9999}).picture(), QRect(0, 744 - 1200, 2000, 1200));
  EXPECT_EQ(wide.scrolledTo({0, 0}).visible(), QRect(0, 0, 1104, 744));

  const CanvasFit strip = fitOf({500, 50}, {500, 50}).zoomedTo(4, {552, 372});
  EXPECT_EQ(strip.picture().top(), (744 - 200) / 2) << "what is lower than the canvas stays in its middle";
  EXPECT_EQ(strip.scrollLimit().y(), 0);
}

TEST(CanvasFitTest, zoomingKeepsWhatIsUnderTheAnchor) {
  for (const double ratio : {1.0, 1.25, 1.5, 2.0}) {
    CanvasFit fit = fitOf({1000, 625}, {2880, 1800}, ratio).zoomedTo(2, {552, 372});
    for (const QPointF& anchor : {QPointF(400, 300), QPointF(700, 500)}) {
      const QPointF before = fit.toDisplay(anchor);
      fit = fit.zoomedTo(fit.zoom * 1.5, anchor);
      const QPointF off = fit.toDisplay(anchor) - before;
      EXPECT_LE(off.manhattanLength() * fit.pixelsPerUnit(), 1.01) << ratio;
      EXPECT_LE((fit.toCanvas(fit.toDisplay(anchor)) - anchor).manhattanLength(), 1e-9);
    }
    const CanvasFit larger = fit.resized({1300, 900}, ratio, fit.displaySize, fit.imagePixelSize);
    const QPointF moved = larger.toDisplay({650, 450}) - fit.toDisplay({552, 372});
    EXPECT_LE(moved.manhattanLength(), 3) << "the middle stays there in a larger canvas";
  }
}

TEST(CanvasZoomTest, commandsStepAndPinchesMultiply) {
  CanvasZoom zoom;
  for (const double expected : {1.5, 2.25, 3.375, 5.0625, 7.59375, 8.0, 8.0}) {
    zoom.in();
    EXPECT_DOUBLE_EQ(zoom.factor, expected);
  }
  EXPECT_EQ(zoom.pinchAnchor, 1);
  zoom.fit();
  zoom.out();
  EXPECT_EQ(zoom.factor, 1);

  zoom.pinch(2);
  zoom.endPinch();
  zoom.in();
  EXPECT_EQ(zoom.factor, 3);
  EXPECT_EQ(zoom.pinchAnchor, 2);
  zoom.pinch(1.5);
  EXPECT_EQ(zoom.factor, 3);
  zoom.pinch(100);
  EXPECT_EQ(zoom.factor, 8);
  zoom.pinch(0.1);
  EXPECT_EQ(zoom.factor, 1);
  zoom.in();
  zoom.fit();
  EXPECT_EQ(zoom, (CanvasZoom{1, 1}));

  zoom.in();
  zoom.turnWheel(4);
  EXPECT_NEAR(zoom.factor, 3, 1e-12) << "the wheel goes on from what is shown";
  zoom.turnWheel(-100);
  EXPECT_EQ(zoom, (CanvasZoom{1, 1}));
}

}  // namespace
