#include "app/history/HistoryView.h"
#include "app/history/ThumbnailGrid.h"
#include "app/history/ThumbnailLoader.h"
#include "tests/app/history/HistoryFixture.h"
#include "tests/support/Waiting.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QMimeData>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QTest>

using namespace sorrel;
using testing_support::until;

namespace {

/// The view without its panel, offscreen: real widgets, real files, and the loader's own threads.
class HistoryViewTest : public HistoryFixture {
 protected:
  void open() {
    model = HistoryViewModel::create();
    model->screenshots = ScreenshotStore::all();
    view = std::make_unique<HistoryView>(model, loader);
    view->show();
    view->activateWindow();
    QApplication::processEvents();
    view->setFocus();
    grid = &view->thumbnails();
  }
  void refresh() {
    model->screenshots = ScreenshotStore::all();
    clock.run();
  }
  /// Notes the notification's object each time.
  void listen(const char* name) {
    observers.push_back(platform::NotificationCenter::defaultCenter().addObserver(
        QString::fromLatin1(name), platform::NotificationCenter::Queue::Main,
        [this, name](const auto& heard) {
          posted << QString::fromLatin1(name) + u' ' + heard.object.toUrl().fileName();
        }));
  }
  [[nodiscard]] QPoint centerOf(int row) const {
    return grid->visualRect(grid->model()->index(row, 0)).center();
  }
  void key(int code, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(code), modifiers);
    clock.run();
  }
  /// The color in the middle of a thumbnail.
  [[nodiscard]] QColor colorOf(int row) const {
    return grid->viewport()->grab().toImage().pixelColor(centerOf(row) - QPoint(0, 10));
  }
  void waitFor(int row, const QColor& color) {
    until("the thumbnail is there", [&] {
      clock.run();
      return colorOf(row) == color;
    });
  }
  [[nodiscard]] QAbstractButton* button(const char* key) const {
    for (auto* const each : view->findChildren<QAbstractButton*>())
      if (each->isVisible() && each->accessibleName() == localized(QString::fromLatin1(key)))
        return each;
    return nullptr;
  }
  [[nodiscard]] QString labels() const {
    QStringList texts;
    for (const auto* const label : view->findChildren<QLabel*>())
      if (label->isVisible() && !label->text().isEmpty())
        texts << label->text();
    return texts.join(u'|');
  }

  ThumbnailLoader loader;
  std::unique_ptr<HistoryView> view;
  ThumbnailGrid* grid = nullptr;
  QStringList posted;
  std::vector<platform::Subscription> observers;
};

TEST_F(HistoryViewTest, APictureFillsTheCellThatItEndsUpIn) {
  put(u"wide.png"_s, 1);
  open();  // cells are narrower before the panel has its size
  waitFor(0, Qt::red);
  const QImage seen = grid->viewport()->grab().toImage();
  const QRect cell = grid->visualRect(grid->model()->index(0, 0));
  constexpr int inset = 5;
  EXPECT_EQ(seen.pixelColor(cell.left() + inset + 1, centerOf(0).y() - 10), QColor(Qt::red));
}

TEST_F(HistoryViewTest, ShowsTheListInTheChosenLanguageAndTheEmptyBottle) {
  open();
  EXPECT_EQ(labels(), u"History|The bottle is empty|Take a screenshot and it lands here."_s);
  EXPECT_FALSE(grid->isVisible());
  for (int i = 0; i < 1000; ++i)
    QFile(pathOf(QString::number(i) + u".png"_s)).open(QIODevice::WriteOnly);
  refresh();
  EXPECT_EQ(labels(), u"History|1000"_s);
  LocalizationManager::shared().setLanguage(AppLanguage::ko);
  clock.run();
  EXPECT_EQ(labels(), u"캡처 기록|1000"_s);
  EXPECT_TRUE(button("history.close"));
  EXPECT_TRUE(button("menu.openBottleFolder"));
  EXPECT_EQ(grid->model()->index(0, 0).data().toString(), u"방금"_s);
}

TEST_F(HistoryViewTest, TheKeyboardReachesEverything) {
  installCompanion();
  for (int i = 0; i < 8; ++i)
    put(u"%1.png"_s.arg(i), i);
  listen(Notifications::editScreenshot);
  listen(Notifications::closeHistoryPanel);
  open();
  EXPECT_EQ(grid->selectedID(), QByteArray()) << "nothing is selected at first";
  const auto selected = [this] { return QString::fromUtf8(grid->selectedID().chopped(4).right(1)); };
  const struct {
    Qt::Key key;
    QString selected;
  } steps[] = {
      {Qt::Key_Down, u"0"_s},     {Qt::Key_Right, u"1"_s}, {Qt::Key_Down, u"4"_s},   {Qt::Key_Down, u"7"_s},
      {Qt::Key_Down, u"7"_s},     {Qt::Key_Right, u"7"_s}, {Qt::Key_Up, u"4"_s},     {Qt::Key_Left, u"3"_s},
      {Qt::Key_Left, u"2"_s},     {Qt::Key_Down, u"5"_s},  {Qt::Key_Down, u"5"_s},   {Qt::Key_Home, u"0"_s},
      {Qt::Key_PageDown, u"6"_s}, {Qt::Key_End, u"7"_s},   {Qt::Key_PageUp, u"1"_s},
  };
  QGuiApplication::clipboard()->setText(u"before"_s);
  key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), u"before"_s) << "nothing is selected";
  for (const auto& step : steps) {
    key(step.key);
    EXPECT_EQ(selected(), step.selected) << step.key;
  }
  key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->mimeData()->urls(), QList{QUrl::fromLocalFile(pathOf(u"1.png"_s))});
  key(Qt::Key_Return);
  key(Qt::Key_Escape);
  EXPECT_EQ(posted.join(u'|'), u"sorrelEditScreenshot 1.png|sorrelCloseHistoryPanel "_s);
  key(Qt::Key_Delete);
  EXPECT_FALSE(QFile::exists(pathOf(u"1.png"_s)));
  EXPECT_EQ(model->screenshots->size(), 7u);
  key(Qt::Key_Delete);
  EXPECT_EQ(model->screenshots->size(), 7u) << "the selection went with its picture";
  key(Qt::Key_Right);
  EXPECT_EQ(selected(), u"2"_s) << "the keyboard goes on where it was";
  for (const char* name :
       {"history.lock.unlockedHelp", "history.close", "menu.openBottleFolder", "history.settings"})
    EXPECT_TRUE(button(name) && (button(name)->focusPolicy() & Qt::TabFocus)) << name;
}

