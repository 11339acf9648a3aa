// Draws the program on the Wayland desktops: desktop_pictures FOLDER. The pictures are of the installed
// program in sessions of their own.

#include "demo/DrawingProgram.h"
#include "demo/FilledBottle.h"
#include "demo/TourScenery.h"
#include "tests/e2e/desktops/GnomeSession.h"
#include "tests/e2e/desktops/KWinSession.h"
#include "tests/support/SwaySession.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QUrl>

#include <stdexcept>

using namespace Qt::StringLiterals;

using namespace testing_support;

namespace demo {
namespace {

constexpr int pictures = 9;

/// The editor with a picture in it, and the panel with the newest ones.
template <typename Session>
QImage programOn(Session& session) {
  session.write(u".config/Sorrel/defaults.json"_s, R"({"quillonPromptShown": true, "autoDeleteDays": 0})");
  FilledBottle(session.home(u"Documents/Sorrel bottle"_s)).setCount(pictures);
  const QString picture = session.write(u"lake.png"_s, {});
  if (!scenery::photograph({760, 480}).save(picture))
    throw std::runtime_error("can't write the editor's picture");
  const QString sorrel = QStringLiteral(INSTALLED_DIR "/bin/sorrel");
  const auto program = session.start({sorrel});
  const auto waitForChange = [&](const QImage& before) {
    QImage now;
    until("the program is seen", [&] {
      now = session.settledPicture();
      return now != before;
    });
    return now;
  };
  const auto call =
      u"gdbus call --session --dest org.sorrel.Sorrel --object-path /org/sorrel/Sorrel --method "_s;
  session.run({u"gdbus"_s, u"wait"_s, u"--session"_s, u"org.sorrel.Sorrel"_s});
  const QImage desktop = session.settledPicture();
  const QString address = QUrl::fromLocalFile(picture).toString(QUrl::FullyEncoded);
  session.run(call.split(u' ', Qt::SkipEmptyParts) +
              QStringList{u"org.freedesktop.Application.Open"_s, u"['%1']"_s.arg(address), u"{}"_s});
  const QImage withEditor = waitForChange(desktop);
  session.run({sorrel, u"--history"_s});
  return waitForChange(withEditor);
}

/// Behind all windows, as far as a desktop without its own shell has such a thing.
std::unique_ptr<Program> showWallpaper(e2e::DesktopSession& session) {
  const QString path = session.write(u"wallpaper.png"_s, {});
  if (!scenery::wallpaper(session.size).save(path))
    throw std::runtime_error("can't write the wallpaper");
  const QImage before = session.settledPicture();
  auto program = session.start({QStringLiteral(DROP_TARGET), u"0"_s, u"0"_s, path});
  until("the wallpaper is shown", [&] { return session.settledPicture() != before; });
  return program;
}

void drawPictures(const QString& path) {
  const auto save = [folder = QDir(path)](const QString& name, const QImage& picture) {
    constexpr int smallest = 0;
    if (!picture.save(folder.filePath(name), "PNG", smallest))
      throw std::runtime_error("can't write " + name.toStdString());
  };
  {
    SwaySession session;
    session.setBackground(scenery::wallpaper({1280, 800}));
    save(u"desktop-sway.png"_s, programOn(session));
  }
  {
    e2e::KWinSession session;
    const auto wallpaper = showWallpaper(session);
    save(u"desktop-kde.png"_s, programOn(session));
  }
  e2e::GnomeSession session(XWayland::On);
  save(u"desktop-gnome.png"_s, programOn(session));
}

}  // namespace
}  // namespace demo

int main(int argc, char** argv) {
  becomeOrdinaryUser();
  return demo::runDrawingProgram(argc, argv, demo::drawPictures);
}
