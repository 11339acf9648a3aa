// The editor's window: what comes into it, and what of it gets into the file.

#include "tests/e2e/Editor.h"
#include "tests/e2e/Panel.h"
#include "tests/e2e/ScreenReader.h"
#include "tests/support/Files.h"

#include <QPainter>

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

using Tool = Editor::Tool;

QImage load(const QString& path) {
  return QImage(path).convertToFormat(QImage::Format_RGB32);
}

/// Without the corners, which the canvas rounds, and what the zoom's buttons lie on.
QImage uncovered(QImage picture) {
  constexpr int side = 7;
  constexpr QSize buttons(124, 36);
  const QRect corner(0, 0, side, side);
  QPainter painter(&picture);
  for (const int x : {0, picture.width() - side})
    for (const int y : {0, picture.height() - side})
      painter.fillRect(corner.translated(x, y), Qt::black);
  QRect covered({}, buttons);
  covered.moveBottomRight(picture.rect().bottomRight());
  painter.fillRect(covered, Qt::black);
  return picture;
}

class EditorUse : public testing::Test {
 protected:
  explicit EditorUse(const DesktopOptions& options = {}) : desktop(options), editor(desktop) {
    Sorrel::store(desktop, u"autoDeleteDays"_s, 0);
  }

  /// The bottle's newest picture, from the history.
  quint32 openNewest(Sorrel& sorrel) {
    Panel panel(desktop, sorrel);
    panel.open();
    desktop.input().tapKey(KEY_RIGHT);
    desktop.input().tapKey(KEY_ENTER);
    const quint32 opened = editor.waitUntilOpen().id;
    EXPECT_FALSE(panel.window());
    return opened;
  }
  [[nodiscard]] QPoint besidePicture(QSize size) const {
    return editor.picture(size).bottomRight() + QPoint(12, 12);
  }
  /// The picture of so many pixels as the canvas shows it, with the pointer beside it.
  [[nodiscard]] QImage shown(QSize size) {
    editor.moveTo(besidePicture(size));
    return uncovered(desktop.screen().settledPicture().copy(editor.picture(size)));
  }
  /// The options stand before the picture for a while.
  void waitUntilShown(const QImage& picture) {
    editor.moveTo(besidePicture(picture.size()));
    until("the picture is shown", [&] {
      return uncovered(desktop.screen().picture().copy(editor.picture(picture.size()))) == uncovered(picture);
    });
  }

  Desktop desktop;
  Editor editor;
};

/// With another program that has the keyboard, on a desktop that doesn't give it to new windows by itself.
class EditorOfACapture : public EditorUse {
 protected:
  EditorOfACapture()
      : EditorUse(
            {.newWindows = NewWindows::MustAsk, .assistiveTechnology = AssistiveTechnology::Listening}) {}
};

TEST_F(EditorOfACapture, SavesWhatTheCanvasShows) {
  Screen& screen = desktop.screen();
  screen.paintRoot(randomPicture(screen.size(), 7));
  screen.giveKeyboard(screen.openWindow(u"Typing"_s, {700, 400}, randomPicture({200, 100}, 8)));
  Sorrel sorrel(desktop);
  (void)sorrel.statusItem();
  const QRect area(60, 90, 520, 380);
  const QImage captured = screen.settledPicture().copy(area);
  sorrel.beginCapture(KEY_D);
  sorrel.drag(area);
  const QString path = sorrel.waitForCapture({});
  editor.waitUntilOpen();
  waitUntilShown(captured);  // once the options have gone by themselves

  const ScreenReader reader(desktop.busAddress());
  const QPoint middle = editor.picture(area.size()).center();
  const auto drag = [&](const std::vector<QPoint>& way) {
    (void)screen.settledPictureAfter([&] {
      editor.drag({middle + way[0], middle + way[1], middle + way[2]});
      editor.moveTo(besidePicture(area.size()));
    });
    return shown(area.size());
  };
  const auto choose = [&](Tool tool) { (void)screen.settledPictureAfter([&] { editor.hideOptions(tool); }); };
  const QImage penned = drag({{0, 0}, {60, 20}, {20, -80}});
  EXPECT_NE(penned, uncovered(captured));
  choose(Tool::blur);
  const QImage brushed = drag({{0, 60}, {80, 90}, {160, 60}});
  EXPECT_NE(brushed, penned);
  (void)screen.settledPictureAfter([&] { editor.showOptions(Tool::blur); });
  (void)screen.settledPictureAfter([&] { editor.click(reader.placeOf(u"Area"_s).center()); });
  choose(Tool::blur);
  const QImage blurred = drag({{100, -120}, {120, -60}, {200, 10}});
  EXPECT_NE(blurred, brushed);
  choose(Tool::pen);
  for (const bool isByKey : {true, false}) {
    EXPECT_NE(drag({{0, 0}, {60, 140}, {-60, 100}}), blurred);
    if (isByKey)
      editor.command(KEY_Z);
    else
      editor.click(editor.undoButton());
    waitUntilShown(blurred);
  }
  EXPECT_EQ(load(path), captured);
  editor.click(editor.saveButton());
  editor.waitUntilClosed();
  EXPECT_EQ(uncovered(load(path)), blurred);
}

