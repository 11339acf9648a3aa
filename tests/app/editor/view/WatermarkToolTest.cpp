#include "app/editor/view/Canvas.h"
#include "app/editor/view/CropTool.h"
#include "app/editor/view/WatermarkPlacement.h"
#include "app/editor/view/WatermarkTool.h"
#include "platform/base/MainQueue.h"
#include "tests/app/editor/model/DocumentFixture.h"

#include <QTest>

using namespace sorrel;
using namespace std::chrono_literals;
using platform::ManualClock;

namespace {

constexpr QColor ground(40, 60, 80);

/// A picture of 1000 by 600 on a canvas that shows it at half its size.
class WatermarkToolTest : public DocumentFixture {
 protected:
  WatermarkToolTest() {
    canvas->setTool(EditorModel::Tool::watermark, std::make_unique<WatermarkTool>(*model, *canvas));
    canvas->setTool(EditorModel::Tool::crop, std::make_unique<CropTool>(*model, *canvas));
    canvas->resize(548, 348);
    window.resize(548, 348);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    choose(EditorModel::Tool::watermark);
  }
  void choose(EditorModel::Tool which) {
    model->tool = which;
    clock.run();
  }
  void write(const QString& text) {
    model->textWM.change([&](TextWatermark& watermark) { watermark.text = text; });
    clock.run();
  }
  /// 250 by 125, in the middle at 360.
  void setLogo() { model->setLogo(plain({200, 100}, Qt::red)); }

  [[nodiscard]] QPoint at(const QPointF& place) const { return canvas->fit().toCanvas(place).toPoint(); }
  void press(const QPointF& place) { QTest::mousePress(canvas->viewport(), Qt::LeftButton, {}, at(place)); }
  void move(const QPointF& place) { QTest::mouseMove(canvas->viewport(), at(place)); }
  void release(const QPointF& place) {
    QTest::mouseRelease(canvas->viewport(), Qt::LeftButton, {}, at(place));
  }
  void drag(const QPointF& from, const QPointF& to) {
    press(from);
    move((from + to) / 2);
    move(to);
    release(to);
  }
  void arrow(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(canvas, key, modifiers); }

  [[nodiscard]] QPointF logoCenter() const { return model->logoWM.get()->center; }
  [[nodiscard]] Qt::CursorShape cursor() const { return canvas->viewport()->cursor().shape(); }
  [[nodiscard]] QImage seen() const { return canvas->viewport()->grab().toImage(); }
  [[nodiscard]] QColor seen(const QPointF& place) const { return seen().pixelColor(at(place)); }
  /// By a canvas that has seen nothing before.
  [[nodiscard]] QImage seenAnew() {
    Canvas fresh(*model, nullptr);
    fresh.resize(canvas->size());
    return fresh.viewport()->grab().toImage();
  }

