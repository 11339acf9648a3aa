#include "app/editor/view/Canvas.h"
#include "app/editor/view/CropTool.h"
#include "platform/base/MainQueue.h"
#include "tests/app/editor/model/DocumentFixture.h"

#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

using namespace sorrel;
using platform::ManualClock;

namespace {

/// A picture of 1000 by 600 on a canvas that shows it at half its size.
class CropToolTest : public DocumentFixture {
 protected:
  CropToolTest() {
    auto owned = std::make_unique<CropTool>(*model, *canvas);
    tool = owned.get();
    canvas->setTool(EditorModel::Tool::crop, std::move(owned));
    canvas->resize(548, 348);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    choose(EditorModel::Tool::crop);
  }
  void choose(EditorModel::Tool which) {
    model->tool = which;
    clock.run();
  }
  void drag(const QPointF& from, const QPointF& to) {
    const auto at = [this](const QPointF& place) { return canvas->fit().toCanvas(place).toPoint(); };
    QTest::mousePress(canvas->viewport(), Qt::LeftButton, {}, at(from));
    QTest::mouseMove(canvas->viewport(), at((from + to) / 2));
    QTest::mouseMove(canvas->viewport(), at(to));
    QTest::mouseRelease(canvas->viewport(), Qt::LeftButton, {}, at(to));
  }
  [[nodiscard]] bool canApply() const {
    return canvas->viewport()->findChild<QPushButton*>()->isVisibleTo(&window);
  }
  void pressReturn() {
    QTest::keyClick(canvas, Qt::Key_Return);
    clock.run();
  }

