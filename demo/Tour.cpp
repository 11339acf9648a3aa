// Shows Sorrel at work on a desktop of its own, in numbered pictures: tour FOLDER. Ends with a status other
// than 0 where a step doesn't happen.

#include "demo/DrawingProgram.h"
#include "demo/FilledBottle.h"
#include "demo/TourScenery.h"
#include "tests/e2e/Editor.h"
#include "tests/e2e/ScreenReader.h"
#include "tests/e2e/Settings.h"
#include "tests/support/SettingsPortal.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QFileInfo>
#include <QPainter>

#include <linux/input-event-codes.h>
#include <signal.h>
#include <stdexcept>

using namespace Qt::StringLiterals;

using namespace e2e;

namespace demo {
namespace {

constexpr QRect photographArea(150, 170, 520, 346);
constexpr QRect selectionArea(120, 132, 580, 420);

/// The pictures and their captions, as they come.
class Album {
 public:
  explicit Album(const QString& path) : folder(path) {
    if (!QDir().mkpath(path))
      throw std::runtime_error("can't make " + path.toStdString());
  }

  void add(const QString& name, const QString& caption, const QImage& picture) {
    const QString file = u"%1-%2.png"_s.arg(++count, 2, 10, QLatin1Char('0')).arg(name);
    if (!picture.save(folder.filePath(file)))
      throw std::runtime_error("can't write " + file.toStdString());
    index += file + u"  "_s + caption + u'\n';
  }

  void close() const {
    QFile file(folder.filePath(u"index.txt"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(index.toUtf8()) < 0)
      throw std::runtime_error("can't write the index");
  }

 private:
  QDir folder;
  QString index;
  int count = 0;
};

/// The status images before and after, large enough to be seen.
QImage sideBySide(const QImage& left, const QImage& right) {
  constexpr int magnification = 6;
  QImage both(left.width() + right.width(), left.height(), QImage::Format_RGB32);
  QPainter painter(&both);
  painter.drawImage(0, 0, left);
  painter.drawImage(left.width(), 0, right);
  painter.end();
  return both.scaled(both.size() * magnification);
}

void require(bool holds, const char* what) {
  if (!holds)
    throw std::runtime_error(what);
}

/// A desktop that somebody works on.
class Scene {
 public:
  Scene() {
    desktop.screen().paintRoot(scenery::wallpaper(desktop.screen().size()));
    desktop.screen().openWindow(u"Notes"_s, {620, 330}, scenery::notes({520, 420}));
    desktop.screen().openWindow(u"Evening.png"_s, photographArea.topLeft(),
                                scenery::photograph(photographArea.size()));
    // The older pictures stay, and there is no other program to speak of when one is copied.
    Sorrel::store(desktop, u"autoDeleteDays"_s, 0);
    Sorrel::store(desktop, u"quillonPromptShown"_s, true);
    start();
  }

  void start() {
    sorrel.emplace(desktop);
    panel.emplace(desktop, *sorrel);
  }
  void end() {
    sorrel->program().send(SIGTERM);
    require(sorrel->program().waitForEnd() == 0, "Sorrel doesn't end cleanly");
  }