  ManualClock clock;
  const std::unique_ptr<EditorModel> model = open(QSize(1000, 600), ground);
  QWidget window;
  Canvas* const canvas = new Canvas(*model, &window);
};

TEST_F(WatermarkToolTest, AShortDragIsAClick) {
  setLogo();
  drag({500, 360}, {508, 360});
  EXPECT_EQ(logoCenter(), QPointF(500, 360));
  drag({450, 360}, {470, 320});
  EXPECT_EQ(logoCenter(), QPointF(520, 320)) << "all of the way";
  EXPECT_TRUE(model->undoStack->isEmpty());
  drag({100, 100}, {200, 200});
  EXPECT_EQ(logoCenter(), QPointF(520, 320)) << "from beside it";
}

TEST_F(WatermarkToolTest, GuidesShowWhereADragSnapsAndGoAtItsEnd) {
  setLogo();
  const QColor before = seen({24, 100});
  press({500, 360});
  move({300, 250});
  EXPECT_EQ(seen({24, 100}), before);
  move({160, 250});
  EXPECT_EQ(logoCenter(), QPointF(149, 250)) << "its edge at 24";
  const auto isGuideThere = [&] {
    const QImage image = seen();
    for (int y = at({0, 20}).y(); y < at({0, 60}).y(); ++y)  // it is dashed
      if (image.pixelColor(at({24, 0}).x(), y) != before)
        return true;
    return false;
  };
  EXPECT_TRUE(isGuideThere());
  release({160, 250});
  EXPECT_EQ(logoCenter(), QPointF(149, 250));
  EXPECT_FALSE(isGuideThere());
}

TEST_F(WatermarkToolTest, TheTextLiesAboveTheLogoAndADoubleClickEditsIt) {
  setLogo();
  write(QStringLiteral("words"));
  model->textWM.change([](TextWatermark& text) { text.center = {500, 360}; });
  drag({500, 360}, {700, 200});
  EXPECT_EQ(logoCenter(), QPointF(500, 360));
  EXPECT_EQ(model->textWM->center, QPointF(700, 200));
  QTest::mouseDClick(canvas->viewport(), Qt::LeftButton, {}, at({500, 360}));
  EXPECT_FALSE(model->isEditingText);
  QTest::mouseDClick(canvas->viewport(), Qt::LeftButton, {}, at({700, 200}));
  EXPECT_TRUE(model->isEditingText);
  EXPECT_EQ(model->textWM->center, QPointF(700, 200)) << "a text keeps its place";
  choose(EditorModel::Tool::crop);
  drag({500, 360}, {520, 380});
  EXPECT_EQ(logoCenter(), QPointF(500, 360)) << "another tool's drag";
}

TEST_F(WatermarkToolTest, EditingBeginsLowInTheMiddleForATextThatTakesNoRoom) {
  for (const auto& [text, isMoved] : {std::pair(QString(), true),
                                      {QStringLiteral(" \t "), true},
                                      {QStringLiteral("\n"), false},
                                      {QStringLiteral("a"), false}}) {
    choose(EditorModel::Tool::crop);
    write(text);
    model->textWM.change([](TextWatermark& watermark) { watermark.center = {30, 40}; });
    beginTextEditing(*model);
    EXPECT_EQ(model->textWM->center, isMoved ? QPointF(500, 510) : QPointF(30, 40)) << qPrintable(text);
    EXPECT_TRUE(model->isEditingText && model->tool == EditorModel::Tool::watermark);
  }
}

TEST_F(WatermarkToolTest, ArrowKeysMoveWhatWasClicked) {
  setLogo();
  arrow(Qt::Key_Left);
  EXPECT_EQ(logoCenter(), QPointF(500, 360)) << "nothing was";
  drag({500, 360}, {500, 360});
  arrow(Qt::Key_Left);
  arrow(Qt::Key_Up, Qt::ShiftModifier);
  arrow(Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(logoCenter(), QPointF(499, 350));
  drag({20, 20}, {20, 20});
  arrow(Qt::Key_Left);
  EXPECT_EQ(logoCenter(), QPointF(499, 350)) << "a click beside it lets it go";

  choose(EditorModel::Tool::crop);
  drag({0, 0}, {100, 60});
  arrow(Qt::Key_Left, Qt::ShiftModifier);
  arrow(Qt::Key_Up);
  QTest::keyClick(canvas, Qt::Key_Return);
  EXPECT_EQ(model->displaySize.get(), QSizeF(900, 540));
  const int left = 499 - 125 - 90, top = 350 - 59;  // of the logo, in its middle
  EXPECT_EQ(model->baseImage->pixelColor(left - 1, top), ground);
  EXPECT_NE(model->baseImage->pixelColor(left, top), ground);
}

TEST_F(WatermarkToolTest, TheHandTellsWhatCanBeMoved) {
  setLogo();
  move({20, 20});
  EXPECT_EQ(cursor(), Qt::ArrowCursor);
  move({500, 360});
  EXPECT_EQ(cursor(), Qt::OpenHandCursor);
  press({500, 360});
  EXPECT_EQ(cursor(), Qt::ClosedHandCursor);
  release({500, 360});
  EXPECT_EQ(cursor(), Qt::OpenHandCursor);
}

TEST_F(WatermarkToolTest, MovedMarksComeToRestWhereTheyArePainted) {
  write(QStringLiteral("two\nlines"));
  model->textWM.change([](TextWatermark& text) { text.scale = 2.3; });
  for (const QPointF& to : {QPointF(450, 400), QPointF(333, 303), QPointF(341, 305)}) {
    const QPointF from = model->textWM->center;
    press(from);
    move((from + to) / 2);
    (void)seen();
    move(to);
    (void)seen();
    release(to);
    EXPECT_EQ(seen(), seenAnew());
  }
  arrow(Qt::Key_Left);  // by half a pixel
  (void)seen();
  clock.advance(1s);
  EXPECT_EQ(seen(), seenAnew());
}

TEST_F(WatermarkToolTest, ALogoLargerThanItIsShownFollowsItsImageAndSize) {
  for (const QImage& image : {noise({900, 450}), map({901, 450})}) {
    model->setLogo(image);
    EXPECT_EQ(seen(), seenAnew());
    drag({500, 360}, {611, 251});
    EXPECT_EQ(seen(), seenAnew());
    model->logoWM.change([](auto& logo) { logo->scale = 1.7; });
    EXPECT_EQ(seen(), seenAnew());
    canvas->zoomIn();
    clock.advance(1s);
    canvas->zoomToFit();
    clock.advance(1s);
    EXPECT_EQ(seen(), seenAnew());
  }
}

TEST_F(WatermarkToolTest, TheCropDimsThePictureAndNotTheMarks) {
  setLogo();
  model->logoWM.change([](auto& logo) { logo->opacity = 1; });
  choose(EditorModel::Tool::crop);
  drag({1000, 600}, {600, 200});
  EXPECT_NE(seen({100, 500}), ground);
  EXPECT_EQ(seen({450, 380}), QColor(Qt::red));
  EXPECT_EQ(seen({100, 100}), ground);
}

TEST_F(WatermarkToolTest, TheBurstPlaysAboveAllWhenTheTextIsWritten) {
  setLogo();
  model->logoWM.change([](auto& logo) {
    logo->opacity = 1;
    logo->scale = 4;
  });
  const QImage before = seen();
  write(QStringLiteral("sorre"));
  clock.advance(600ms);
  write(QString());
  EXPECT_EQ(seen(), before);
  write(QStringLiteral("sorrel"));
  model->textWM.change([](TextWatermark& text) { text.opacity = 0; });
  clock.advance(600ms);
  EXPECT_NE(seen().copy(100, 100, 300, 200), before.copy(100, 100, 300, 200));
  clock.advance(3s);
  EXPECT_EQ(clock.pending(), 0);
}

}  // namespace
