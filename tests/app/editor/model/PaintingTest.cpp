// What is painted: on the screen and in the file, in parts, at the picture's edges, and again after a change.

#include "app/editor/model/Painting.h"
#include "tests/app/editor/model/DocumentFixture.h"
#include "tests/app/editor/model/RandomEdits.h"

using namespace sorrel;

namespace {

class PaintingTest : public DocumentFixture {
 protected:
  /// What a canvas shows at a scale: everything, gestures under way too. Only the pixels in `dirty` are of
  /// use.
  static QImage shown(EditorModel& model, double scale, const QRect& dirty = {}) {
    const Document document = model.document();
    const QSize size = (scale * document.displaySize).toSize();
    const Placement placement{.scale = scale,
                              .origin = {},
                              .displaySize = document.displaySize,
                              .lowerEdge = double(size.height())};
    platform::DrawingSurface surface(document.baseImage.scaled(size), dirty);
    FilteredPictures pictures;
    for (const BlurStyle style : {BlurStyle::gaussian, BlurStyle::mosaic})
      pictures.at(size_t(style)).image = model.processed(style, size);
    QList<BlurRegion> regions = document.blurRegions;
    if (model.currentBlurStroke.get())
      regions.append({.kind = BlurRegion::Stroke{*model.currentBlurStroke.get(), model.blurBrushWidth},
                      .style = model.blurStyle});
    if (model.currentBlurRect.get())
      regions.append({.kind = *model.currentBlurRect.get(), .style = model.blurStyle});
    paintBlurRegions(surface, regions, pictures, placement);
    QImage ink(size, QImage::Format_RGBA8888_Premultiplied);
    ink.fill(Qt::transparent);
    platform::DrawingSurface inked(ink, dirty);
    paintStrokes(inked, document.strokes, placement);
    if (model.current.get())
      paintStrokes(inked, {*model.current.get()}, placement);
    surface.lay(inked.finish(), {0, 0});
    for (const PlacedPicture& mark : {logoPicture(document, placement, surface.dirty()),
                                      textPicture(document.textWM, {}, placement, surface.dirty())})
      surface.lay(mark.image, mark.topLeft);
    return surface.finish();
  }

