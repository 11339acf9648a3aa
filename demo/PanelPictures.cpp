// Draws the sheets on which the history panel is judged: panel_pictures FOLDER. The pictures are of the real
// program on desktops of its own.

#include "demo/DrawingProgram.h"
#include "demo/FilledBottle.h"
#include "demo/Sheet.h"
#include "demo/TourScenery.h"
#include "tests/e2e/Panel.h"
#include "tests/support/SettingsPortal.h"

#include <QDir>
#include <QPainter>

#include <functional>
#include <stdexcept>

using namespace Qt::StringLiterals;

using namespace e2e;

namespace demo {
namespace {

enum class Look { Light, Dark };

/// A desktop with Sorrel in its tray and the panel in the picture.
class Stage {
 public:
  Stage(const DesktopOptions& options, Look look)
      : desktop(options), portal(desktop.busAddress()), bottle(desktop.home(u"Documents/Sorrel bottle"_s)) {
    desktop.screen().paintRoot(scenery::wallpaper(desktop.screen().size()));
    Sorrel::store(desktop, u"appLanguage"_s, options.language == Language::Korean ? u"ko"_s : u"en"_s);
    Sorrel::store(desktop, u"autoDeleteDays"_s, 0);
    Sorrel::store(desktop, u"quillonPromptShown"_s, true);
    portal.answer = look == Look::Dark ? 1U : 2U;
    sorrel.emplace(desktop);
    panel.emplace(desktop, *sorrel);
    away = {options.size.width() / 5, options.size.height() * 4 / 5};
  }

  void show(int pictures) {
    if (panel->window())
      panel->close();
    bottle.setCount(pictures);
    panel->openByClick();
    panel->moveTo(away);
  }

  /// The panel and some of the desktop, once all is still.
  [[nodiscard]] QImage picture() { return aroundPanel(desktop.screen().settledPicture()); }
  /// The same after a gesture that shows in it.
  [[nodiscard]] QImage pictureAfter(const std::function<void()>& gesture) {
    return aroundPanel(desktop.screen().settledPictureAfter(gesture));
  }

  Desktop desktop;
  SettingsPortal portal;
  FilledBottle bottle;
  std::optional<Sorrel> sorrel;
  std::optional<Panel> panel;
  QPoint away;

 private:
  [[nodiscard]] QImage aroundPanel(const QImage& screen) const {
    return screen.copy(panel->window()->frame.adjusted(-48, -32, 8, 48) & screen.rect());
  }
};

/// Empty, with 1, 9 and 200 pictures; hovered over, selected, copied from, locked.
QImage states(Stage& stage) {
  std::vector<QImage> pictures;
  for (const int count : {0, 1, 9, 200}) {
    stage.show(count);
    pictures.push_back(stage.picture());
  }
  Panel& panel = *stage.panel;
  pictures.push_back(stage.pictureAfter([&] { panel.moveTo(panel.thumbnail(1).center()); }));
  (void)stage.pictureAfter([&] { panel.click(panel.thumbnail(3).center()); });
  pictures.push_back(stage.pictureAfter([&] { panel.moveTo(stage.away); }));
  (void)stage.pictureAfter([&] { panel.moveTo(panel.copyButton(2)); });
  stage.desktop.input().clickButton(1);
  until("the message is there", [&] { return panel.hasToast(); });
  pictures.push_back(stage.picture());
  until("the message is gone", [&] { return !panel.hasToast(); });
  stage.show(9);
  (void)stage.pictureAfter([&] { panel.click(panel.lockButton()); });
  pictures.push_back(stage.pictureAfter([&] { panel.moveTo(stage.away); }));
  return sheetOf(pictures, 4);
}

/// One thumbnail selected, another one under the pointer.
QImage inUse(const DesktopOptions& options, Look look) {
  Stage stage(options, look);
  stage.show(200);
  Panel& panel = *stage.panel;
  (void)stage.pictureAfter([&] { panel.click(panel.thumbnail(0).center()); });
  return stage.pictureAfter([&] { panel.moveTo(panel.thumbnail(2).center()); });
}

void drawPictures(const QString& path) {
  const QDir folder(path);
  const auto save = [&](const QString& name, const QImage& picture) {
    constexpr int smallest = 0;
    if (!picture.save(folder.filePath(name), "PNG", smallest))
      throw std::runtime_error("can't write " + name.toStdString());
  };
  constexpr QSize screen(1200, 720);
  using enum Compositor;
  {
    Stage light({.size = screen, .compositor = Running}, Look::Light);
    save(u"panel-light-english.png"_s, states(light));
  }
  {
    // The desktop turns dark while the panel is open.
    Stage dark({.size = screen, .language = Language::Korean, .compositor = Running}, Look::Light);
    dark.show(0);
    dark.portal.choose(1U);
    save(u"panel-dark-korean.png"_s, states(dark));
  }
  const QImage plain = inUse({.size = screen}, Look::Light);
  const QImage larger =
      inUse({.size = screen * 1.25, .language = Language::Korean, .compositor = Running, .scale = 1.25},
            Look::Dark);
  const QImage twice = inUse({.size = screen * 2, .compositor = Running, .scale = 2}, Look::Light);
  save(u"panel-scales.png"_s, sheetOf({sheetOf({plain, larger}, 1), twice}, 2));
  save(u"panel.png"_s, inUse({.size = screen, .compositor = Running}, Look::Light));
}

}  // namespace
}  // namespace demo

int main(int argc, char** argv) {
  return demo::runDrawingProgram(argc, argv, demo::drawPictures);
}