  ManualClock clock;
  const std::unique_ptr<EditorModel> model = open(map(QSize(1000, 600)));
  QWidget window;
  Canvas* const canvas = new Canvas(*model, &window);
  CropTool* tool = nullptr;
};

TEST_F(CropToolTest, EachHandleMovesItsEdgesAndThenTheWholeMoves) {
  ASSERT_EQ(canvas->canvasScale(), 0.5);
  const QRectF whole(0, 0, 1000, 600);
  EXPECT_EQ(tool->rectangle(), whole);
  EXPECT_FALSE(canApply());
  drag({0, 0}, {100, 60});
  EXPECT_EQ(tool->rectangle(), QRectF(100, 60, 900, 540));
  EXPECT_TRUE(canApply());
  drag({1000, 60}, {960, 80});
  drag({100, 600}, {120, 560});
  drag({960, 560}, {940, 540});
  EXPECT_EQ(tool->rectangle(), QRectF(QPointF(120, 80), QPointF(940, 540)));
  drag({530, 80}, {700, 100});
  drag({530, 540}, {400, 520});
  drag({120, 300}, {140, 500});
  drag({940, 300}, {900, 100});
  EXPECT_EQ(tool->rectangle(), QRectF(QPointF(140, 100), QPointF(900, 520)));
  drag({500, 300}, {900, 280});
  EXPECT_EQ(tool->rectangle(), QRectF(QPointF(240, 80), QPointF(1000, 500))) << "as far as the picture goes";
  drag({60, 550}, {40, 550});
  EXPECT_EQ(tool->rectangle(), QRectF(QPointF(220, 80), QPointF(980, 500))) << "also from beside it";
}

TEST_F(CropToolTest, HandlesAreWhereTheyAreSeenOnAZoomedAndScrolledPicture) {
  drag({0, 0}, {420, 240});
  drag({1000, 600}, {560, 350});
  for (int step = 0; step < 3; ++step)
    canvas->zoomIn();
  clock.advance(std::chrono::seconds(1));
  canvas->horizontalScrollBar()->setValue(canvas->horizontalScrollBar()->value() + 37);
  canvas->verticalScrollBar()->setValue(canvas->verticalScrollBar()->value() - 21);
  const double scale = canvas->canvasScale();
  ASSERT_NEAR(scale, 0.5 * 3.375, 1e-9);
  const double inset = 3 / scale;  // within reach, and beside the exact place
  for (const CropHandle handle :
       {CropHandle::topLeft, CropHandle::topRight, CropHandle::bottomLeft, CropHandle::bottomRight,
        CropHandle::top, CropHandle::bottom, CropHandle::left, CropHandle::right, CropHandle::move}) {
    const QRectF before = *tool->rectangle();
    const QRectF inner = before.adjusted(inset, inset, -inset, -inset);
    const QPointF middle = before.center();
    const QPointF places[] = {inner.topLeft(),
                              inner.topRight(),
                              inner.bottomLeft(),
                              inner.bottomRight(),
                              {middle.x(), inner.top()},
                              {middle.x(), inner.bottom()},
                              {inner.left(), middle.y()},
                              {inner.right(), middle.y()},
                              middle};
    const QPoint from = canvas->fit().toCanvas(places[int(handle)]).toPoint();
    const QPoint by(6, 4);
    ASSERT_TRUE(canvas->viewport()->rect().contains(from));
    QTest::mousePress(canvas->viewport(), Qt::LeftButton, {}, from);
    QTest::mouseMove(canvas->viewport(), from + by);
    QTest::mouseRelease(canvas->viewport(), Qt::LeftButton, {}, from + by);
    const QRectF expected = applyCropDrag(handle, before, QPointF(by) / scale, model->displaySize.get());
    const QRectF now = *tool->rectangle();
    // The picture is shown in whole pixels, not quite at that scale.
    EXPECT_NEAR(now.left(), expected.left(), 0.01) << int(handle);
    EXPECT_NEAR(now.top(), expected.top(), 0.01) << int(handle);
    EXPECT_NEAR(now.right(), expected.right(), 0.01) << int(handle);
    EXPECT_NEAR(now.bottom(), expected.bottom(), 0.01) << int(handle);
  }
}

TEST_F(CropToolTest, ReturnCropsToExactlyTheRectangle) {
  const QImage before = model->baseImage;
  pressReturn();
  EXPECT_EQ(model->imagePixelSize.get(), QSize(1000, 600)) << "nothing to crop";
  drag({0, 0}, {100, 60});
  drag({1000, 600}, {900, 560});
  pressReturn();
  EXPECT_EQ(model->baseImage.get(), before.copy(100, 60, 800, 500));
  EXPECT_EQ(tool->rectangle(), QRectF(0, 0, 800, 500));
  EXPECT_FALSE(canApply());
  pressReturn();
  EXPECT_EQ(model->imagePixelSize.get(), QSize(800, 500));

  model->undoLast();
  clock.run();
  EXPECT_EQ(model->baseImage.get(), before);
  EXPECT_EQ(tool->rectangle(), QRectF(0, 0, 800, 500)) << "as it was";
  EXPECT_TRUE(canApply());
}

TEST_F(CropToolTest, AnotherToolDropsTheRectangle) {
  drag({0, 0}, {100, 60});
  choose(EditorModel::Tool::pen);
  EXPECT_FALSE(tool->rectangle());
  EXPECT_FALSE(canApply());
  pressReturn();
  EXPECT_EQ(model->imagePixelSize.get(), QSize(1000, 600));
  choose(EditorModel::Tool::crop);
  EXPECT_EQ(tool->rectangle(), QRectF(0, 0, 1000, 600));
}

/// As after something that lay over the canvas has gone.
TEST_F(CropToolTest, PartsPaintedInOneGoLookAsTheWholeDoes) {
  drag({0, 0}, {300, 200});
  const auto painted = [this](const QRegion& region) {
    QImage image(canvas->viewport()->size(), QImage::Format_RGB32);
    image.fill(Qt::black);
    canvas->viewport()->render(&image, region.boundingRect().topLeft(), region);
    return image;
  };
  const QRect all = canvas->viewport()->rect();
  const QRegion parts = QRegion(all) - QRect(0, 40, 150, 100);
  QImage expected = painted(all);
  QPainter(&expected).fillRect(QRect(0, 40, 150, 100), Qt::black);
  EXPECT_EQ(painted(parts), expected);
}

}  // namespace