TEST_F(EditorUse, OpensFromTheHistoryAndLeavesTheFilesAsTheyAre) {
  const QImage wide = randomPicture({420, 300}, 4);
  const QImage high = randomPicture({300, 360}, 5);
  const QString widePath = Sorrel::putPicture(desktop, u"a wide one.png"_s, wide);
  const QString highPath = Sorrel::putPicture(desktop, u"b high one.png"_s, high);
  const QByteArray wideFile = contentsOf(widePath);
  const QByteArray highFile = contentsOf(highPath);
  const QDateTime now = QDateTime::currentDateTimeUtc();
  testing_support::setModified(widePath, now.addSecs(-60));
  testing_support::setModified(highPath, now.addSecs(-120));
  Sorrel sorrel(desktop);
  const quint32 first = openNewest(sorrel);
  waitUntilShown(wide);
  const QPoint middle = editor.picture(wide.size()).center();
  (void)desktop.screen().settledPictureAfter([&] { editor.drag({middle, middle + QPoint(60, 20)}); });
  EXPECT_NE(shown(wide.size()), uncovered(wide));

  const auto openByDoubleClick = [&](int index) {
    Panel panel(desktop, sorrel);
    panel.open();
    panel.moveTo(panel.thumbnail(index).center());
    desktop.input().doubleClick(1);
    panel.waitUntilClosed();
  };
  openByDoubleClick(1);
  until("the other picture has its window", [&] { return editor.window() && editor.window()->id != first; });
  editor.waitUntilOpen();
  waitUntilShown(high);

  testing_support::writeFile(sorrel.bottlePath() + u"/broken.png"_s, "no picture");
  const quint32 second = editor.window()->id;
  openByDoubleClick(0);
  until("the failure is told",
        [&] { return sorrel.program().errors().contains("Sorrel editor: couldn't load broken.png"); });
  EXPECT_EQ(editor.waitUntilOpen().id, second);
  desktop.input().tapKey(KEY_ESC);
  editor.waitUntilClosed();
  EXPECT_EQ(contentsOf(widePath), wideFile);
  EXPECT_EQ(contentsOf(highPath), highFile);
}

TEST_F(EditorUse, ZoomsAboutTheMiddleAndPans) {
  const QImage picture = randomPicture({420, 300}, 4);
  Sorrel::putPicture(desktop, u"shot.png"_s, picture);
  Sorrel sorrel(desktop);
  openNewest(sorrel);
  waitUntilShown(picture);
  const QRect place = editor.picture(picture.size());
  Screen& screen = desktop.screen();

  // Eight times as large, each pixel is a square of its own.
  const QImage zoomed = screen.settledPictureAfter([&] {
    for (int step = 0; step < 6; ++step)
      editor.command(KEY_EQUAL);
  });
  const QPoint middle = place.center();
  constexpr int near = 2;
  const QRect aroundMiddle(picture.rect().center() - QPoint(near, near), QSize(2 * near + 1, 2 * near + 1));
  const QImage pixels = picture.copy(aroundMiddle).scaled(8 * aroundMiddle.size());
  const QImage seen = zoomed.copy(QRect(middle - QPoint(8, 8), QSize(16, 16)));
  bool isFound = false;
  for (int y = 0; y <= pixels.height() - seen.height(); ++y)
    for (int x = 0; x <= pixels.width() - seen.width(); ++x)
      isFound = isFound || pixels.copy(QRect(QPoint(x, y), seen.size())) == seen;
  EXPECT_TRUE(isFound);

  const QRect part(middle - QPoint(60, 40), QSize(120, 80));
  const QPoint way(48, 30);
  const QImage panned = screen.settledPictureAfter([&] {
    editor.moveTo(middle);
    desktop.input().pressButton(2);
    editor.moveTo(middle + way / 2);
    editor.moveTo(middle + way);
    desktop.input().releaseButton(2);
  });
  EXPECT_EQ(panned.copy(part.translated(way)), zoomed.copy(part));
  editor.command(KEY_0);
  waitUntilShown(picture);
}

/// On two monitors; the editor is on the left one.
class Eyedropper : public EditorUse {
 protected:
  Eyedropper()
      : EditorUse({.size = {1300, 640}, .assistiveTechnology = AssistiveTechnology::Listening}),
        reader(desktop.busAddress()) {
    desktop.screen().setMonitors({QRect(0, 0, 800, 640), QRect(800, 0, 500, 640)});
    desktop.screen().paintRoot(randomPicture(desktop.screen().size(), 9));
    Sorrel::putPicture(desktop, u"shot.png"_s, randomPicture(size, 4));
    sorrel.emplace(desktop);
    openNewest(*sorrel);
    showOptions();
  }