TEST_F(HistoryViewTest, ThePointerSelectsEditsCopiesAndDeletes) {
  installCompanion();
  for (int i = 0; i < 4; ++i)
    put(u"%1.png"_s.arg(i), i);
  listen(Notifications::editScreenshot);
  open();
  QWidget* const area = grid->viewport();
  EXPECT_FALSE(button("history.thumb.copy"));
  QTest::mouseMove(area, centerOf(1));
  ASSERT_TRUE(button("history.thumb.copy") && button("history.thumb.delete"));
  QTest::mouseClick(area, Qt::LeftButton, {}, centerOf(1));
  EXPECT_EQ(grid->selectedID(), pathOf(u"1.png"_s).toUtf8());
  put(u"newer.png"_s, -1);
  refresh();
  EXPECT_EQ(grid->selectedID(), pathOf(u"1.png"_s).toUtf8()) << "the selection stays with its picture";
  EXPECT_EQ(grid->currentIndex().row(), 2);
  QTest::mouseDClick(area, Qt::LeftButton, {}, centerOf(2));
  EXPECT_EQ(posted, QStringList(u"sorrelEditScreenshot 1.png"_s));

  QTest::mouseMove(area, centerOf(0));
  QTest::mouseMove(area, centerOf(2));
  QTest::mouseClick(button("history.thumb.copy"), Qt::LeftButton);
  EXPECT_EQ(QGuiApplication::clipboard()->mimeData()->urls(), QList{QUrl::fromLocalFile(pathOf(u"1.png"_s))});
  EXPECT_TRUE(model->toast.get());
  QTest::mouseClick(button("history.thumb.delete"), Qt::LeftButton);
  clock.run();
  EXPECT_FALSE(QFile::exists(pathOf(u"1.png"_s)));
  EXPECT_EQ(model->screenshots->size(), 4u);
  QTest::mouseClick(button("history.lock.unlockedHelp"), Qt::LeftButton);
  clock.run();
  EXPECT_TRUE(model->isLocked && button("history.lock.lockedHelp"));
}

TEST_F(HistoryViewTest, WhatIsScrolledToStaysThroughRefreshes) {
  for (int i = 0; i < 30; ++i)
    put(u"%1.png"_s.arg(i), i);
  open();
  key(Qt::Key_Home);
  QScrollBar* const bar = grid->verticalScrollBar();
  bar->setValue(bar->maximum());
  model->isLocked = true;
  clock.run();
  EXPECT_EQ(bar->value(), bar->maximum());
  EXPECT_EQ(grid->selectedID(), pathOf(u"0.png"_s).toUtf8());
}

TEST_F(HistoryViewTest, PicturesComeInAndFollowTheirFiles) {
  put(u"a.png"_s, 1, Qt::red);
  put(u"b.png"_s, 2, Qt::green);
  home.write(u"Documents/Sorrel bottle/broken.png"_s, "not a picture");
  open();
  waitFor(1, Qt::red);
  waitFor(2, Qt::green);
  EXPECT_NE(colorOf(0), QColor(Qt::red)) << "broken.png, the newest, stays without";
  put(u"a.png"_s, 0, Qt::blue);
  QFile::rename(pathOf(u"b.png"_s), pathOf(u"c.png"_s));
  QFile::remove(pathOf(u"broken.png"_s));
  refresh();
  waitFor(0, Qt::blue);
  waitFor(1, Qt::green);
}

TEST_F(HistoryViewTest, AFolderThatChangesUnderneathHarmsNothing) {
  QRandomGenerator random(11);
  open();
  for (int round = 0; round < 60; ++round) {
    for (int i = 0; i < 6; ++i) {
      const QString path = pathOf(QString::number(random.bounded(40)) + u".png"_s);
      switch (random.bounded(4)) {
        case 0:
          QFile::remove(path);
          break;
        case 1:
          QFile::rename(path, pathOf(QString::number(random.bounded(40)) + u".png"_s));
          break;
        default:
          put(QFileInfo(path).fileName(), random.bounded(100),
              QColor::fromHsv(random.bounded(360), 255, 255));
      }
    }
    refresh();
    grid->verticalScrollBar()->setValue(random.bounded(1500));
    QTest::mouseMove(grid->viewport(), QPoint(random.bounded(460), random.bounded(420)));
    if (QAbstractButton* const remove = button("history.thumb.delete"); remove && round % 3 == 0)
      QTest::mouseClick(remove, Qt::LeftButton);
    key(round % 2 ? Qt::Key_Down : Qt::Key_Delete);
    view->grab();
  }
  EXPECT_EQ(grid->model()->rowCount(), static_cast<int>(ScreenshotStore::all().size()));
}

}  // namespace
