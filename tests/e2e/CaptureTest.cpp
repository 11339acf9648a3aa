// What is on the screen lands in the bottle, pixel for pixel.

#include "tests/e2e/Editor.h"
#include "tests/e2e/Sorrel.h"

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

TEST_F(Capture, ReachesOverTwoMonitors) {
  desktop.screen().setMonitors({QRect(0, 0, 512, 640), QRect(512, 0, 512, 640)});
  Sorrel sorrel(desktop);
  const QImage before = desktop.screen().settledPicture();
  for (const QRect area : {QRect(400, 150, 250, 200), QRect(512, 100, 512, 540)}) {
    const QStringList present = sorrel.bottle();
    sorrel.beginCapture(KEY_D);
    sorrel.drag(area);
    EXPECT_EQ(load(sorrel.waitForCapture(present)), before.copy(area));
    const Editor editor(desktop);
    (void)editor.waitUntilOpen();
    desktop.input().tapKey(KEY_ESC);
    editor.waitUntilClosed();
    (void)desktop.screen().settledPicture();
  }
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

}  // namespace
}  // namespace e2e
