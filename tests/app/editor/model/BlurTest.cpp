#include "platform/imaging/filters/GaussianBlur.h"
#include "platform/imaging/filters/Pixellate.h"
#include "tests/app/editor/model/DocumentFixture.h"

using namespace sorrel;
using platform::gaussianBlur;
using platform::pixellate;

namespace {

class BlurTest : public DocumentFixture {};

TEST_F(BlurTest, aGestureOfSomeSizeBecomesARegion) {
  const auto model = open({400, 300});
  const auto regionsAfter = [&](const auto& gesture) {
    gesture();
    EXPECT_FALSE(model->currentBlurRect.get() || model->currentBlurStroke.get());
    EXPECT_EQ(model->undoStack->size(), model->blurRegions->size());
    return model->blurRegions->size();
  };
  EXPECT_EQ(regionsAfter([&] { model->commitBlur(); }), 0);
  EXPECT_EQ(regionsAfter([&] { blurStroke(*model, {{5, 5}}); }), 0);
  EXPECT_EQ(regionsAfter([&] { blurArea(*model, {0, 0, 4, 100}); }), 0);
  EXPECT_EQ(regionsAfter([&] { blurArea(*model, {0, 0, 100, 4}); }), 0);
  EXPECT_EQ(regionsAfter([&] { blurArea(*model, {0, 0, 4.5, 100}); }), 1);
  model->blurBrushWidth = 12;
  model->blurStyle = BlurStyle::mosaic;
  EXPECT_EQ(regionsAfter([&] { blurStroke(*model, {{5, 5}, {6, 6}}); }), 2);
  model->blurBrushWidth = 50;
  model->blurStyle = BlurStyle::gaussian;
  EXPECT_EQ(model->blurRegions->at(0).kind, BlurRegion::Kind(QRectF(0, 0, 4.5, 100)));
  EXPECT_EQ(model->blurRegions->at(1).kind, BlurRegion::Kind(BlurRegion::Stroke{{{5, 5}, {6, 6}}, 12}));
  EXPECT_EQ(model->blurRegions->at(0).style, BlurStyle::gaussian);
  EXPECT_EQ(model->blurRegions->at(1).style, BlurStyle::mosaic);
  EXPECT_NE(model->blurRegions->at(0).id, model->blurRegions->at(1).id);
}

TEST_F(BlurTest, theStrengthFollowsTheWidth) {
  const QImage narrow = noise({100, 60});
  const auto small = open(narrow);
  small->blurIntensity = 0;
  EXPECT_EQ(small->processed(BlurStyle::gaussian), gaussianBlur(narrow, 4));
  EXPECT_EQ(small->processed(BlurStyle::mosaic), pixellate(narrow, 6));

  const QImage wide = noise({1000, 80});
  const auto model = open(wide);
  EXPECT_EQ(model->processed(BlurStyle::gaussian), gaussianBlur(wide, 14));
  EXPECT_EQ(model->processed(BlurStyle::mosaic), pixellate(wide, 23));
  model->blurIntensity = 1;
  EXPECT_EQ(model->processed(BlurStyle::gaussian), gaussianBlur(wide, 24));
  EXPECT_EQ(model->processed(BlurStyle::mosaic), pixellate(wide, 38));

  const auto reduced = open(noise({2000, 300}));
  EXPECT_EQ(reduced->processed(BlurStyle::gaussian).size(), QSize(1000, 150));
}

TEST_F(BlurTest, processedPicturesAreKeptUntilSomethingChangesThem) {
  const auto model = open(noise({1200, 300}));
  const auto kept = [&](BlurStyle style) { return model->processed(style).constBits(); };
  const uchar* const gaussian = kept(BlurStyle::gaussian);
  const QImage before = model->processed(BlurStyle::gaussian);
  EXPECT_EQ(kept(BlurStyle::gaussian), gaussian);
  blurArea(*model, {0, 0, 50, 50});
  model->undoLast();
  EXPECT_EQ(kept(BlurStyle::gaussian), gaussian);
  model->blurIntensity = model->blurIntensity.get();
  EXPECT_NE(kept(BlurStyle::gaussian), gaussian) << "each assignment counts";
  EXPECT_EQ(model->processed(BlurStyle::gaussian), before);
  model->applyCrop({0, 0, 500, 200});
  EXPECT_EQ(model->processed(BlurStyle::gaussian).size(), QSize(600, 240));
  model->undoLast();
  EXPECT_EQ(model->processed(BlurStyle::gaussian), before);
}

/// Regions of all kinds on a picture of 1.5 pixels for a point, against each being painted from a filter run
/// over the whole picture.
TEST_F(BlurTest, sharedPartialFilterRunsGiveThePixelsOfOneWholeRunEach) {
  const QImage picture = noise({1500, 400});
  const auto model = open(picture);
  model->blurIntensity = 0.3;
  const QImage gaussian = gaussianBlur(picture, 1500 * (0.3 * 0.02 + 0.004));
  const QImage mosaic = pixellate(picture, 1500 * (0.3 * 0.03 + 0.008));
  const QRectF areas[] = {
      {100, 50, 120, 60}, {150.3, 80.7, 200.1, 90.9}, {-20, 200, 90, 400}, {990, 5, 50, 60}};
  const QList<QPointF> strokes[] = {{{300, 100}, {420, 150}, {380, 200}},
                                    {{400, 60}, {560, 110}},
                                    {{700, 30}, {700, 30}},
                                    {{600, 250}, {2000, 300}}};
  QImage expected = picture;
  const auto paint = [&](const auto& covered) {
    const QImage& filtered = model->blurStyle == BlurStyle::gaussian ? gaussian : mosaic;
    layOver(
        expected, [&](int x, int y) { return pixelAt(filtered, x, y); }, covered);
    model->blurStyle = model->blurStyle == BlurStyle::gaussian ? BlurStyle::mosaic : BlurStyle::gaussian;
  };
  QImage edges = plain(picture.size(), Qt::black);  // of rectangles (red) and of lines (blue)
  for (const QRectF& area : areas) {
    blurArea(*model, area);
    const auto covered = [pixels = QRectF(1.5 * area.topLeft(), 1.5 * area.size())](int x, int y) {
      return coverage(pixels, x, y);
    };
    paint(covered);
    layOver(
        edges,
        [](int, int) {
          return Pixel{255, 0, 0, 255};
        },
        [&](int x, int y) { return covered(x, y) > 0 && covered(x, y) < 1; });
  }
  for (const QList<QPointF>& stroke : strokes) {
    blurStroke(*model, stroke);
    QList<QPointF> pixels;
    for (const QPointF& point : stroke)
      pixels << 1.5 * point;
    const double width = 1.5 * 34;
    paint([&](int x, int y) { return coverage(pixels, width, x, y); });
    layOver(
        edges,
        [](int, int) {
          return Pixel{0, 0, 255, 255};
        },
        [&](int x, int y) {
          return coverage(pixels, width - 1.2, x, y) < 1 && coverage(pixels, width + 1.2, x, y) > 0;
        });
  }
  const QImage drawn = flattened(*model);
  const auto isInside = [&](int x, int y) { return edges.pixel(x, y) == qRgb(0, 0, 0); };
  EXPECT_EQ(worstDifference(drawn, expected, isInside), 0);
  EXPECT_LE(worstDifference(drawn, expected, [&](int x, int y) { return qBlue(edges.pixel(x, y)) == 0; }), 3);
}

}  // namespace