  /// A picture of fine checks, so that whatever isn't blurred can be told.
  static Document checks(const QSize& size) {
    Document document;
    document.baseImage = QImage(size, QImage::Format_RGBA8888_Premultiplied);
    for (int y = 0; y < size.height(); ++y)
      for (int x = 0; x < size.width(); ++x)
        reinterpret_cast<quint32*>(document.baseImage.scanLine(y))[x] = (x + y) % 2 ? ~0U : 0xff000000U;
    document.imagePixelSize = size;
    document.displaySize = Document::fitted(size);
    return document;
  }
};

TEST_F(PaintingTest, randomDocumentsAreSavedAsTheyAreShown) {
  RandomEdits edits(11);
  for (int round = 0; round < 12; ++round) {
    const auto model = open(map({260, 160 + round}));
    for (int step = 0; step < 25; ++step) {
      edits.apply(*model);
      if (edits.below(4) == 0)
        model->undoLast();
    }
    const QImage onScreen = shown(*model, 1);
    EXPECT_EQ(flattened(*model), onScreen) << round;
    ASSERT_TRUE(model->save());
    EXPECT_EQ(EditorModel::open(model->fileURL)->baseImage.get(), onScreen) << round;
  }
}

TEST_F(PaintingTest, aPartLooksAsItDoesInTheWhole) {
  RandomEdits edits(12);
  for (const double scale : {0.5, 1.0, 2.6}) {
    const auto model = open(map({300, 200}));
    while (model->undoStack->size() < 8)
      edits.apply(*model);
    const QImage whole = shown(*model, scale);
    for (int round = 0; round < 12; ++round) {
      const QRect part = QRect(edits.below(whole.width()), edits.below(whole.height()), 1 + edits.below(150),
                               1 + edits.below(150)) &
                         whole.rect();
      EXPECT_EQ(shown(*model, scale, part).copy(part), whole.copy(part)) << scale << ", " << round;
    }
  }
}

/// Each change is told with a rectangle, and nothing outside of it looks different.
TEST_F(PaintingTest, tellsWhatHasToBePaintedAgain) {
  RandomEdits edits(13);
  for (int round = 0; round < 6; ++round) {
    const auto model = open(map({260, 160}));
    QImage painted = shown(*model, 1);
    int told = 0;
    const auto listening = model->observeRepainting([&](EditorModel::Field, const QRectF& rectangle) {
      ++told;
      const QImage now = shown(*model, 1);
      if (now.size() == painted.size()) {
        const QRect again = rectangle.toAlignedRect().adjusted(-1, -1, 1, 1);
        const auto isOutside = [&](int x, int y) { return !again.contains(x, y); };
        EXPECT_EQ(worstDifference(now, painted, isOutside), 0) << "round " << round;
      }
      painted = now;
    });
    for (int step = 0; step < 30; ++step) {
      edits.apply(*model);
      if (edits.below(4) == 0)
        model->undoLast();
      ASSERT_EQ(shown(*model, 1), painted) << "not told, round " << round << ", step " << step;
    }
    EXPECT_GT(told, 30);
  }
}

TEST_F(PaintingTest, anAddedPointIsPaintedAloneAndFieldsAreToldApart) {
  const auto model = open({400, 300});
  QList<std::pair<EditorModel::Field, QRectF>> told;
  const auto listening = model->observeRepainting([&](EditorModel::Field field, const QRectF& rectangle) {
    told.append({field, rectangle});
  });
  QList<EditorModel::Field> changing;
  const auto hearing = model->observe([&](EditorModel::Field field) { changing.append(field); });
  model->lineWidth = 10;
  model->begin({50, 50});
  for (const QPointF& point : {QPointF(150, 60), QPointF(160, 200)})
    model->current.change([&](auto& stroke) { stroke->points.append(point); });
  EXPECT_EQ(told.last().second, QRectF(145, 55, 20, 150));
  model->commit();
  EXPECT_EQ(changing.sliced(changing.size() - 3),
            (QList<EditorModel::Field>{&model->strokes, &model->undoStack, &model->current}));
  told.clear();
  model->undoLast();
  EXPECT_EQ(told, (decltype(told){{&model->strokes, QRectF(45, 45, 120, 160)}}));
  told.clear();
  model->tool = EditorModel::Tool::crop;
  model->colorHex = 5;
  model->blurBrushWidth = 9;
  EXPECT_TRUE(told.isEmpty()) << "nothing of it can be seen";
}

TEST_F(PaintingTest, whoCoversTheWholeDisplayCoversTheWholePicture) {
  for (const QSize& size : {QSize(1366, 768), QSize(1170, 10'000), QSize(1055, 30'000), QSize(2880, 1800)}) {
    Document document = checks(size);
    const QImage blurred = filtered(document.baseImage, BlurStyle::mosaic, 0.5, size.width());
    EXPECT_EQ(document.keptPixels({{0, 0}, document.displaySize}), QRect({0, 0}, size)) << size.height();
    document.blurRegions = {{.kind = QRectF({0, 0}, document.displaySize), .style = BlurStyle::mosaic}};
    EXPECT_EQ(sorrel::flattened(document, 0.5, {}), blurred) << size.height();

    // A brush that covers the display's lower edge.
    const double y = document.displaySize.height() - 10;
    document.blurRegions = {
        {.kind = BlurRegion::Stroke{{{-30, y}, {document.displaySize.width() + 30, y}}, 34},
         .style = BlurStyle::mosaic}};
    const QImage brushed = sorrel::flattened(document, 0.5, {});
    const int top = int(std::ceil((y - 16) * document.placement()->scale));
    const QRect below(0, top, size.width(), size.height() - top);
    EXPECT_EQ(brushed.copy(below), blurred.copy(below)) << size.height();

    // Two points above the edge nothing reaches farther than it says.
    document.blurRegions.first().kind = BlurRegion::Stroke{{{-30, y - 9}, {2000, y - 9}}, 34};
    document.blurRegions.append(
        {.kind = QRectF(0, 0, document.displaySize.width(), y + 8), .style = BlurStyle::mosaic});
    const int end = int(std::ceil((y + 8) * document.placement()->scale));
    const QRect rest(0, end, size.width(), size.height() - end);
    EXPECT_EQ(sorrel::flattened(document, 0.5, {}).copy(rest), document.baseImage.copy(rest))
        << size.height();
  }
}

/// At the middles of cells, the only places where a smaller picture can hold the same colour.
TEST_F(PaintingTest, theMosaicOnTheScreenHasTheFilesCells) {
  const QImage picture = noise({2880, 1800}).scaled(40, 25).scaled(2880, 1800);
  const auto model = open(picture);
  const QImage file = filtered(picture, BlurStyle::mosaic, 0.5, 2880);
  const double cell = 2880 * 0.023;
  for (const double scale : {0.7, 1.0, 1.9}) {
    const QSize size = (scale * model->displaySize.get()).toSize();
    const QImage onScreen = model->processed(BlurStyle::mosaic, size);
    ASSERT_EQ(onScreen.size(), size);
    for (double x = 150 + cell / 2; x < 2800; x += cell)
      for (double y = 150 + cell / 2; y < 1700; y += cell) {
        const QColor expected = file.pixelColor(int(x), int(1800 - y));
        const double factor = size.width() / 2880.0;
        const QColor seen = onScreen.pixelColor(int(x * factor), int(size.height() - y * factor));
        ASSERT_NEAR(seen.red(), expected.red(), 12) << scale << ": " << x << ", " << y;
        ASSERT_NEAR(seen.blue(), expected.blue(), 12) << scale << ": " << x << ", " << y;
      }
  }
  EXPECT_EQ(model->processed(BlurStyle::mosaic, {9000, 9000}), file) << "no larger than the file";
}

}  // namespace
