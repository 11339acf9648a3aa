#include "app/shell/AppColors.h"
#include "tests/app/settings/view/SettingsFixture.h"

#include <QApplication>
#include <QTabBar>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace sorrel;

namespace {

class SettingsViewTest : public SettingsFixture {};

TEST_F(SettingsViewTest, WhatTakesTheKeyboardHasAName) {
  store(SettingsKeys::storageDirectory, home.path(u"pictures"_s));
  store(SettingsKeys::watermarkFontFamily, u"Some Family"_s);
  for (const Tab tab : {general, shortcuts, watermark, storage}) {
    open(tab);
    for (auto* const widget : view->findChildren<QWidget*>()) {
      const bool takesKeyboard = widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus);
      EXPECT_FALSE(takesKeyboard &&
                   QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).isEmpty())
          << widget->metaObject()->className() << " on tab " << tab;
    }
  }
}

TEST_F(SettingsViewTest, TextsFollowTheLanguageAtOnce) {
  open(storage);
  EXPECT_EQ(view->windowTitle(), u"Sorrel Settings"_s);
  store(SettingsKeys::appLanguage, u"ko"_s);
  EXPECT_EQ(view->windowTitle(), u"Sorrel 설정"_s);
  EXPECT_EQ(view->findChild<QTabBar*>()->tabText(watermark), u"워터마크"_s);
  EXPECT_EQ(control<QComboBox>(u"휴지통으로 이동"_s)->currentText(), u"30일 뒤"_s);
}

TEST_F(SettingsViewTest, TextsCanBeReadWhenTheDesktopTurnsDark) {
  const QPalette before = QApplication::palette();
  open(storage);
  for (const auto appearance : {platform::Appearance::Dark, platform::Appearance::Light}) {
    QApplication::setPalette(platform::paletteOf(appearance, AppColors::accent));
    QCoreApplication::processEvents();
    for (const auto* label : view->findChildren<QLabel*>())
      EXPECT_EQ(label->palette().color(QPalette::WindowText).lightness() > 127,
                appearance == platform::Appearance::Dark)
          << qPrintable(label->text());
  }
  QApplication::setPalette(before);
}

TEST_F(SettingsViewTest, TheKeyboardGoesThroughTheTabsAndOut) {
  open(watermark);
  QApplication::setActiveWindow(view.get());
  auto* const bar = view->findChild<QTabBar*>();
  control<QComboBox>(u"Font"_s)->setFocus();
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(bar->currentIndex(), storage);
  for (int step = 0; step < 2; ++step)
    QTest::keyClick(view.get(), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(bar->currentIndex(), shortcuts);
  QTest::keyClick(view.get(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
  QTest::keyClick(view.get(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(bar->currentIndex(), storage);

  // From the bar in both directions, through what is above and below the form's edges.
  bar->setCurrentIndex(general);
  bar->setFocus();
  QTest::keyClick(bar, Qt::Key_Backtab, Qt::ShiftModifier);
  auto* const atLogin = control<QCheckBox>(u"Start Sorrel when you log in"_s);
  EXPECT_EQ(QApplication::focusWidget(), atLogin);
  EXPECT_EQ(atLogin->visibleRegion(), QRegion(atLogin->rect()));
  QTest::keyClick(view.get(), Qt::Key_Escape);
  EXPECT_FALSE(view->isVisible());
}

}  // namespace
