// Draws the README's picture of the editor and the sheets on which the editor is judged: editor_pictures
// FOLDER. The pictures are of the real program on desktops of its own.

#include "demo/BottleScenery.h"
#include "demo/DrawingProgram.h"
#include "demo/Sheet.h"
#include "demo/TourScenery.h"
#include "tests/e2e/Editor.h"
#include "tests/e2e/Panel.h"
#include "tests/e2e/ScreenReader.h"

#include <QDir>
#include <QThread>

#include <cmath>
#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

using namespace e2e;

namespace demo {
namespace {

using Tool = Editor::Tool;

/// A desktop with Sorrel and its editor.
class Stage {
 public:
  explicit Stage(DesktopOptions options)
      : desktop(listening(options)), editor(desktop), reader(desktop.busAddress()) {
    desktop.screen().paintRoot(scenery::wallpaper(desktop.screen().size()));
    Sorrel::store(desktop, u"appLanguage"_s, options.language == Language::Korean ? u"ko"_s : u"en"_s);
    Sorrel::store(desktop, u"autoDeleteDays"_s, 0);
    sorrel.emplace(desktop);
  }

  /// The editor with this picture, once its options have gone.
  void open(const QImage& picture) {
    const QString path = Sorrel::putPicture(desktop, u"Evening %1.png"_s.arg(++count), picture);
    const auto before = editor.window();
    Panel panel(desktop, *sorrel);
    panel.open();
    desktop.input().tapKey(KEY_RIGHT);
    desktop.input().tapKey(KEY_ENTER);
    until("the picture has its window",
          [&] { return editor.window() && (!before || editor.window()->id != before->id); });
    editor.waitUntilOpen();
    place = editor.picture(picture.size());
  }
  /// A point of the picture, as parts of its width and height.
  [[nodiscard]] QPoint at(double x, double y) const {
    return place.topLeft() + QPoint(qRound(x * place.width()), qRound(y * place.height()));
  }
  void drag(const std::vector<QPointF>& parts) {
    std::vector<QPoint> points;
    for (const QPointF& part : parts)
      points.push_back(at(part.x(), part.y()));
    settleAfter([&] { editor.drag(points); });
  }
  void choose(const QString& name) {
    QRect found;
    until("the control is there", [&] { return !(found = reader.placeOf(name)).isNull(); });
    // Programs name places in points, wherever a point is more than a pixel.
    settleAfter([&] { editor.click((QPointF(found.center()) * desktop.scale()).toPoint()); });
  }
  void showOptions(Tool tool) {
    settleAfter([&] { editor.showOptions(tool); });
  }
  /// The tool without its options, and the pointer out of the way.
  void hideOptions(Tool tool) {
    settleAfter([&] {
      editor.hideOptions(tool);
      editor.moveTo(at(0.5, -0.02));
    });
  }
  /// Also after gestures that change nothing that is seen.
  void settleAfter(const std::function<void()>& gesture) {
    gesture();
    constexpr int longerThanAnyFade = 600;  // milliseconds
    QThread::msleep(longerThanAnyFade);
    (void)desktop.screen().settledPicture();
  }
  /// Takes a picture while something is dragged from one place to another.
  [[nodiscard]] QImage pictureOfDrag(const QPointF& from, const QPointF& to) {
    settleAfter([&] {
      editor.moveTo(at(from.x(), from.y()));
      desktop.input().pressButton(1);
      editor.moveTo(at((from.x() + to.x()) / 2, (from.y() + to.y()) / 2));
      QThread::msleep(4);
      editor.moveTo(at(to.x(), to.y()));
    });
    const QImage taken = picture();
    settleAfter([&] { desktop.input().releaseButton(1); });
    return taken;
  }
  void type(const std::vector<int>& keys) {
    settleAfter([&] {
      for (const int key : keys)
        desktop.input().tapKey(key);
    });
  }
  /// The window and its frame, once all is still.
  [[nodiscard]] QImage picture() {
    constexpr int margin = 28;
    const QRect frame = desktop.screen().frameOf(editor.window()->id);
    return desktop.screen().settledPicture().copy(frame.adjusted(-margin, -margin, margin, margin) &
                                                  desktop.screen().picture().rect());
  }

  Desktop desktop;
  Editor editor;
  ScreenReader reader;
  std::optional<Sorrel> sorrel;
  QRect place;

