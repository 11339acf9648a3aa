#include "app/look/LookStyle.h"
#include "app/shell/AppColors.h"

#include <QApplication>
#include <QMenu>
#include <QStyleFactory>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorrel;

namespace {

class LookStyleTest : public testing::Test {
 protected:
  LookStyleTest() { QApplication::setStyle(new LookStyle); }
  ~LookStyleTest() override { QApplication::setStyle(QStyleFactory::create(u"Fusion"_s)); }

  /// What is drawn in a row, in its own coordinates: where pixels differ from the row's first.
  [[nodiscard]] static QRect inkOf(QMenu& menu, QAction* action) {
    const QImage row = menu.grab(menu.actionGeometry(action)).toImage().convertToFormat(QImage::Format_RGB32);
    QRect ink;
    constexpr int border = 2;  // the menu's own
    for (int y = 0; y < row.height(); ++y)
      for (int x = border; x < row.width() - border; ++x)
        if (row.pixel(x, y) != row.pixel(border, 0))
          ink |= QRect(x, y, 1, 1);
    return ink;
  }
};

TEST_F(LookStyleTest, AMenusRowsHoldTitleKeysAndMarksApart) {
  QMenu menu;
  const auto add = [&](const QString& title, const QString& keys = {}) {
    QAction* const action = menu.addAction(title);
    action->setShortcut(QKeySequence(keys));
    action->setShortcutVisibleInContextMenu(true);
    return action;
  };
  QAction* const plain = add(u"Save && close"_s);
  QAction* const long_ = add(u"A title that is longer than all others"_s, u"Ctrl+Shift+F12"_s);
  QAction* const off = add(u"Off"_s);
  off->setEnabled(false);
  QAction* const last = add(u"Last"_s, u"Ctrl+Q"_s);
  menu.popup({20, 20});
  const int room = menu.fontMetrics().horizontalAdvance(u"A title that is longer than all others"_s) +
                   menu.fontMetrics().horizontalAdvance(u"Ctrl+Shift+F12"_s);
  const QRect longest = inkOf(menu, long_);
  EXPECT_GT(longest.width(), room) << "a gap before the keys";
  EXPECT_LT(longest.width(), room + 60);
  EXPECT_LT(longest.right(), menu.actionGeometry(long_).width() - 8) << "nothing is cut off";
  EXPECT_NEAR(inkOf(menu, last).right(), longest.right(), 2) << "the keys end in one line";
  EXPECT_NEAR(inkOf(menu, plain).width(), menu.fontMetrics().horizontalAdvance(u"Save & close"_s), 4);

  const int unmarked = inkOf(menu, plain).left();
  plain->setCheckable(true);
  plain->setChecked(true);
  menu.popup({20, 20});
  EXPECT_NEAR(inkOf(menu, plain).left(), unmarked, 3) << "the mark stands where the title stood";
  EXPECT_GT(inkOf(menu, last).left(), unmarked + 10) << "and all titles make room for it";

  for (QAction* const expected : {plain, long_, last, plain}) {
    QTest::keyClick(&menu, Qt::Key_Down);
    ASSERT_EQ(menu.activeAction(), expected) << "what is off is passed over";
    EXPECT_EQ(menu.grab().toImage().pixelColor(menu.actionGeometry(expected).center() + QPoint(0, -8)),
              AppColors::accent.resolved());
  }
}

}  // namespace
