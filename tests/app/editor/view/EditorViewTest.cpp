// The editor's frame by real clicks, moves and keys: the rail, the options, the bar.

#include "app/capture/Notifications.h"
#include "app/editor/view/EditorView.h"
#include "app/editor/view/HSB.h"
#include "app/editor/view/WatermarkPlacement.h"
#include "app/look/LookStyle.h"
#include "app/settings/LocalizationManager.h"
#include "platform/base/NotificationCenter.h"
#include "platform/base/Task.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/Files.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScratchHome.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QInputMethodEvent>
#include <QSlider>
#include <QStyleFactory>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace sorrel;
using Tool = EditorModel::Tool;

namespace {

class EditorViewTest : public testing::Test {
 protected:
  EditorViewTest() {
    QApplication::setStyle(new LookStyle);
    LocalizationManager::shared().setLanguage(AppLanguage::en);
    QImage picture(900, 500, QImage::Format_RGB32);
    picture.fill(Qt::white);
    EXPECT_TRUE(picture.save(home.path(u"picture.png"_s)));
    auto opened = EditorModel::open(QUrl::fromLocalFile(home.path(u"picture.png"_s)));
    model = opened.get();
    view = std::make_unique<EditorView>(std::move(opened), [this] { ++closings; });
    view->resize(1000, 640);
    view->show();
    view->activateWindow();
    view->setFocus();
    settle();
  }
  ~EditorViewTest() override {
    view.reset();
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
  }

  /// All that is due now, and what is to be laid out.
  void settle() {
    clock.run();
    QApplication::processEvents();
  }
  void wait(std::chrono::milliseconds time) {
    clock.advance(time);
    QApplication::processEvents();
  }

  template <typename Control = QAbstractButton>
  [[nodiscard]] Control* named(const QString& name) const {
    for (Control* const control : view->findChildren<Control*>())
      if (control->accessibleName() == name)
        return control;
    ADD_FAILURE() << qPrintable(name);
    return nullptr;
  }
  [[nodiscard]] QAbstractButton* saveButton() const {
    for (QAbstractButton* const button : view->findChildren<QAbstractButton*>())
      if (button->text() == u"Save"_s)
        return button;
    throw std::runtime_error("no button saves");
  }
  [[nodiscard]] bool isShown(const QString& name) const { return named<QWidget>(name)->isVisible(); }
  [[nodiscard]] QPoint placeOf(const QWidget* widget, const QPoint& point) const {
    return widget->mapTo(view.get(), point);
  }
  [[nodiscard]] QPoint placeOf(const QWidget* widget) const {
    return placeOf(widget, widget->rect().center());
  }

  /// The window is given the events, and finds out whose they are.
  void moveTo(const QPoint& place) {
    QTest::mouseMove(view->windowHandle(), place);
    settle();
  }
  void click(const QPoint& place) {
    moveTo(place);
    QTest::mouseClick(view->windowHandle(), Qt::LeftButton, {}, place);
    settle();
  }
  void click(const QString& name) { click(placeOf(named<QWidget>(name))); }
  void drag(const QPoint& from, const QPoint& to) {
    moveTo(from);
    QTest::mousePress(view->windowHandle(), Qt::LeftButton, {}, from);
    QTest::mouseMove(view->windowHandle(), (from + to) / 2);
    QTest::mouseMove(view->windowHandle(), to);
    QTest::mouseRelease(view->windowHandle(), Qt::LeftButton, {}, to);
    settle();
  }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(view->windowHandle(), key, modifiers);
    settle();
  }

  const QPoint onPicture{700, 400};
  const QPoint onPopover{220, 145};  // between its controls

  testing_support::ScratchHome home;
  platform::ManualClock clock;
  EditorModel* model = nullptr;
  int closings = 0;
  std::unique_ptr<EditorView> view;
};

TEST_F(EditorViewTest, TheOptionsComeAndGoAndLeaveThePointerToTheCanvas) {
  moveTo(onPopover);
  wait(1h);
  EXPECT_TRUE(isShown(u"Red"_s)) << "the pointer rests on them";
  drag(onPopover, onPopover + QPoint(40, 60));
  EXPECT_TRUE(model->strokes->isEmpty());
  moveTo(onPicture);
  wait(2s);
  drag(onPopover, onPopover + QPoint(40, 60));
  EXPECT_EQ(model->strokes->size(), 1) << "they still fade, and take nothing any more";
  EXPECT_TRUE(isShown(u"Red"_s));
  wait(400ms);
  EXPECT_FALSE(isShown(u"Red"_s));

  click(u"Pen"_s);
  wait(150ms);
  EXPECT_TRUE(isShown(u"Red"_s)) << "the chosen tool brings them back";
  click(u"Pen"_s);
  wait(250ms);
  EXPECT_FALSE(isShown(u"Red"_s));
  click(u"Crop"_s);
  EXPECT_EQ(model->tool, Tool::crop);
  wait(1s);
  drag(onPopover, onPopover + QPoint(40, 60));
  click(u"Blur"_s);
  wait(1s);
  EXPECT_TRUE(isShown(u"Blur intensity"_s));
  EXPECT_FALSE(isShown(u"Red"_s));
  wait(2400ms);
  EXPECT_FALSE(isShown(u"Blur intensity"_s));
}