 private:
  static DesktopOptions listening(DesktopOptions options) {
    options.assistiveTechnology = AssistiveTechnology::Listening;
    return options;
  }
  int count = 0;
};

struct Words {
  QString customColor;
  QString area;
  QString addText;
};

/// A lake, with what somebody would draw on it.
void drawSomething(Stage& stage, const Words& words) {
  std::vector<QPointF> ring;
  for (double angle = 0.3; angle < 6.9; angle += 0.15)
    ring.emplace_back(0.38 + (0.078 + 0.001 * angle) * std::cos(angle), 0.52 + 0.115 * std::sin(angle));
  stage.drag(ring);
  stage.drag({{0.62, 0.22}, {0.56, 0.30}, {0.47, 0.41}});
  stage.drag({{0.476, 0.35}, {0.47, 0.41}, {0.515, 0.40}});
  stage.showOptions(Tool::blur);
  stage.choose(words.area);
  stage.drag({{0.58, 0.66}, {0.7, 0.74}, {0.86, 0.84}});
  stage.hideOptions(Tool::blur);
}

QImage states(Stage& stage, const Words& words) {
  std::vector<QImage> pictures;
  const auto take = [&] { pictures.push_back(stage.picture()); };
  stage.open(scenery::photograph({680, 440}));
  stage.showOptions(Tool::pen);
  take();
  stage.choose(words.customColor);
  take();
  stage.choose(words.customColor);
  stage.hideOptions(Tool::pen);
  drawSomething(stage, words);
  stage.showOptions(Tool::blur);
  take();
  stage.hideOptions(Tool::blur);
  stage.editor.command(KEY_EQUAL);
  stage.editor.command(KEY_EQUAL);
  stage.editor.moveTo(stage.at(0.5, 0.5));
  take();

  stage.editor.command(KEY_0);
  stage.showOptions(Tool::watermark);
  stage.choose(words.addText);
  stage.type({KEY_E, KEY_V, KEY_E, KEY_N, KEY_I, KEY_N, KEY_G, KEY_SPACE, KEY_L, KEY_I, KEY_G, KEY_H, KEY_T});
  take();
  stage.type({KEY_ESC});
  stage.hideOptions(Tool::watermark);
  pictures.push_back(stage.pictureOfDrag({0.5, 0.85}, {0.503, 0.25}));
  stage.settleAfter([&] { stage.editor.click(stage.editor.toolButton(Tool::crop)); });
  stage.drag({{0, 0}, {0.1, 0.08}, {0.2, 0.15}});
  stage.editor.moveTo(stage.at(0.5, 1.02));
  take();
  return sheetOf(pictures, 2);
}

QImage sizes(Stage& stage) {
  std::vector<QImage> pictures;
  for (const QSize size : {QSize(24, 16), QSize(4200, 900), QSize(500, 3000)}) {
    stage.open(scenery::photograph(size));
    stage.hideOptions(Tool::blur);
    pictures.push_back(stage.picture());
  }
  return sheetOf(pictures, 2);
}

QImage scaled(double scale, const DesktopOptions& base, const Words& words) {
  DesktopOptions options = base;
  options.size = (QSizeF(base.size) * scale).toSize();
  options.scale = scale;
  Stage stage(options);
  stage.open(scenery::photograph((QSizeF(560, 360) * scale).toSize()));
  stage.hideOptions(Tool::pen);
  drawSomething(stage, words);
  stage.showOptions(Tool::pen);
  return stage.picture();
}

void drawPictures(const QString& path) {
  const QDir folder(path);
  const Words english{u"Custom color"_s, u"Area"_s, u"Add text"_s};
  const Words korean{u"사용자 지정 색상"_s, u"영역"_s, u"텍스트 추가"_s};
  const DesktopOptions plain{.size = {1200, 760}, .compositor = Compositor::Running};
  {
    Stage stage(plain);
    save(states(stage, english), folder.filePath(u"editor-english.png"_s));
    save(sizes(stage), folder.filePath(u"editor-sizes.png"_s));
    stage.open(scenery::photograph({760, 480}));
    stage.hideOptions(Tool::pen);
    drawSomething(stage, english);
    stage.showOptions(Tool::pen);
    save(stage.picture(), folder.filePath(u"editor.png"_s));
  }
  DesktopOptions inKorean = plain;
  inKorean.language = Language::Korean;
  {
    Stage stage(inKorean);
    save(states(stage, korean), folder.filePath(u"editor-korean.png"_s));
  }
  save(sheetOf({scaled(1.25, inKorean, korean), scaled(1.5, plain, english), scaled(2, plain, english)}, 2),
       folder.filePath(u"editor-scales.png"_s));
}

}  // namespace
}  // namespace demo

int main(int argc, char** argv) {
  return demo::runDrawingProgram(argc, argv, demo::drawPictures);
}
