// The canvas under the pointer, the wheel and the keyboard.

#include "app/editor/view/BlurTool.h"
#include "app/editor/view/Canvas.h"
#include "app/editor/view/PenTool.h"
#include "app/editor/view/ZoomControls.h"
#include "tests/app/editor/model/DocumentFixture.h"

#include <QApplication>
#include <QNativeGestureEvent>
#include <QPointingDevice>
#include <QTest>
#include <QWheelEvent>

using namespace sorrel;

namespace {

class CanvasTest : public DocumentFixture {
 protected:
  void show(const QImage& picture, const QSize& size = {500, 400}) {
    model = open(picture);
    canvas = std::make_unique<Canvas>(*model, nullptr);
    canvas->setTool(EditorModel::Tool::pen, std::make_unique<PenTool>(*model));
    canvas->setTool(EditorModel::Tool::blur, std::make_unique<BlurTool>(*model, *canvas));
    new ZoomControls(*canvas);
    canvas->resize(size);
    canvas->show();
    QApplication::setActiveWindow(canvas.get());
  }
  [[nodiscard]] QPoint at(const QPointF& display) const { return canvas->fit().toCanvas(display).toPoint(); }
  void press(const QPointF& display, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mousePress(canvas->viewport(), button, {}, at(display));
  }
  void move(const QPoint& point, Qt::MouseButton button = Qt::LeftButton) {
    QMouseEvent event(QEvent::MouseMove, point, canvas->mapToGlobal(point), Qt::NoButton, button, {});
    QCoreApplication::sendEvent(canvas->viewport(), &event);
  }
  void release(const QPointF& display, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseRelease(canvas->viewport(), button, {}, at(display));
  }
  void drag(const QList<QPointF>& display) {
    press(display.first());
    for (const QPointF& place : display.sliced(1))
      move(at(place));
    release(display.last());
  }
  void turnWheel(const QPoint& point, int notches, Qt::KeyboardModifiers modifiers = {}) {
    turnWheel(point, QPoint(0, 120 * notches), modifiers);
  }
  void turnWheel(const QPoint& point, const QPoint& angle, Qt::KeyboardModifiers modifiers = {}) {
    QWheelEvent event(point, canvas->mapToGlobal(point), {}, angle, {}, modifiers, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(canvas->viewport(), &event);
  }
  void pinch(Qt::NativeGestureType type, double value) {
    QNativeGestureEvent event(type, QPointingDevice::primaryPointingDevice(), 2, QPointF(250, 200),
                              QPointF(250, 200), QPointF(250, 200), value, {});
    QCoreApplication::sendEvent(canvas->viewport(), &event);
  }
  void passTime() { clock.advance(std::chrono::seconds(1)); }

  platform::ManualClock clock;
  std::unique_ptr<EditorModel> model;
  std::unique_ptr<Canvas> canvas;
};

TEST_F(CanvasTest, whatIsDrawnWithThePointerIsSavedAsItIsShown) {
  show(noise({300, 200}));
  model->lineWidth = 7;
  drag({{20, 30}, {90, 120}, {160, 40}, {310, 150}});
  drag({{50, 150}});
  EXPECT_EQ(model->strokes->size(), 1) << "a click leaves no dot";
  model->tool = EditorModel::Tool::blur;
  drag({{40, 60}, {120, 80}, {180, 60}});
  model->blurStyle = BlurStyle::mosaic;
  model->blurApply = BlurApply::area;
  drag({{280, 190}, {200, 130}, {210, 100}});
  EXPECT_EQ(std::get<QRectF>(model->blurRegions->last().kind), QRectF(210, 100, 70, 90));
  move({2, 2}, Qt::NoButton);  // away with the guide
  ASSERT_TRUE(model->save());

  const QRect picture = canvas->fit().picture();
  const QImage seen = canvas->viewport()->grab().toImage().copy(picture);
  const QImage saved = EditorModel::open(model->fileURL)->baseImage;
  const auto isInside = [&](int x, int y) {  // not in the rounded corners
    return std::min(x, 299 - x) >= 6 || std::min(y, 199 - y) >= 6;
  };
  EXPECT_EQ(worstDifference(seen.convertToFormat(QImage::Format_RGBA8888_Premultiplied), saved, isInside), 0);
}

TEST_F(CanvasTest, zoomsByKeysWheelAndPinch) {
  show(noise({300, 200}));
  QTest::keyClick(canvas.get(), Qt::Key_Equal, Qt::ControlModifier);
  EXPECT_EQ(canvas->zoomFactor(), 1.5) << "no Shift is needed";
  QTest::keyClick(canvas.get(), Qt::Key_Plus, Qt::MetaModifier);
  passTime();
  EXPECT_EQ(canvas->fit().zoom, 2.25);
  QTest::keyClick(canvas.get(), Qt::Key_Minus, Qt::ControlModifier);
  EXPECT_EQ(canvas->zoomFactor(), 1.5);
  QTest::keyClick(canvas.get(), Qt::Key_0, Qt::ControlModifier);
  passTime();
  EXPECT_EQ(canvas->fit().zoom, 1);
  EXPECT_EQ(canvas->fit().picture().center(), canvas->viewport()->rect().center());

  const QPointF under = canvas->fit().toDisplay({320, 230});
  turnWheel({320, 230}, 8, Qt::ControlModifier);
  EXPECT_DOUBLE_EQ(canvas->zoomFactor(), 4);
  EXPECT_LE((canvas->fit().toDisplay({320, 230}) - under).manhattanLength(), 0.5)
      << "what is under the pointer stays";
  turnWheel({320, 230}, -8, Qt::ControlModifier);

  pinch(Qt::BeginNativeGesture, 0);
  for (const double value : {0.5, 0.25, 0.25})
    pinch(Qt::ZoomNativeGesture, value);
  EXPECT_EQ(canvas->zoomFactor(), 2) << "what a pinch tells adds up";
  pinch(Qt::EndNativeGesture, 0);
  pinch(Qt::BeginNativeGesture, 0);
  pinch(Qt::ZoomNativeGesture, 0.5);
  EXPECT_EQ(canvas->zoomFactor(), 3);
}

TEST_F(CanvasTest, scrollsAndPansOnlyWhileZoomed) {
  show(noise({300, 200}));
  const CanvasFit fitted = canvas->fit();
  turnWheel({250, 200}, -1);
  press({100, 100}, Qt::MiddleButton);
  move({300, 300}, Qt::MiddleButton);
  release({100, 100}, Qt::MiddleButton);
  EXPECT_EQ(canvas->fit(), fitted);

  turnWheel({250, 200}, 8, Qt::ControlModifier);
  passTime();
  const QPoint before = canvas->fit().scrolled;
  turnWheel({250, 200}, -1);
  turnWheel({250, 200}, -1, Qt::ShiftModifier);
  EXPECT_EQ(canvas->fit().scrolled, before + QPoint(60, 60));
  for (const int part : {1, -1}) {  // of a notch, as touchpads tell it
    const QPoint start = canvas->fit().scrolled;
    for (int i = 0; i < 24; ++i)
      turnWheel({250, 200}, QPoint(0, part));
    EXPECT_EQ(canvas->fit().scrolled, start - QPoint(0, part * 12));
  }
  QTest::mousePress(canvas->viewport(), Qt::MiddleButton, {}, {250, 200});
  move({290, 170}, Qt::MiddleButton);
  QTest::mouseRelease(canvas->viewport(), Qt::MiddleButton, {}, {290, 170});
  EXPECT_EQ(canvas->fit().scrolled, before + QPoint(20, 90));
  QTest::keyPress(canvas.get(), Qt::Key_Space);
  QTest::mousePress(canvas->viewport(), Qt::LeftButton, {}, {250, 200});
  move({230, 170});
  QTest::mouseRelease(canvas->viewport(), Qt::LeftButton, {}, {230, 170});
  QTest::keyRelease(canvas.get(), Qt::Key_Space);
  EXPECT_EQ(canvas->fit().scrolled, before + QPoint(40, 120));
  EXPECT_TRUE(model->strokes->isEmpty());
  drag({{100, 100}, {120, 110}});
  EXPECT_EQ(model->strokes->size(), 1) << "without Space the pen draws again";
}

TEST_F(CanvasTest, aDragWhoseReleaseIsLostEndsWithTheNextMove) {
  show(noise({300, 200}));
  press({20, 20});
  move(at({60, 60}));
  move(at({200, 90}), Qt::NoButton);
  ASSERT_EQ(model->strokes->size(), 1);
  EXPECT_EQ(model->strokes->last().points, QList<QPointF>({{20, 20}, {60, 60}}));

  turnWheel({250, 200}, 8, Qt::ControlModifier);
  passTime();
  QTest::mousePress(canvas->viewport(), Qt::MiddleButton, {}, {250, 200});
  const QPoint before = canvas->fit().scrolled;
  move({200, 100}, Qt::NoButton);
  EXPECT_EQ(canvas->fit().scrolled, before);
  // For the tests to come, whose pointer is this one too.
  for (const auto button : {Qt::LeftButton, Qt::MiddleButton})
    QTest::mouseRelease(canvas->viewport(), button, {}, {200, 100});
}

TEST_F(CanvasTest, aRememberedTextPlaysNoBurstUntilItIsWritten) {
  model = open(noise({300, 200}));
  const auto write = [this](const QString& text) {
    model->textWM.change([&](TextWatermark& watermark) { watermark.text = text; });
    clock.run();
  };
  write(QStringLiteral("sorrel"));
  const Canvas shown(*model, nullptr);
  model->tool = EditorModel::Tool::watermark;
  clock.run();
  EXPECT_FALSE(model->sorrelBurstID.get());
  write(QStringLiteral("sorre"));
  write(QStringLiteral("sorrel"));
  EXPECT_TRUE(model->sorrelBurstID.get());
}

TEST_F(CanvasTest, anotherToolEndsWhatIsUnderWay) {
  show(noise({300, 200}));
  press({20, 20});
  move(at({60, 60}));
  model->tool = EditorModel::Tool::blur;
  clock.run();
  EXPECT_EQ(model->strokes->size(), 1);
  move(at({90, 90}));
  release({90, 90});
  EXPECT_EQ(model->strokes->size(), 1);
  EXPECT_TRUE(model->blurRegions->isEmpty());

  model->isEditingText = true;
  clock.run();
  EXPECT_FALSE(model->isEditingText) << "only the watermark's tool edits text";
}

}  // namespace
