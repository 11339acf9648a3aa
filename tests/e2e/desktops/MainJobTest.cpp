// The whole job of the real, installed program on other desktops, with a picture of each step.

#include "tests/e2e/StatusNotifierHost.h"
#include "tests/e2e/desktops/GnomeSession.h"
#include "tests/e2e/desktops/KWinSession.h"
#include "tests/support/Screen.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QElapsedTimer>
#include <QUrl>

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <signal.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

const QString sorrel = QStringLiteral(INSTALLED_DIR "/bin/sorrel");
const QString bottlePath = u"Documents/Sorrel bottle"_s;

enum class DesktopKind { KWin, GnomeShell, GnomeShellWithoutX };

const char* nameOf(DesktopKind kind) {
  switch (kind) {
    case DesktopKind::KWin:
      return "KWin";
    case DesktopKind::GnomeShell:
      return "GnomeShell";
    case DesktopKind::GnomeShellWithoutX:
      return "GnomeShellWithoutX";
  }
  return nullptr;
}

class OtherDesktop : public testing::TestWithParam<DesktopKind> {
 protected:
  OtherDesktop() {
    session->write(u".config/Sorrel/defaults.json"_s,
                   R"({"quillonPromptShown": true, "hotKeysMayBeBound": true})");
    const QString picture = session->write(u"picture.png"_s, {});
    EXPECT_TRUE(randomPicture({700, 500}, 6).save(picture));
    shown = session->start({QStringLiteral(DROP_TARGET), u"0"_s, u"0"_s, picture});
    program = session->start({sorrel});
    until("the icon is in the tray", [this] {
      if (!program->isRunning())
        throw std::runtime_error("Sorrel has ended at once: " + program->errors().toStdString());
      return isGnome() || tray->hasItem();
    });
    session->moveTo({5, 700});
    until("the picture is shown", [this] {
      desktop = session->settledPicture();
      return desktop.pixel(640, 400) != desktop.pixel(660, 420);
    });
    save(u"desktop"_s);
  }

  ~OtherDesktop() override {
    if (!HasFailure())
      return;
    save(u"failure"_s);
    std::fputs(program->errors().constData(), stderr);
  }

  [[nodiscard]] static bool isGnome() { return GetParam() != DesktopKind::KWin; }
  /// Saves what is on the screen now.
  void save(const QString& step) const {
    const QString path =
        QStringLiteral(PICTURES_DIR "/") + QLatin1StringView(nameOf(GetParam())) + u'-' + step + u".png"_s;
    EXPECT_TRUE(session->settledPicture().save(path)) << path.toStdString();
  }
  [[nodiscard]] QStringList bottle() const {
    return QDir(session->home(bottlePath)).entryList({u"*.png"_s}, QDir::Files);
  }
  /// A portal's flash is bright, the veil is dark.
  [[nodiscard]] bool isFrozen() const {
    const QPoint seen(640, 400);
    return qGray(session->settledPicture().pixel(seen)) < qGray(desktop.pixel(seen));
  }
  void beginCapture(const QString& option) {
    session->run({sorrel, option});
    until("the screen is frozen", [&] { return isFrozen(); });
  }
  /// By the hot key, as soon as the desktop knows of it. Pressed too often, it begins more than one.
  void beginCaptureByHotKey() {
    constexpr qint64 longestWay = 5000;  // milliseconds
    const auto freezes = [&] {
      for (const int key : {KEY_LEFTALT, KEY_LEFTSHIFT, KEY_S})
        session->turnKey(key, true);
      for (const int key : {KEY_S, KEY_LEFTSHIFT, KEY_LEFTALT})
        session->turnKey(key, false);
      QElapsedTimer since;
      for (since.start(); since.elapsed() < longestWay;)
        if (isFrozen())
          return true;
      return false;
    };
    until("the hot key freezes the screen", freezes, std::chrono::seconds(30));
  }
  /// Drags the panel's newest picture to the program behind it.
  void dragOut() {
    const QByteArray address =
        QUrl::fromLocalFile(session->home(bottlePath + u'/' + bottle().last())).toEncoded();
    session->drag({890, 150}, {500, 500}, [&] {
      (void)session->settledPicture();  // that it would take the file has to be known to the desktop, too
      return shown->output().contains("over");
    });
    until("the other program has the picture", [&] { return shown->output().contains(address); });
  }
  /// Drags over an area, its edges included; what is selected is as bright as before.
  void select(const QRect& area) {
    const QPoint inside = area.bottomRight() - QPoint(10, 10);
    session->drag(area.topLeft(), area.bottomRight(),
                  [&] { return session->picture().pixel(inside) == desktop.pixel(inside); });
  }
  [[nodiscard]] QImage newestInBottle(qsizetype count) {
    until("the capture is in the bottle", [&] { return bottle().size() == count; });
    return QImage(session->home(bottlePath + u'/' + bottle().last())).convertToFormat(QImage::Format_RGB32);
  }
  void closeByEscape() {
    session->tapKey(KEY_ESC);
    session->moveTo({5, 700});
    until("nothing is on the desktop", [this] { return isAsBefore(session->settledPicture()); });
  }
  /// Elsewhere clocks go on, and title bars show who has the keyboard.
  [[nodiscard]] bool isAsBefore(const QImage& now) const {
    constexpr QRect inThePicture(290, 150, 690, 460);
    return now.copy(inThePicture) == desktop.copy(inThePicture);
  }