TEST_F(EditorViewTest, ThePensColorIsChosenBySwatchesAndByThePicker) {
  click(u"Blue"_s);
  EXPECT_EQ(model->colorHex, 0x2D7FF9U);
  click(u"Custom color"_s);
  wait(150ms);
  const auto* const square = named<QWidget>(u"Saturation and brightness"_s);
  const auto* const bar = named<QWidget>(u"Hue"_s);
  const double blue = 216.0 / 360;
  PickerPosition position;
  position.seed(model->colorHex);
  EXPECT_NEAR(position.hue, blue, 0.01);

  // To the upper left corner, and beyond: white; then along the bar, which leaves white white.
  constexpr int room = 9;
  drag(placeOf(square), placeOf(square, {room - 5, room - 5}));
  EXPECT_EQ(model->colorHex, 0xFFFFFFU);
  drag(placeOf(bar), placeOf(bar, {room + 75, 5}));
  EXPECT_EQ(model->colorHex, 0xFFFFFFU);
  drag(placeOf(square), placeOf(square, {room + 200, room - 5}));
  EXPECT_EQ(model->colorHex, 0x00FFFFU) << "the hue was kept";
  drag(placeOf(bar), placeOf(bar, {room + 40, 5}));
  drag(placeOf(square), placeOf(square, {room + 75, room + 95}));
  drag(placeOf(square), placeOf(square, {room + 200, room - 5}));
  EXPECT_EQ(model->colorHex, hsbToHex({40.0 / 150, 1, 1})) << "also from almost black, which has few hues";
  click(u"Red"_s);
  drag(placeOf(square), placeOf(square, {room + 200, room - 5}));
  position.seed(0xE5484D);
  EXPECT_EQ(model->colorHex, hsbToHex({position.hue, 1, 1})) << "a swatch moves the thumbs";

  click(u"Copy the color code"_s);
  EXPECT_EQ(QApplication::clipboard()->text(), QColor::fromRgb(model->colorHex).name().toUpper());
  click(u"Width 11"_s);
  EXPECT_EQ(model->lineWidth, 11);
}

TEST_F(EditorViewTest, TheEyedropperHoldsTheOptionsOpen) {
  std::vector<std::function<void(const platform::TaskAnswer&)>> runs;
  const auto replaced = platform::Environment::provide(
      std::make_shared<platform::TaskAsker>([&](const platform::Task&, auto onAnswer) {
        runs.push_back(onAnswer);
        return platform::Result<platform::OwnedTask>(std::make_shared<int>());
      }));
  for (const bool isPicked : {false, true}) {
    click(u"Pick a color from the screen"_s);
    moveTo(onPicture);
    wait(1h);
    EXPECT_TRUE(isShown(u"Red"_s));
    ASSERT_FALSE(runs.empty());
    runs.back()(isPicked ? platform::TaskAnswer{true, "#0A0B0C\n"} : platform::TaskAnswer{false, {}});
    EXPECT_EQ(model->colorHex, isPicked ? 0x0A0B0CU : 0xE5484DU);
    wait(1900ms);
    EXPECT_TRUE(isShown(u"Red"_s));
  }
  wait(500ms);
  EXPECT_FALSE(isShown(u"Red"_s));
}

TEST_F(EditorViewTest, TheBlursOptionsAreTheDocuments) {
  click(u"Blur"_s);
  wait(150ms);
  click(u"Mosaic"_s);
  EXPECT_EQ(model->blurStyle, BlurStyle::mosaic);
  auto* const size = named<QSlider>(u"Brush size"_s);
  click(placeOf(size, {size->width() - 1, size->height() / 2}));
  EXPECT_EQ(model->blurBrushWidth, 90);
  auto* const intensity = named<QSlider>(u"Blur intensity"_s);
  click(placeOf(intensity, {0, intensity->height() / 2}));
  EXPECT_EQ(model->blurIntensity, 0);
  model->blurIntensity = 0.75;
  settle();
  EXPECT_EQ(intensity->value(), 750);
  const int higher = placeOf(intensity).y();
  click(u"Area"_s);
  EXPECT_EQ(model->blurApply, BlurApply::area);
  EXPECT_FALSE(size->isVisible());
  EXPECT_LT(placeOf(intensity).y(), higher) << "no gap is left";
}