  void showOptions() {
    editor.showOptions(Tool::pen);
    until("the options are there", [this] { return !reader.placeOf(button).isNull(); });
    (void)desktop.screen().settledPicture();
  }
  void begin() {
    editor.click(reader.placeOf(button).center());
    sorrel->waitUntilSelecting();
  }
  /// What the pen draws now.
  [[nodiscard]] QRgb drawnColor() {
    const QPoint middle = editor.picture(size).center();
    (void)desktop.screen().settledPictureAfter([&] { editor.hideOptions(Tool::pen); });
    const QImage drawn = desktop.screen().settledPictureAfter([&] {
      editor.drag({middle - QPoint(50, 0), middle + QPoint(50, 0)});
      editor.moveTo(besidePicture(size));
    });
    editor.command(KEY_Z);
    showOptions();
    return drawn.pixel(middle);
  }

  const QSize size{420, 300};
  const QString button = u"Pick a color from the screen"_s;
  const ScreenReader reader;
  std::optional<Sorrel> sorrel;
};

TEST_F(Eyedropper, TakesAPixelOfAnyMonitorForThePenUnlessItIsCancelled) {
  const QPoint onPicture = editor.picture(size).bottomRight() - QPoint(60, 120);
  for (const QPoint pixel : {onPicture, QPoint(1111, 333)}) {
    const QRgb color = desktop.screen().picture().pixel(pixel);
    begin();
    editor.click(pixel);
    until("the color is taken", [&] { return !sorrel->isSelecting(); });
    EXPECT_FALSE(reader.placeOf(button).isNull()) << "the options stayed";
    EXPECT_EQ(drawnColor(), color);

    begin();
    editor.moveTo({900, 50});
    sorrel->cancel();
    EXPECT_FALSE(reader.placeOf(button).isNull());
    EXPECT_EQ(drawnColor(), color);
  }
}

TEST_F(Eyedropper, GoesWithTheEditor) {
  begin();
  desktop.screen().askToClose(editor.window()->id);
  editor.waitUntilClosed();
  until("the magnifier is gone", [&] { return !sorrel->isSelecting(); });
  EXPECT_FALSE(desktop.screen().isPointerGrabbed());
  sorrel->capture({850, 100, 200, 150});  // it can still be used
}

class EditorWithAnInputMethod : public EditorUse {
 protected:
  EditorWithAnInputMethod()
      : EditorUse(
            {.assistiveTechnology = AssistiveTechnology::Listening, .inputMethod = InputMethod::Hangul}) {}

  void type(const std::vector<int>& keys) {
    for (const int key : keys)
      desktop.input().tapKey(key);
  }
  [[nodiscard]] QString copied() {
    editor.command(KEY_A);
    editor.command(KEY_C);
    const auto reading = desktop.start(u"xclip -out -selection clipboard"_s.split(u' '));
    return reading->waitForEnd() == 0 ? QString::fromUtf8(reading->output()) : QString();
  }
};

TEST_F(EditorWithAnInputMethod, SavesTheTextThatIsTyped) {
  const QImage picture = randomPicture({420, 300}, 4);
  const QString path = Sorrel::putPicture(desktop, u"shot.png"_s, picture);
  Sorrel sorrel(desktop);
  openNewest(sorrel);
  const ScreenReader reader(desktop.busAddress());
  Screen& screen = desktop.screen();
  (void)screen.settledPictureAfter([&] { editor.showOptions(Tool::watermark); });
  (void)screen.settledPictureAfter([&] { editor.click(reader.placeOf(u"Add text"_s).center()); });

  type({KEY_G, KEY_K, KEY_S, KEY_R, KEY_M, KEY_F, KEY_SPACE});
  until("the syllables are composed", [&] { return copied() == u"한글 "_s; });
  type({KEY_END});
  desktop.leaveHangul();
  type({KEY_W, KEY_A, KEY_T, KEY_E, KEY_R, KEY_M, KEY_A, KEY_R, KEY_K});
  until("all is typed", [&] { return copied() == u"한글 watermark"_s; });
  desktop.input().tapKey(KEY_ESC);
  (void)screen.settledPictureAfter([&] { editor.hideOptions(Tool::watermark); });
  const QImage written = shown(picture.size());
  EXPECT_NE(written, uncovered(picture));
  editor.click(editor.saveButton());
  editor.waitUntilClosed();
  EXPECT_EQ(uncovered(load(path)), written);
}

}  // namespace
}  // namespace e2e
