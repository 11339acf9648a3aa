#include "app/history/HistoryView.h"
#include "app/history/ThumbnailGrid.h"
#include "app/history/ThumbnailLoader.h"
#include "tests/app/history/HistoryFixture.h"
#include "tests/support/Waiting.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
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
  [[nodiscard]] QPoint centerOf(int row) const { return grid->cellRect(row).center(); }
  /// The file name of the selected picture.
  [[nodiscard]] QString selected() const {
    const auto row = grid->selection().row();
    return row ? grid->screenshots()[static_cast<size_t>(*row)].url().fileName() : QString();
  }
  void key(int code, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(code), modifiers);
    clock.run();
  }
  [[nodiscard]] QColor colorAt(const QPoint& point) const {
    return grid->viewport()->grab().toImage().pixelColor(point);
  }
  void waitFor(int row, const QColor& color) {
    until("the thumbnail is there", [&] {
      clock.run();
      return colorAt(centerOf(row) - QPoint(0, 10)) == color;
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

/// How often a widget has been painted.
class Paintings : public QObject {
 public:
  explicit Paintings(QWidget* widget) { widget->installEventFilter(this); }
  int count = 0;

 private:
  bool eventFilter(QObject*, QEvent* event) override {
    count += event->type() == QEvent::Paint ? 1 : 0;
    return false;
  }
};

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
  EXPECT_TRUE(button("history.close") && button("menu.openBottleFolder"));
}

TEST_F(HistoryViewTest, TheKeyboardReachesEverything) {
  installCompanion();
  for (int i = 0; i < 8; ++i)
    put(u"%1.png"_s.arg(i), i);
  listen(Notifications::editScreenshot);
  listen(Notifications::closeHistoryPanel);
  open();
  QGuiApplication::clipboard()->setText(u"before"_s);
  key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), u"before"_s) << "nothing is selected";
  key(Qt::Key_Down);
  EXPECT_EQ(selected(), u"0.png"_s);
  key(Qt::Key_Right);
  key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->mimeData()->urls(), QList{QUrl::fromLocalFile(pathOf(u"1.png"_s))});
  key(Qt::Key_Return);
  key(Qt::Key_Escape);
  EXPECT_EQ(posted.join(u'|'), u"sorrelEditScreenshot 1.png|sorrelCloseHistoryPanel "_s);
  key(Qt::Key_Delete);
  EXPECT_FALSE(QFile::exists(pathOf(u"1.png"_s)));
  key(Qt::Key_Delete);
  EXPECT_EQ(model->screenshots->size(), 7u) << "the selection went with its picture";
  key(Qt::Key_Right);
  EXPECT_EQ(selected(), u"2.png"_s) << "the keyboard goes on where it was";
  for (const char* name :
       {"history.lock.unlockedHelp", "history.close", "menu.openBottleFolder", "history.settings"})
    EXPECT_TRUE(button(name) && (button(name)->focusPolicy() & Qt::TabFocus)) << name;
}

TEST_F(HistoryViewTest, ARingShowsWhereTheKeyboardIsWhileNothingIsSelected) {
  put(u"a.png"_s, 1);
  open();
  const QPoint besideFirst(grid->cellRect(0).left() - 3, centerOf(0).y());
  const QColor plain = colorAt(besideFirst);
  grid->clearFocus();
  grid->setFocus(Qt::TabFocusReason);
  EXPECT_NE(colorAt(besideFirst), plain);
  key(Qt::Key_Down);
  EXPECT_EQ(colorAt(besideFirst), plain) << "selected";
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
  put(u"newer.png"_s, -1);
  refresh();
  EXPECT_EQ(selected(), u"1.png"_s) << "the selection stays with its picture";
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
}

