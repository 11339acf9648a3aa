// What the history panel does with the pictures: copy, drag.

#include "tests/e2e/Panel.h"
#include "tests/support/Files.h"

#include <QFile>
#include <QUrl>

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <signal.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

class PanelUse : public testing::Test {
 protected:
  PanelUse() {
    // The companion's page has been shown before.
    Sorrel::store(desktop, u"quillonPromptShown"_s, true);
  }

  QString put(const QString& name, const QImage& picture) {
    return Sorrel::putPicture(desktop, name, picture);
  }
  /// Opens the panel and points at its first thumbnail, which is there then.
  void openAndPoint(Panel& panel) {
    panel.open();
    const QPoint center = panel.thumbnail(0).center();
    desktop.input().moveTo(center.x(), center.y());
    const QPoint button = panel.copyButton(0);
    until("the thumbnail has its buttons",
          [&] { return QColor(desktop.screen().picture().pixel(button - QPoint(0, 8))).lightness() < 140; });
  }
  [[nodiscard]] QByteArray pasted(const QString& target) const {
    const auto xclip = desktop.start({u"xclip"_s, u"-selection"_s, u"clipboard"_s, u"-t"_s, target, u"-o"_s});
    return xclip->waitForEnd() == 0 ? xclip->output() : QByteArray();
  }
  void expectPasted(const QString& path) const {
    EXPECT_EQ(pasted(u"image/png"_s), contentsOf(path));
    const QByteArray address = QUrl::fromLocalFile(path).toEncoded();
    EXPECT_EQ(pasted(u"text/uri-list"_s), address + "\r\n");
    EXPECT_EQ(pasted(u"x-special/gnome-copied-files"_s), "copy\n" + address);
  }

  Desktop desktop;
};

TEST_F(PanelUse, CopiesOutliveTheProgram) {
  const QString path = put(u"sea & \uBCD1 100%.png"_s, randomPicture({300, 200}, 4));
  {
    Sorrel sorrel(desktop);
    Panel panel(desktop, sorrel);
    openAndPoint(panel);
    panel.click(panel.copyButton(0));
    until("the picture is copied", [&] { return !pasted(u"image/png"_s).isEmpty(); });
    expectPasted(path);
    sorrel.program().send(SIGTERM);
    EXPECT_EQ(sorrel.program().waitForEnd(), 0);
    expectPasted(path);
  }
  const QString newer = put(u"newer.png"_s, randomPicture({100, 400}, 5));
  Sorrel sorrel(desktop);
  Panel panel(desktop, sorrel);
  panel.open();
  desktop.input().tapKey(KEY_RIGHT);  // the first one
  desktop.input().pressKey(KEY_LEFTCTRL);
  desktop.input().tapKey(KEY_C);
  desktop.input().releaseKey(KEY_LEFTCTRL);
  until("the other one is copied", [&] { return pasted(u"text/uri-list"_s).contains("newer"); });
  expectPasted(newer);
  sorrel.openMenu();
  desktop.input().tapKey(KEY_UP);
  desktop.input().tapKey(KEY_ENTER);
  EXPECT_EQ(sorrel.program().waitForEnd(), 0);
  expectPasted(newer);
}

TEST_F(PanelUse, CopiesLastBesideAClipboardManager) {
  const QString path = put(u"picture.png"_s, randomPicture({300, 200}, 4));
  const QString text = desktop.write(u"text"_s, "words");
  const auto manager = desktop.start({u"xfce4-clipman"_s});
  Sorrel sorrel(desktop);
  Panel panel(desktop, sorrel);
  openAndPoint(panel);
  for (int round = 0; round < 5; ++round) {
    const auto other = desktop.start({u"xclip"_s, u"-selection"_s, u"clipboard"_s, u"-quiet"_s, text});
    until("the manager has the words", [&] { return other->errors().contains("request number 3"); });
    panel.click(panel.copyButton(0));
    until("the picture is copied", [&] { return pasted(u"image/png"_s) == contentsOf(path); });
    expectPasted(path);
    EXPECT_EQ(pasted(u"UTF8_STRING"_s), QByteArray());
  }
  sorrel.program().send(SIGTERM);
  EXPECT_EQ(sorrel.program().waitForEnd(), 0);
  expectPasted(path);
}

/// What is held when a drag's panel closes.
enum class Closing { AfterDrop, ByHotKey, ByOtherWindow };
class PanelDrag : public PanelUse, public testing::WithParamInterface<Closing> {};

TEST_P(PanelDrag, BringsTheFileToAnotherProgram) {
  const QString path = put(u"sea & \uBCD1.png"_s, randomPicture({300, 200}, 4));
  const std::unique_ptr<Program> target =
      desktop.start({QStringLiteral(E2E_BUILD_DIR "/tests/drop_target"), u"100"_s, u"200"_s});
  until("the target is there", [&] { return desktop.screen().find(u"Drop here"_s).has_value(); });
  Sorrel sorrel(desktop);
  Panel panel(desktop, sorrel);
  openAndPoint(panel);
  XTestInput& input = desktop.input();
  const QPoint start = panel.thumbnail(0).center();
  const QPoint end = desktop.screen().find(u"Drop here"_s)->area.center();

  input.pressButton(1);
  for (int step = 1; step <= 4; ++step)
    input.moveTo(start.x() - 10 * step, start.y());
  // Only what is dragged follows the pointer.
  until("the drag has begun", [&] {
    input.moveTo(start.x() - 60, start.y());
    return std::ranges::any_of(desktop.screen().windows(), [&](const ScreenWindow& window) {
      return window.area.contains(start - QPoint(60, 0)) && window.area.width() < 200 &&
             window.className.contains(u"sorrel"_s);
    });
  });
  if (GetParam() == Closing::ByHotKey)
    sorrel.pressHotKey(KEY_F);
  if (GetParam() == Closing::ByOtherWindow)
    desktop.screen().openWindow(u"Sudden"_s, {20, 450}, randomPicture({100, 100}, 9));
  if (GetParam() != Closing::AfterDrop)
    until("the panel is closed", [&] { return !panel.window(); });

  for (int step = 1; step <= 10; ++step)
    input.moveTo(start.x() + (end.x() - start.x()) * step / 10,
                 start.y() + (end.y() - start.y()) * step / 10);
  until("the target would take it", [&] {
    input.moveTo(end.x() + 1, end.y());
    input.moveTo(end.x(), end.y());
    return target->output().contains("over");
  });
  input.releaseButton(1);
  const QByteArray address = QUrl::fromLocalFile(path).toEncoded();
  until("the target has the file", [&] { return target->output().contains(address); });
  EXPECT_TRUE(QFile::exists(path));

  if (panel.window())
    desktop.input().tapKey(KEY_ESC);
  panel.waitUntilClosed();
  panel.open();
}

INSTANTIATE_TEST_SUITE_P(Closing, PanelDrag,
                         testing::Values(Closing::AfterDrop, Closing::ByHotKey, Closing::ByOtherWindow));

}  // namespace
}  // namespace e2e
