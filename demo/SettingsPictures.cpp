// Draws the sheets on which the settings are judged: settings_pictures FOLDER. The pictures are of the real
// program on desktops of its own.

#include "demo/DrawingProgram.h"
#include "demo/Sheet.h"
#include "demo/TourScenery.h"
#include "tests/e2e/Settings.h"
#include "tests/support/SettingsPortal.h"

#include <QDir>
#include <QPainter>

#include <linux/input-event-codes.h>
#include <stdexcept>
#include <xcb/xproto.h>

using namespace Qt::StringLiterals;

using namespace e2e;

namespace demo {
namespace {

enum class Look { Light, Dark };

using Tab = Settings::Tab;

/// A logo of one leaf or three, in the folder of the stored logos.
void putLogo(Desktop& desktop, const QString& name, int leaves, const QColor& color) {
  QImage logo(160, 160, QImage::Format_ARGB32_Premultiplied);
  logo.fill(Qt::transparent);
  QPainter painter(&logo);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.translate(80, 80);
  for (int leaf = 0; leaf < leaves; ++leaf) {
    painter.drawEllipse(QRect(-22, -76, 44, 70));
    painter.rotate(360.0 / leaves);
  }
  painter.end();
  const QString path = desktop.write(u".local/share/Sorrel/watermark-logos/"_s + name, {});
  if (!logo.save(path))
    throw std::runtime_error("can't write " + path.toStdString());
}

/// A desktop with Sorrel's settings open on it.
class Stage {
 public:
  Stage(const DesktopOptions& options, Look look) : desktop(options), portal(desktop.busAddress()) {
    desktop.screen().paintRoot(scenery::wallpaper(desktop.screen().size()));
    Sorrel::store(desktop, u"appLanguage"_s, options.language == Language::Korean ? u"ko"_s : u"en"_s);
    portal.answer = look == Look::Dark ? 1U : 2U;
  }

  void open() {
    sorrel.emplace(desktop);
    settings.emplace(desktop, *sorrel);
    settings->openByMenu();
  }

  /// The window with its frame, once all is still.
  [[nodiscard]] QImage picture() {
    const QRect frame = desktop.screen().frameOf(settings->window()->id);
    return desktop.screen().settledPicture().copy(frame.adjusted(-16, -16, 16, 16));
  }
  [[nodiscard]] QImage pictureAfter(const std::function<void()>& gesture) {
    (void)desktop.screen().settledPictureAfter(gesture);
    return picture();
  }

  Desktop desktop;
  SettingsPortal portal;
  std::optional<Sorrel> sorrel;
  std::optional<Settings> settings;
};

/// What somebody has made of the settings, who didn't leave them as they were.
void personalize(Desktop& desktop) {
  Sorrel::store(desktop, u"storageDirectory"_s, u"~/Pictures/Everything that I ever took of a screen"_s);
  Sorrel::store(desktop, u"watermarkFontFamily"_s, u"NanumGothic"_s);
  Sorrel::store(desktop, u"rememberWatermarkText"_s, true);
  Sorrel::store(desktop, u"autoDeleteDays"_s, 0);
  putLogo(desktop, u"leaf.png"_s, 1, QColor(0x3b6b2f));
  putLogo(desktop, u"clover with a long name.png"_s, 3, QColor(0x6fae4e));
  putLogo(desktop, u"flower.png"_s, 5, QColor(0xe9c046));
  desktop.write(u".local/share/Sorrel/watermark-logos/torn.png"_s, "no picture");
}

QImage tabs(Stage& stage) {
  stage.open();
  std::vector<QImage> pictures;
  for (const Tab tab : {Tab::General, Tab::Shortcuts, Tab::Watermark, Tab::Storage}) {
    stage.settings->select(tab);
    pictures.push_back(stage.picture());
  }
  return sheetOf(pictures, 4);
}

/// What lies below the general tab's lower edge, once the keyboard has gone there; a shortcut is recorded,
/// and another that the desktop keeps; the warning about a folder that was chosen.
QImage questions(Stage& stage) {
  stage.open();
  Settings& settings = *stage.settings;
  XTestInput& input = stage.desktop.input();
  std::vector<QImage> pictures;
  (void)stage.pictureAfter([&] {
    input.pressKey(KEY_LEFTSHIFT);
    input.tapKey(KEY_TAB);
    input.releaseKey(KEY_LEFTSHIFT);
  });
  pictures.push_back(stage.pictureAfter([&] { input.tapKey(KEY_SPACE); }));
  settings.select(Tab::Shortcuts);
  pictures.push_back(stage.pictureAfter([&] { settings.click(Settings::recorder(1)); }));
  if (!stage.desktop.screen().grabKey(KEY_G, XCB_MOD_MASK_CONTROL))
    throw std::runtime_error("no key can be kept from Sorrel");
  pictures.push_back(stage.pictureAfter([&] { settings.pressWithControl(KEY_G); }));
  (void)stage.pictureAfter([&] { input.tapKey(KEY_ENTER); });
  (void)stage.pictureAfter([&] { input.tapKey(KEY_ESC); });
  settings.select(Tab::Storage);
  (void)stage.pictureAfter([&] { settings.click(Settings::changeFolder()); });
  for (const int key : {KEY_SLASH, KEY_H, KEY_O, KEY_M, KEY_E})
    (void)stage.pictureAfter([&] { input.tapKey(key); });
  pictures.push_back(stage.pictureAfter([&] { input.tapKey(KEY_ENTER); }));
  return sheetOf(pictures, 4);
}

QImage sheet(const DesktopOptions& options, Look look) {
  std::vector<QImage> rows;
  rows.push_back(tabs(*std::make_unique<Stage>(options, look)));
  {
    Stage stage(options, look);
    personalize(stage.desktop);
    rows.push_back(tabs(stage));
  }
  rows.push_back(questions(*std::make_unique<Stage>(options, look)));
  return sheetOf(rows, 1);
}

void drawPictures(const QString& path) {
  const QDir folder(path);
  constexpr QSize screen(720, 560);
  using enum Compositor;
  {
    Stage stage({.size = screen, .compositor = Running}, Look::Light);
    stage.open();
    stage.settings->select(Tab::Shortcuts);
    save(stage.picture(), folder.filePath(u"settings.png"_s));
  }
  save(sheet({.size = screen, .compositor = Running}, Look::Light),
       folder.filePath(u"settings-light-english.png"_s));
  save(sheet({.size = screen, .language = Language::Korean, .compositor = Running}, Look::Dark),
       folder.filePath(u"settings-dark-korean.png"_s));
}

}  // namespace
}  // namespace demo

int main(int argc, char** argv) {
  return demo::runDrawingProgram(argc, argv, demo::drawPictures);
}
