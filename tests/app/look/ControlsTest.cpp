#include "app/look/ButtonControls.h"
#include "app/look/LookStyle.h"
#include "app/look/SegmentedPicker.h"
#include "app/shell/AppColors.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QStyleFactory>
#include <QTest>
#include <QToolTip>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorrel;
using platform::Appearance;

namespace {

class ControlsTest : public testing::Test {
 protected:
  ControlsTest() { QApplication::setStyle(new LookStyle); }
  ~ControlsTest() override { QApplication::setStyle(QStyleFactory::create(u"Fusion"_s)); }

  static QImage pictureOf(QWidget& widget) {
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
  }
};

TEST_F(ControlsTest, AControlIsAsDarkAsItsOwnWindow) {
  ASSERT_EQ(platform::currentAppearance(), Appearance::Light);
  for (const Appearance appearance : {Appearance::Light, Appearance::Dark}) {
    QWidget window;
    window.setPalette(platform::paletteOf(appearance, AppColors::accent));
    QPushButton prominent(&window);
    prominent.setDefault(true);
    prominent.resize(60, 26);
    const QColor accent = AppColors::accent.resolved(appearance);
    EXPECT_EQ(QColor(pictureOf(prominent).pixel(30, 13)), accent);
    QComboBox box(&window);
    box.addItem(u"One"_s);
    box.showPopup();
    EXPECT_EQ(platform::appearanceOf(box.view()->window()->palette()), appearance);
    const QImage list = pictureOf(*box.view()->window());
    EXPECT_EQ(QColor(list.pixel(8, list.height() / 2)), accent) << "the chosen row";
    QToolTip::showText({}, u"Tip"_s, &prominent);
    bool isSeen = false;
    for (QWidget* const tip : QApplication::topLevelWidgets())
      if (tip->inherits("QTipLabel") && tip->parent() == &prominent) {
        isSeen = true;
        const QColor sheet = QColor(pictureOf(*tip).pixel(3, tip->height() / 2));
        EXPECT_EQ(sheet.lightness() < 128, appearance == Appearance::Dark);
        EXPECT_GT(std::abs(tip->palette().color(QPalette::ToolTipText).lightness() - sheet.lightness()), 150);
      }
    EXPECT_TRUE(isSeen);
    QToolTip::hideText();
  }
}

TEST_F(ControlsTest, AButtonHasRoomForAllThatItShows) {
  QPushButton button(u"Choose…"_s);
  const int text = button.fontMetrics().horizontalAdvance(button.text());
  const int plain = button.sizeHint().width();
  EXPECT_GE(plain, text + 20);
  setSymbol(button, u"trash"_s);
  EXPECT_GE(button.sizeHint().width(), plain + 12);

  // Nothing of the text is cut off: with more room it has as much ink.
  const auto ink = [&](int width) {
    button.resize(width, button.sizeHint().height());
    const QImage picture = pictureOf(button);
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 10; x < picture.width() - 10; ++x)
        count += qGray(picture.pixel(x, y)) < 100;
    return count;
  };
  EXPECT_EQ(ink(button.sizeHint().width()), ink(button.sizeHint().width() + 40));
}

TEST_F(ControlsTest, ASliderGoesWhereItIsClicked) {
  QSlider slider(Qt::Horizontal);
  slider.setRange(0, 1000);
  slider.resize(216, slider.sizeHint().height());
  const auto clickAt = [&](int x) {
    QTest::mouseClick(&slider, Qt::LeftButton, {}, {x, slider.height() / 2});
  };
  clickAt(108);
  EXPECT_NEAR(slider.value(), 500, 5);
  clickAt(215);
  EXPECT_EQ(slider.value(), 1000);
  clickAt(0);
  EXPECT_EQ(slider.value(), 0);
  const QImage picture = pictureOf(slider);
  EXPECT_GT(qGray(picture.pixel(8, picture.height() / 2)), 240) << "the whole handle is seen at the end";
}

TEST_F(ControlsTest, APickerTellsWhatItsUserChooses) {
  std::vector<int> told;
  QWidget window;
  SegmentedPicker picker([&](int index) { told.push_back(index); }, &window);
  picker.setChoices({{u"One"_s}, {u"Two"_s}, {u"Three"_s}});
  picker.setChosen(1);
  EXPECT_EQ(picker.chosen(), 1);
  EXPECT_TRUE(told.empty()) << "that wasn't the user";
  picker.resize(picker.sizeHint());
  window.show();
  QTest::mouseClick(picker.childAt(picker.width() - 8, picker.height() / 2), Qt::LeftButton);
  EXPECT_EQ(picker.chosen(), 2);
  auto* const first = picker.findChild<QRadioButton*>();
  QTest::mouseClick(first, Qt::LeftButton);
  QTest::mouseClick(first, Qt::LeftButton);
  window.activateWindow();
  QApplication::processEvents();
  first->setFocus();
  QTest::keyClick(first, Qt::Key_Right);
  EXPECT_EQ(told, (std::vector{2, 0, 1}));
}

TEST_F(ControlsTest, AListMayBeAWindowOfItsOwn) {
  QLineEdit field;
  auto* const completer = new QCompleter(QStringList{u"pictures"_s}, &field);
  field.setCompleter(completer);
  field.show();
  QTest::keyClick(&field, Qt::Key_P);
  EXPECT_TRUE(completer->popup()->isVisible());
}

}  // namespace