  const std::unique_ptr<DesktopSession> session =
      isGnome() ? std::unique_ptr<DesktopSession>(std::make_unique<GnomeSession>(
                      GetParam() == DesktopKind::GnomeShell ? XWayland::On : XWayland::Off))
                : std::make_unique<KWinSession>();
  std::unique_ptr<StatusNotifierHost> tray =
      isGnome() ? nullptr : std::make_unique<StatusNotifierHost>(session->busAddress());
  std::unique_ptr<Program> shown;
  std::unique_ptr<Program> program;
  QImage desktop;
};

TEST_P(OtherDesktop, DoesTheWholeJob) {
  const QRect area(330, 210, 411, 257);
  beginCaptureByHotKey();
  save(u"selection"_s);
  select(area);
  EXPECT_EQ(newestInBottle(1), desktop.copy(area));
  until("the history is open", [&] { return !isAsBefore(session->settledPicture()); });
  save(u"panel"_s);

  session->tapKey(KEY_RIGHT);
  session->turnKey(KEY_LEFTCTRL, true);
  session->tapKey(KEY_C);
  session->turnKey(KEY_LEFTCTRL, false);
  save(u"copied"_s);
  // From here on the other program's window is the one that was used last.
  dragOut();
  save(u"dragged"_s);
  if (isGnome())
    closeByEscape();
  else  // the other program has the keyboard now, and may ask something
    until("the panel is gone", [this] { return isAsBefore(session->settledPicture()); });

  beginCapture(u"--capture-and-edit"_s);
  select(area);
  EXPECT_EQ(newestInBottle(2), desktop.copy(area));
  until("the editor is open", [&] { return !isAsBefore(session->settledPicture()); });
  save(u"editor"_s);
  if (isGnome()) {
    EXPECT_LT(qGray(session->picture().pixel(300, 36)), 80) << "the editor's frame isn't dark";
  }
  closeByEscape();

  beginCapture(u"--capture"_s);
  closeByEscape();
  EXPECT_EQ(bottle().size(), 2);

  session->run({sorrel, u"--quit"_s});
  EXPECT_EQ(program->waitForEnd(), 0);
  const QByteArray pasted = session->run(u"wl-paste --type image/png"_s.split(u' '));
  EXPECT_EQ(QImage::fromData(pasted).convertToFormat(QImage::Format_RGB32), desktop.copy(area));
}

INSTANTIATE_TEST_SUITE_P(Kinds, OtherDesktop,
                         testing::Values(DesktopKind::KWin, DesktopKind::GnomeShell,
                                         DesktopKind::GnomeShellWithoutX),
                         [](const auto& kind) { return nameOf(kind.param); });

class Refusal : public OtherDesktop {};

TEST_P(Refusal, OfAScreenshotIsLoggedAndToldWithWhatHelps) {
  dynamic_cast<GnomeSession&>(*session).setScreenshotsAllowed(false);
  const auto notes = session->start({u"dbus-monitor"_s, u"--session"_s, u"member='Notify'"_s});
  until("somebody listens", [&] { return !notes->output().isEmpty(); });
  session->run({sorrel, u"--capture"_s});
  until("it is told", [&] { return notes->output().contains("screencapture-services ask-again"); });
  EXPECT_TRUE(program->errors().contains("doesn't allow screenshots"));
  EXPECT_TRUE(isAsBefore(session->settledPicture()));
  EXPECT_TRUE(bottle().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Kinds, Refusal, testing::Values(DesktopKind::GnomeShell),
                         [](const auto& kind) { return nameOf(kind.param); });

}  // namespace
}  // namespace e2e
