// The watermarks by a person's hands: from the stored logos and the remembered text into the file.

#include "tests/e2e/Editor.h"
#include "tests/e2e/Panel.h"
#include "tests/e2e/ScreenReader.h"

#include <QDir>
#include <QPainter>

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

using Tool = Editor::Tool;

constexpr QSize size(600, 420);

class Watermarks : public testing::Test {
 protected:
  Watermarks()
      : desktop({.newWindows = NewWindows::MustAsk, .assistiveTechnology = AssistiveTechnology::Listening}),
        editor(desktop) {
    Sorrel::store(desktop, u"autoDeleteDays"_s, 0);
    Sorrel::store(desktop, u"rememberWatermarkText"_s, true);
    Sorrel::store(desktop, u"lastWatermarkText"_s, u"by a hand"_s);
    const QString logos = desktop.home(u".local/share/Sorrel/watermark-logos"_s);
    QImage logo(200, 100, QImage::Format_RGB32);
    logo.fill(Qt::red);
    if (!QDir().mkpath(logos) || !logo.save(logos + u"/round.png"_s))
      throw std::runtime_error("no room for a logo");
  }

  [[nodiscard]] QPoint at(double x, double y) const {
    const QRectF picture = editor.picture(size);
    return {qRound(picture.left() + x * picture.width()), qRound(picture.top() + y * picture.height())};
  }
  /// Without the rounded corners, and the zoom's buttons at the lower right.
  [[nodiscard]] static QImage uncovered(QImage picture) {
    constexpr int corner = 7, buttonsWidth = 124, buttonsHeight = 36;
    QPainter painter(&picture);
    for (const int x : {0, picture.width() - corner})
      for (const int y : {0, picture.height() - corner})
        painter.fillRect(x, y, corner, corner, Qt::black);
    painter.fillRect(picture.width() - buttonsWidth, picture.height() - buttonsHeight, buttonsWidth,
                     buttonsHeight, Qt::black);
    return picture;
  }
  [[nodiscard]] QImage shown() {
    editor.moveTo(at(1, 1) + QPoint(12, 12));
    return uncovered(desktop.screen().settledPicture().copy(editor.picture(size)));
  }

  Desktop desktop;
  Editor editor;
};

TEST_F(Watermarks, AreMovedAndSavedWhereTheCanvasShowsThem) {
  const QString path = Sorrel::putPicture(desktop, u"picture.png"_s, randomPicture(size, 5));
  Sorrel sorrel(desktop);
  Panel panel(desktop, sorrel);
  panel.open();
  desktop.input().tapKey(KEY_RIGHT);
  desktop.input().tapKey(KEY_ENTER);
  (void)editor.waitUntilOpen();
  const ScreenReader reader(desktop.busAddress());
  editor.showOptions(Tool::watermark);
  until("the options are there", [&] { return !reader.placeOf(u"Add logo"_s).isNull(); });
  const QImage without = desktop.screen().settledPicture().copy(editor.picture(size));
  const QRect menuButton = reader.placeOf(u"Add logo"_s);
  (void)desktop.screen().settledPictureAfter([&] { editor.click(menuButton.center()); });
  desktop.input().tapKey(KEY_DOWN);
  desktop.input().tapKey(KEY_DOWN);
  desktop.input().tapKey(KEY_ENTER);
  until("the logo is there", [&] { return !reader.placeOf(u"Change logo"_s).isNull(); });
  editor.hideOptions(Tool::watermark);
  (void)desktop.screen().settledPicture();

  // The logo is 150 by 75 points large: near enough to the right margin it keeps to it.
  const QPoint upwards = at(0.5, 0.6) - QPoint(0, 100);
  editor.drag({at(0.5, 0.6), upwards, upwards + QPoint(196, 0)});
  editor.drag({at(0.5, 0.85), at(0.5, 0.85) - QPoint(40, 30), at(0.4, 0.4)});
  const QImage moved = shown();
  const int edge = size.width() - 24;
  EXPECT_GT(QColor(moved.pixel(edge - 1, 152)).red() - QColor(moved.pixel(edge - 1, 152)).blue(), 100);
  const QRgb beside = moved.pixel(edge, 152);
  EXPECT_EQ(beside, without.pixel(edge, 152));

  editor.showOptions(Tool::watermark);
  editor.click(reader.placeOf(u"Edit text"_s).center());
  (void)desktop.screen().settledPicture();
  const auto calm = [&] {  // where there is neither mark, at what a burst rises to
    return desktop.screen().picture().copy(QRect(at(0.55, 0.55), at(0.95, 0.75)));
  };
  const QImage before = calm();
  editor.command(KEY_A);
  for (const int key : {KEY_S, KEY_O, KEY_R, KEY_R, KEY_E, KEY_L})
    desktop.input().tapKey(key);
  until("it bursts", [&] { return calm() != before; });
  until("the burst is over", [&] { return calm() == before; });
  editor.click(at(0.7, 0.7));
  editor.hideOptions(Tool::watermark);
  const QImage last = shown();
  EXPECT_NE(last, moved);
  editor.click(editor.saveButton());
  editor.waitUntilClosed();
  EXPECT_EQ(uncovered(QImage(path).convertToFormat(QImage::Format_RGB32)), last);
  EXPECT_EQ(Sorrel::stored(desktop, u"lastWatermarkText"_s).toString(), u"sorrel"_s);
}

}  // namespace
}  // namespace e2e
