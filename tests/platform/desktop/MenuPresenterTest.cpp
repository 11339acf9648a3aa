#include "platform/base/NotificationCenter.h"
#include "platform/desktop/MenuPresenter.h"

#include <QApplication>
#include <QMenu>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace platform;

namespace {

class MenuPresenterTest : public testing::Test {
 protected:
  MenuPresenterTest() {
    auto& center = NotificationCenter::defaultCenter();
    const auto note = [this](const QString& what) { return [this, what](const auto&) { tracking += what; }; };
    opened = center.addObserver(QString::fromLatin1(menuDidBeginTrackingNotification),
                                NotificationCenter::Queue::PostingThread, note(u"begin "_s));
    closed = center.addObserver(QString::fromLatin1(menuDidEndTrackingNotification),
                                NotificationCenter::Queue::PostingThread, note(u"end "_s));
    for (const char* title : {"Settings & more", "Quit"}) {
      MenuItem item;
      item.title = QString::fromLatin1(title);
      item.keyEquivalent = item.title.at(0) == u'Q' ? u"q"_s : u","_s;
      item.action = [this, row = item.title] { chosen << row; };
      menu->items.push_back(item);
      menu->items.push_back(MenuItem::separator());
    }
    menu->items.pop_back();
  }

  QMenu* open() {
    presenter.popUp(menu, QPoint(10, 10));
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
  }

  QString tracking;
  QStringList chosen;
  Subscription opened, closed;
  std::shared_ptr<Menu> menu = std::make_shared<Menu>();
  MenuPresenter presenter;
};

TEST_F(MenuPresenterTest, TellsAroundTheTimeItIsOpen) {
  EXPECT_EQ(open()->actions()[0]->text(), u"Settings && more"_s) << "not a mnemonic";
  EXPECT_EQ(tracking, u"begin "_s);
  open();
  EXPECT_EQ(tracking, u"begin end begin "_s) << "a menu opened over another closes it";
  presenter.cancelTracking();
  EXPECT_EQ(tracking, u"begin end begin end "_s);
  EXPECT_TRUE(chosen.isEmpty());
}

TEST_F(MenuPresenterTest, ARowIsChosenByTheArrowKeysOrItsKeyEquivalent) {
  QTest::keyClick(open(), Qt::Key_Down);
  QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Return);
  EXPECT_EQ(chosen, QStringList({u"Settings & more"_s}));
  for (const auto modifier : {Qt::ControlModifier, Qt::MetaModifier}) {
    chosen.clear();
    QTest::keyClick(open(), Qt::Key_Q, modifier);
    EXPECT_EQ(chosen, QStringList({u"Quit"_s}));
    EXPECT_FALSE(QApplication::activePopupWidget());
  }
  chosen.clear();
  QTest::keyClick(open(), Qt::Key_Q, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(chosen.isEmpty());
  presenter.cancelTracking();
  menu->items.back().isEnabled = false;
  QTest::keyClick(open(), Qt::Key_Q, Qt::ControlModifier);
  EXPECT_TRUE(chosen.isEmpty());
  EXPECT_TRUE(QApplication::activePopupWidget());
  presenter.cancelTracking();
}

}  // namespace