  Desktop desktop{{.size = {1440, 900},
                   .compositor = Compositor::Running,
                   .assistiveTechnology = AssistiveTechnology::Listening}};
  Screen& screen = desktop.screen();
  SettingsPortal portal{desktop.busAddress()};
  std::optional<Sorrel> sorrel;
  std::optional<Panel> panel;
};

void showCapture(Scene& scene, Album& album) {
  auto& [desktop, screen, portal, sorrel, panel] = scene;
  const QImage emptyImage = sorrel->statusImage();
  const QImage before = screen.settledPicture();
  album.add(u"empty"_s, u"Sorrel is in the tray; the bottle is empty."_s, before);

  sorrel->beginCapture(KEY_S);
  desktop.input().moveTo(selectionArea.left(), selectionArea.top());
  desktop.input().pressButton(1);
  desktop.input().moveTo(400, 300);
  desktop.input().moveTo(selectionArea.right(), selectionArea.bottom());
  album.add(u"selection"_s, u"Alt+Shift+S, and an area is dragged."_s, screen.settledPicture());
  desktop.input().releaseButton(1);
  const QString path = sorrel->waitForCapture({});
  const QImage capture(path);
  require(capture.convertToFormat(QImage::Format_RGB32) == before.copy(selectionArea),
          "the capture differs from what was on the screen");
  album.add(u"capture"_s,
            u"%1 in the bottle, pixel for pixel what was on the screen."_s.arg(QFileInfo(path).fileName()),
            capture);

  until("the status image changes", [&] { return sorrel->statusImage() != emptyImage; });
  panel->waitUntilOpen();
  album.add(u"bottle"_s, u"The bottle in the tray has something in it, and shows it."_s,
            screen.settledPicture());
  album.add(u"status-images"_s, u"The status image before and after, enlarged."_s,
            sideBySide(emptyImage, sorrel->statusImage()));
  panel->close();

  sorrel->openMenu();
  album.add(u"menu-english"_s, u"The menu."_s, screen.settledPicture());
  desktop.input().tapKey(KEY_ESC);
}

void showEditor(Scene& scene, Album& album) {
  auto& [desktop, screen, portal, sorrel, panel] = scene;
  const QImage before = screen.settledPicture();
  const QStringList present = sorrel->bottle();
  sorrel->beginCapture(KEY_D);
  sorrel->drag(selectionArea);
  const QString path = sorrel->waitForCapture(present);
  const Editor editor(desktop);
  editor.waitUntilOpen();
  const QPoint middle = editor.picture(selectionArea.size()).center();
  (void)screen.settledPictureAfter([&] {
    editor.drag({middle + QPoint(150, -120), middle + QPoint(60, -40), middle + QPoint(30, 20)});
  });
  album.add(u"editor"_s, u"Alt+Shift+D: the captured area is in the editor, and a stroke on it."_s,
            screen.settledPicture());

  const ScreenReader reader(desktop.busAddress());
  editor.showOptions(Editor::Tool::watermark);
  until("the watermark's options are there", [&] { return !reader.placeOf(u"Add text"_s).isNull(); });
  (void)screen.settledPictureAfter([&] { editor.click(reader.placeOf(u"Add text"_s).center()); });
  for (const int key : {KEY_H, KEY_E, KEY_L, KEY_L, KEY_O})
    desktop.input().tapKey(key);
  album.add(u"watermark"_s, u"A watermark is typed where it will stand."_s, screen.settledPicture());
  desktop.input().tapKey(KEY_ESC);
  (void)screen.settledPicture();
  editor.click(editor.toolButton(Editor::Tool::crop));
  (void)screen.settledPicture();
  const QRect picture = editor.picture(selectionArea.size());
  (void)screen.settledPictureAfter([&] {
    editor.drag({picture.topLeft(), picture.topLeft() + QPoint(30, 20), picture.topLeft() + QPoint(60, 40)});
  });
  album.add(u"crop"_s, u"A corner is dragged inwards; Return crops."_s, screen.settledPicture());
  (void)screen.settledPictureAfter([&] { desktop.input().tapKey(KEY_ENTER); });
  editor.click(editor.saveButton());
  editor.waitUntilClosed();
  const QImage saved = QImage(path).convertToFormat(QImage::Format_RGB32);
  require(saved.size() == selectionArea.size() - QSize(60, 40),
          "the file isn't cropped as the corner was dragged");
  require(saved != before.copy(selectionArea.adjusted(60, 40, 0, 0)),
          "the stroke and the text aren't in the file");
}

void showPanel(Scene& scene, Album& album) {
  auto& [desktop, screen, portal, sorrel, panel] = scene;
  FilledBottle(sorrel->bottlePath()).setCount(40);
  sorrel->capture(selectionArea);
  panel->waitUntilOpen();
  album.add(u"panel"_s,
            u"Months later: after a capture the panel drops out of the tray, the new picture first."_s,
            screen.settledPicture());
  album.add(u"hover"_s, u"The pointer on a picture: it can be trashed or copied."_s,
            screen.settledPictureAfter([&] { panel->moveTo(panel->thumbnail(4).center()); }));
  (void)screen.settledPictureAfter([&] { panel->click(panel->lockButton()); });
  album.add(u"locked"_s, u"Locked, the panel stays while other windows are used."_s,
            screen.settledPictureAfter([&] { panel->click(photographArea.center()); }));
  require(panel->window().has_value(), "the locked panel has closed");
  portal.answer = 1U;
  album.add(u"dark"_s, u"The desktop turns dark, and the panel with it."_s,
            screen.settledPictureAfter([&] { portal.choose(portal.answer); }));
  (void)screen.settledPictureAfter([&] { panel->moveTo(panel->copyButton(4)); });
  desktop.input().clickButton(1);
  until("the message is there", [&] { return panel->hasToast(); });
  album.add(u"copied"_s, u"Copied, for any program to paste."_s, screen.settledPicture());
}

void showSettings(Scene& scene, Album& album) {
  auto& [desktop, screen, portal, sorrel, panel] = scene;
  Settings settings(desktop, *sorrel);
  settings.openByMenu();
  album.add(u"settings"_s, u"The settings, from the menu: what Sorrel is, and in which language."_s,
            screen.settledPicture());
  settings.select(Settings::Tab::Shortcuts);
  album.add(u"recorder"_s, u"A shortcut waits for its new keys."_s,
            screen.settledPictureAfter([&] { settings.click(Settings::recorder(0)); }));
  desktop.input().pressKey(KEY_LEFTALT);
  settings.pressWithControl(KEY_P);
  desktop.input().releaseKey(KEY_LEFTALT);
  until("the shortcut is stored", [&] {
    return Sorrel::stored(desktop, u"KeyboardShortcuts_captureNormal"_s).toString().contains(u":35,"_s);
  });
  album.add(u"shortcuts"_s, u"Ctrl+Alt+P now captures."_s, screen.settledPicture());
  settings.select(Settings::Tab::Watermark);
  album.add(u"watermark"_s, u"The watermarks' font, and logos."_s, screen.settledPicture());
  settings.select(Settings::Tab::Storage);
  album.add(u"storage"_s, u"When old pictures go to the Trash, and where the bottle is."_s,
            screen.settledPicture());
  settings.close();
}

void showKorean(Scene& scene, Album& album) {
  scene.end();
  Sorrel::store(scene.desktop, u"appLanguage"_s, u"ko"_s);
  scene.start();
  scene.panel->openByClick();
  album.add(u"korean"_s, u"In Korean."_s, scene.screen.settledPicture());
  scene.panel->close();
  scene.sorrel->openMenu();
  album.add(u"menu-korean"_s, u"The menu in Korean."_s, scene.screen.settledPicture());
}

void takeTour(const QString& folder) {
  Album album(folder);
  Scene scene;
  showCapture(scene, album);
  showEditor(scene, album);
  showPanel(scene, album);
  showSettings(scene, album);
  showKorean(scene, album);
  album.close();
}

}  // namespace
}  // namespace demo

int main(int argc, char** argv) {
  return demo::runDrawingProgram(argc, argv, demo::takeTour);
}
