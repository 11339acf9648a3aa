// The editor's window: how large it is, and when it comes and goes.

#include "app/capture/Notifications.h"
#include "app/editor/view/EditorWindowController.h"
#include "app/settings/LocalizationManager.h"
#include "platform/base/NotificationCenter.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScratchHome.h"

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace sorrel;

namespace {

class EditorWindow : public testing::Test {
 protected:
  EditorWindow() { LocalizationManager::shared().setLanguage(AppLanguage::en); }

  [[nodiscard]] QUrl picture(const QString& name, QSize size = {400, 300}) const {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    EXPECT_TRUE(image.save(home.path(name)));
    return QUrl::fromLocalFile(home.path(name));
  }
  static void deleteWhatIsDeletedLater() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  testing_support::ScratchHome home;
  testing_support::LogCapture log;
  EditorWindowController controller;
};

TEST_F(EditorWindow, HasRoomForThePictureAndTheBarsAsFarAsTheScreenAllows) {
  const QSizeF large(2000, 2000);
  EXPECT_EQ(editorContentSize({400, 300}, large), QSizeF(504, 404));
  EXPECT_EQ(editorContentSize({1000, 640}, QSizeF(1000, 700)), QSizeF(900, 630)) << "each side by itself";
  EXPECT_EQ(editorContentSize({1000, 300}, QSizeF(1000, 700)), QSizeF(900, 404));
  EXPECT_EQ(editorContentSize({10, 10}, large), QSizeF(114, 114));
  EXPECT_EQ(editorContentSize({4000, 4000}, std::nullopt), QSizeF(1296, 810));
}

TEST_F(EditorWindow, StandsInTheMiddleAndIsNeverTooSmallForItsBars) {
  controller.open(picture(u"tiny.png"_s, {10, 10}));
  ASSERT_TRUE(controller.window() && controller.window()->isVisible());
  EXPECT_EQ(controller.window()->size(), QSize(316, 256));
  const QPoint offset =
      controller.window()->geometry().center() - controller.window()->screen()->geometry().center();
  EXPECT_LE(offset.manhattanLength(), 2);
}

TEST_F(EditorWindow, TellsThePicturesSizeFromTheFirst) {
  controller.open(picture(u"shot.png"_s));
  QStringList texts;
  for (const auto* const label : controller.window()->findChildren<QLabel*>())
    texts << label->text();
  EXPECT_TRUE(texts.contains(u"400 × 300 px"_s)) << texts.join(u", "_s).toStdString();
}

TEST_F(EditorWindow, IsOneAndShowsWhatWasOpenedLast) {
  controller.open(picture(u"first.png"_s));
  const QPointer<QWidget> first = controller.window();
  ASSERT_TRUE(first);
  EXPECT_EQ(first->windowTitle(), u"Sorrel Editor"_s);
  LocalizationManager::shared().setLanguage(AppLanguage::ko);
  EXPECT_EQ(first->windowTitle(), u"Sorrel Editor"_s) << "the title of an open window stays";
  controller.open(picture(u"second.png"_s, {500, 300}));
  EXPECT_FALSE(first->isVisible());
  deleteWhatIsDeletedLater();
  EXPECT_FALSE(first);
  EXPECT_EQ(controller.window()->size(), QSize(604, 404));
  EXPECT_EQ(controller.window()->windowTitle(), u"Sorrel 편집기"_s);
}

TEST_F(EditorWindow, StaysWhereTheNextPictureCannotBeRead) {
  controller.open(QUrl::fromLocalFile(home.write(u"no picture.png"_s, "words")));
  EXPECT_FALSE(controller.window());
  controller.open(picture(u"shot.png"_s));
  QWidget* const opened = controller.window();
  controller.open(QUrl::fromLocalFile(home.path(u"missing.png"_s)));
  EXPECT_EQ(controller.window(), opened);
  EXPECT_TRUE(opened->isVisible());
  EXPECT_EQ(log.logged, QStringList({u"Sorrel editor: couldn't load no picture.png"_s,
                                     u"Sorrel editor: couldn't load missing.png"_s}));
}

TEST_F(EditorWindow, ClosedByTheUserGoesWithTheNextPicture) {
  controller.open(picture(u"shot.png"_s));
  const QPointer<QWidget> closed = controller.window();
  closed->close();
  deleteWhatIsDeletedLater();
  EXPECT_TRUE(closed && !closed->isVisible());
  controller.open(picture(u"shot.png"_s));
  deleteWhatIsDeletedLater();
  EXPECT_FALSE(closed);
  EXPECT_TRUE(controller.window()->isVisible());
}

TEST_F(EditorWindow, LeadsToTheSettings) {
  int asked = 0;
  const auto token = platform::NotificationCenter::defaultCenter().addObserver(
      QString::fromLatin1(Notifications::openSettings), platform::NotificationCenter::Queue::PostingThread,
      [&](const auto&) { ++asked; });
  controller.open(picture(u"shot.png"_s));
  QApplication::setActiveWindow(controller.window());
  QTest::keyClick(controller.window(), Qt::Key_Comma, Qt::ControlModifier);
  EXPECT_EQ(asked, 1);
}

}  // namespace