TEST_F(HistoryViewTest, TheLockAndTheListChangeNoMoreThanTheyMust) {
  for (int i = 0; i < 30; ++i)
    put(u"%1.png"_s.arg(i), i);
  open();
  key(Qt::Key_Home);
  QScrollBar* const bar = grid->verticalScrollBar();
  bar->setValue(bar->maximum());
  refresh();
  EXPECT_EQ(bar->value(), bar->maximum());
  EXPECT_EQ(selected(), u"0.png"_s);
  // Once all pictures are there nothing but what changes is painted.
  Paintings paintings(grid->viewport());
  until("all is still", [&] {
    paintings.count = 0;
    clock.advance(200ms);
    QApplication::processEvents();
    return paintings.count == 0;
  });
  QTest::mouseClick(button("history.lock.unlockedHelp"), Qt::LeftButton);
  clock.run();
  QApplication::processEvents();
  EXPECT_TRUE(model->isLocked && button("history.lock.lockedHelp"));
  EXPECT_EQ(paintings.count, 0);
}

TEST_F(HistoryViewTest, TheSignOfABrokenPictureComesToRest) {
  home.write(u"Documents/Sorrel bottle/broken.png"_s, "not a picture");
  open();
  Paintings paintings(grid->viewport());
  until("nothing moves any more", [&] {
    paintings.count = 0;
    clock.advance(200ms);
    QApplication::processEvents();
    return paintings.count == 0;
  });
}

TEST_F(HistoryViewTest, PicturesComeInAndFollowTheirFiles) {
  put(u"a.png"_s, 1, Qt::red);
  put(u"b.png"_s, 2, Qt::green);
  home.write(u"Documents/Sorrel bottle/broken.png"_s, "not a picture");
  open();  // cells are narrower before the panel has its size
  waitFor(1, Qt::red);
  waitFor(2, Qt::green);
  EXPECT_EQ(colorAt({grid->cellRect(1).left() + 6, centerOf(1).y() - 10}), QColor(Qt::red))
      << "it fills the cell that it ends up in";
  put(u"a.png"_s, 0, Qt::blue);
  QFile::rename(pathOf(u"b.png"_s), pathOf(u"c.png"_s));
  QFile::remove(pathOf(u"broken.png"_s));
  refresh();
  waitFor(0, Qt::blue);
  waitFor(1, Qt::green);
}

TEST_F(HistoryViewTest, AScreenReaderFindsThePicturesByTheirNames) {
  for (int i = 0; i < 5; ++i)
    put(u"%1.png"_s.arg(i), 2 + i);
  open();
  QAccessibleInterface* const list = QAccessible::queryAccessibleInterface(grid);
  EXPECT_EQ(list->role(), QAccessible::List);
  EXPECT_EQ(list->text(QAccessible::Name), u"History"_s);
  ASSERT_GE(list->childCount(), 5);
  QAccessibleInterface* const second = list->child(1);
  EXPECT_EQ(second->role(), QAccessible::ListItem);
  EXPECT_EQ(second->text(QAccessible::Name), u"1, 3 minutes ago"_s);
  EXPECT_EQ(list->childAt(second->rect().center().x(), second->rect().center().y()), second);
  EXPECT_FALSE(second->state().selected);
  key(Qt::Key_Home);
  key(Qt::Key_Right);
  EXPECT_TRUE(second->state().selected && second->state().focused);
  EXPECT_EQ(list->focusChild(), second);

  QAccessibleInterface* const first = list->child(0);
  QFile::remove(pathOf(u"0.png"_s));
  put(u"new.png"_s, 0);
  put(u"newer.png"_s, -1);
  refresh();
  EXPECT_FALSE(first->isValid());
  EXPECT_EQ(list->child(2), second) << "it stays with its picture";
  EXPECT_EQ(list->indexOfChild(second), 2);

  model->handleQuillonButton({pathOf(u"1.png"_s).toUtf8()});
  clock.advance(300ms);
  const auto children = view->findChildren<QWidget*>();
  EXPECT_TRUE(std::any_of(children.begin(), children.end(), [&](QWidget* child) {
    const auto* const message = QAccessible::queryAccessibleInterface(child);
    return message && message->role() == QAccessible::AlertMessage &&
           message->text(QAccessible::Name) == model->toast.get();
  }));
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
  EXPECT_EQ(grid->screenshots(), ScreenshotStore::all());
}

}  // namespace