TEST_F(EditorViewTest, WhatIsDrawnIsTakenBackByButtonAndByKey) {
  EXPECT_FALSE(named(u"Undo"_s)->isEnabled());
  press(Qt::Key_Z, Qt::ControlModifier);
  wait(3s);  // the options go
  drag(onPicture, onPicture + QPoint(50, 20));
  drag(onPicture, onPicture + QPoint(-50, 20));
  ASSERT_EQ(model->strokes->size(), 2);
  click(u"Undo"_s);
  EXPECT_EQ(model->strokes->size(), 1);
  press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(model->strokes->isEmpty());
  EXPECT_FALSE(named(u"Undo"_s)->isEnabled());
}

TEST_F(EditorViewTest, EscapeCancelsUnlessATextIsWritten) {
  model->tool = Tool::watermark;
  model->isEditingText = true;
  settle();
  press(Qt::Key_Escape);
  EXPECT_EQ(closings, 0);
  model->isEditingText = false;
  settle();
  press(Qt::Key_Escape);
  EXPECT_EQ(closings, 1);

  int posted = 0;
  const auto listening = platform::NotificationCenter::defaultCenter().addObserver(
      QString::fromLatin1(Notifications::screenshotsChanged), platform::NotificationCenter::Queue::Main,
      [&](const auto&) { ++posted; });
  click(placeOf(saveButton()));
  EXPECT_EQ(closings, 2);
  EXPECT_EQ(posted, 1);
}

TEST_F(EditorViewTest, WhatCannotBeSavedClosesAndLeavesTheFileAsItWas) {
  const QString path = home.path(u"picture.png"_s);
  const QByteArray before = testing_support::contentsOf(path);
  wait(3s);  // the options go
  drag(onPicture, onPicture + QPoint(50, 20));
  const testing_support::LogCapture log;
  int posted = 0;
  const auto listening = platform::NotificationCenter::defaultCenter().addObserver(
      QString::fromLatin1(Notifications::screenshotsChanged), platform::NotificationCenter::Queue::Main,
      [&](const auto&) { ++posted; });
  {
    const testing_support::FileSizeLimit limit(100);
    click(placeOf(saveButton()));
  }
  EXPECT_EQ(closings, 1);
  EXPECT_EQ(posted, 0);
  EXPECT_EQ(testing_support::contentsOf(path), before);
  ASSERT_EQ(log.logged.size(), 1);
  EXPECT_TRUE(log.logged.front().startsWith(u"Sorrel editor save failed: "_s));
}

TEST_F(EditorViewTest, TheKeyboardReachesTheOptionsAndHoldsThem) {
  // From nowhere to the chosen tool, past the others; an arrow key takes the next tool.
  QWidget* reached = nullptr;
  for (int i = 0; i < 8 && reached != named(u"Pen"_s); ++i) {
    press(Qt::Key_Tab);
    reached = QApplication::focusWidget();
  }
  ASSERT_EQ(reached, named(u"Pen"_s));
  press(Qt::Key_Down);
  EXPECT_EQ(model->tool, Tool::blur);
  auto* const intensity = named<QSlider>(u"Blur intensity"_s);
  for (int i = 0; i < 12 && QApplication::focusWidget() != intensity; ++i)
    press(Qt::Key_Tab);
  ASSERT_EQ(QApplication::focusWidget(), intensity);
  wait(1h);
  EXPECT_TRUE(intensity->isVisible());
  const double before = model->blurIntensity;
  press(Qt::Key_Right);
  EXPECT_GT(model->blurIntensity, before);

  LocalizationManager::shared().setLanguage(AppLanguage::ko);
  settle();
  EXPECT_EQ(intensity->accessibleName(), u"블러 강도"_s) << "texts follow the language at once";
  EXPECT_EQ(QApplication::focusWidget(), intensity);
}

/// For the sanitizers: the text's last words come when its document is about to go.
TEST_F(EditorViewTest, GoesWhileATextIsComposed) {
  beginTextEditing(*model);
  settle();
  QInputMethodEvent composing(u"한"_s, {});
  QApplication::sendEvent(QGuiApplication::focusObject(), &composing);
  EXPECT_EQ(model->textWM->text, u"한"_s);
  view.reset();
}

}  // namespace
