// What is on the screen lands in the bottle, pixel for pixel.

#include "tests/e2e/Sorrel.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

QImage load(const QString& path) {
  return QImage(path).convertToFormat(QImage::Format_RGB32);
}

class Capture : public testing::Test {
 protected:
  Capture() { desktop.screen().paintRoot(randomPicture(desktop.screen().size(), 7)); }
  Desktop desktop;
};

TEST_F(Capture, OfAnAreaHasEveryPixelAndNoMore) {
  desktop.screen().openWindow(u"Over the edge"_s, {900, 300}, randomPicture({300, 200}, 8));
  Sorrel sorrel(desktop);
  (void)sorrel.statusItem();
  const QImage before = desktop.screen().settledPicture();
  // The first reaches over the tray and into two corners; the icon in it may change afterwards.
  for (const QRect area : {QRect(800, 0, 224, 640), QRect(0, 100, 1, 540), QRect(41, 203, 511, 97)})
    EXPECT_EQ(load(sorrel.capture(area)), before.copy(area));
}

TEST_F(Capture, OfAWindowIsItsFrame) {
  const QRect contents(300, 200, 240, 120);
  const quint32 window =
      desktop.screen().openWindow(u"Framed"_s, contents.topLeft(), randomPicture(contents.size(), 8));
  const QRect frame = desktop.screen().frameOf(window);
  EXPECT_TRUE(frame.contains(contents, true));
  Sorrel sorrel(desktop);
  const QImage before = desktop.screen().settledPicture();

  sorrel.beginCapture(KEY_S);
  desktop.input().tapKey(KEY_SPACE);
  desktop.input().moveTo(contents.center().x(), contents.center().y());
  desktop.input().clickButton(1);
  EXPECT_EQ(load(sorrel.waitForCapture({})), before.copy(frame));
}

TEST_F(Capture, ReachesOverTwoMonitors) {
  desktop.screen().setMonitors({QRect(0, 0, 512, 640), QRect(512, 0, 512, 640)});
  Sorrel sorrel(desktop);
  const QImage before = desktop.screen().settledPicture();
  for (const QRect area : {QRect(400, 150, 250, 200), QRect(512, 100, 512, 540)}) {
    const QStringList present = sorrel.bottle();
    sorrel.beginCapture(KEY_D);  // after which no panel covers the second area
    sorrel.drag(area);
    EXPECT_EQ(load(sorrel.waitForCapture(present)), before.copy(area));
  }
}

TEST_F(Capture, CancelledLeavesNoTrace) {
  Sorrel sorrel(desktop);
  const QImage icon = sorrel.statusImage();
  sorrel.beginCapture(KEY_S);
  desktop.input().moveTo(100, 100);
  desktop.input().pressButton(1);
  desktop.input().moveTo(300, 300);
  sorrel.cancel();
  desktop.input().releaseButton(1);

  until("the tool is gone", [&] { return childrenOf(sorrel.program().processId()).isEmpty(); });
  EXPECT_TRUE(sorrel.bottle().isEmpty());
  EXPECT_EQ(sorrel.statusImage(), icon);
  EXPECT_EQ(sorrel.program().errors(), QByteArray());
  EXPECT_FALSE(desktop.screen().isKeyboardGrabbed() || desktop.screen().isPointerGrabbed());
}

TEST_F(Capture, AgainInTheSameSecondGetsANumber) {
  Sorrel sorrel(desktop);
  const QRegularExpression numbered(
      u"^(Sorrel \\d{4}-\\d\\d-\\d\\d at \\d\\d\\.\\d\\d\\.\\d\\d) \\(2\\)\\.png$"_s);
  // Most pairs fall within one second, but a pair may straddle two.
  for (int attempt = 0; attempt < 20; ++attempt) {
    const QString first = QFileInfo(sorrel.capture(QRect(10, 100, 30, 30))).fileName();
    const QString second = QFileInfo(sorrel.capture(QRect(10, 100, 30, 30))).fileName();
    if (const QRegularExpressionMatch match = numbered.match(second); match.hasMatch()) {
      EXPECT_EQ(first, match.captured(1) + u".png"_s);
      return;
    }
  }
  FAIL() << "no number in twenty pairs: " << qPrintable(sorrel.bottle().join(u'\n'));
}

TEST_F(Capture, GoesToTheChosenFolder) {
  Sorrel::store(desktop, u"storageDirectory"_s, u"~/My shots"_s);
  Sorrel sorrel(desktop);
  EXPECT_EQ(QFileInfo(sorrel.capture(QRect(10, 100, 30, 30))).path(), desktop.home(u"My shots"_s));
  EXPECT_FALSE(QFileInfo::exists(desktop.home(u"Documents/Sorrel bottle"_s)));
}

TEST_F(Capture, ToTheClipboardStaysThereAfterTheToolHasEnded) {
  Sorrel sorrel(desktop);
  const QRect area(50, 120, 200, 140);
  const QImage before = desktop.screen().settledPicture();
  sorrel.beginCapture(KEY_A);
  sorrel.drag(area);
  until("the tool has ended", [&] { return childrenOf(sorrel.program().processId()).isEmpty(); });

  const QByteArray pasted = desktop.run(u"xclip -selection clipboard -t image/png -o"_s.split(u' '));
  EXPECT_EQ(QImage::fromData(pasted).convertToFormat(QImage::Format_RGB32), before.copy(area));
  EXPECT_TRUE(sorrel.bottle().isEmpty());
}

TEST_F(Capture, WithoutItsToolIsLoggedAndTheProgramGoesOn) {
  if (QFileInfo::exists(u"/usr/sbin/screencapture"_s))
    GTEST_SKIP() << "this system has a capture tool of its own";
  const QString alone = desktop.home(u"alone/bin/sorrel"_s);
  QDir().mkpath(QFileInfo(alone).path());
  ASSERT_TRUE(QFile::copy(Sorrel::built(), alone));
  Sorrel sorrel(desktop, alone);
  for (int presses = 1; presses <= 2; ++presses) {
    sorrel.pressHotKey(KEY_S);
    until("the failure is logged",
          [&] { return sorrel.program().errors().count("Sorrel screencapture launch failed: ") == presses; });
  }
  EXPECT_TRUE(sorrel.program().isRunning());
  EXPECT_TRUE(sorrel.bottle().isEmpty());
}

}  // namespace
}  // namespace e2e
