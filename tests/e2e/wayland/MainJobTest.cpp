// The real program in a Wayland session: from the call for a capture to the picture in another program.

#include "tests/e2e/StatusNotifierHost.h"
#include "tests/support/Files.h"
#include "tests/support/Screen.h"
#include "tests/support/SwaySession.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QUrl>

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <signal.h>

using namespace Qt::StringLiterals;

namespace e2e {
namespace {

using namespace testing_support;

const QString sorrel = QStringLiteral(E2E_BUILD_DIR "/bin/sorrel");
const QString dropTarget = QStringLiteral(E2E_BUILD_DIR "/tests/drop_target");
constexpr QRect redSpot(200, 200, 300, 200);  // of the desktop, which is noise elsewhere
constexpr QPoint trayIcon(1200, 10);
constexpr int enoughToSee = 1000;  // pixels

QImage noiseWithARedSpot(QSize size) {
  QImage picture = randomPicture(size, 5);
  for (int y = redSpot.top(); y <= redSpot.bottom(); ++y)
    for (int x = redSpot.left(); x <= redSpot.right(); ++x)
      picture.setPixel(x, y, qRgb(230, 0, 0));
  return picture;
}

class WaylandJob : public testing::Test {
 protected:
  explicit WaylandJob(const SwayOptions& options = {}) : session(options) {
    session.write(u".config/Sorrel/defaults.json"_s, R"({"quillonPromptShown": true})");
    session.setBackground(desktop);
    program = session.start({sorrel});
    until("the icon is in the tray", [this] {
      if (!program->isRunning())
        throw std::runtime_error("Sorrel has ended at once: " + program->errors().toStdString());
      return tray.hasItem();
    });
  }

  [[nodiscard]] QStringList bottle() const {
    return QDir(session.home(u"Documents/Sorrel bottle"_s)).entryList({u"*.png"_s}, QDir::Files);
  }
  /// Calls for a capture as the desktop's own key binding does, and waits until the screen is frozen.
  void beginCapture(const QString& option) {
    session.run({sorrel, option});
    until("the screen is frozen", [this] { return session.picture() != desktop; });
  }
  /// Drags over an area, its edges included.
  void drag(const QRect& area) { session.drag(area.topLeft(), area.bottomRight()); }
  QImage waitForCapture() {
    until("the capture is in the bottle", [this] { return bottle().size() == 1; });
    return QImage(session.home(u"Documents/Sorrel bottle/"_s + bottle().first()))
        .convertToFormat(QImage::Format_RGB32);
  }
  void waitUntilNothingIsShown() {
    until("nothing is on the desktop", [this] { return session.picture() == desktop; });
  }
  /// Waits until the panel is there with a thumbnail of the red spot, and stands still; the thumbnail's
  /// place.
  QRect waitForThumbnail() {
    QRect thumbnail;
    until("the panel shows the picture", [&] {
      const QImage now = session.settledPicture();
      thumbnail = {};
      int count = 0;
      for (int y = 0; y < now.height(); ++y) {
        for (int x = 0; x < now.width(); ++x) {
          const QColor color = now.pixel(x, y);
          if (redSpot.contains(x, y) || color.red() < 200 || color.green() > 20 || color.blue() > 20 ||
              now.pixel(x, y) == desktop.pixel(x, y))
            continue;
          thumbnail |= QRect(x, y, 1, 1);
          ++count;
        }
      }
      return count > enoughToSee;
    });
    return thumbnail;
  }
  [[nodiscard]] QImage pasted() const {
    until("a picture is copied",
          [this] { return session.start(u"wl-paste --list-types"_s.split(u' '))->waitForEnd() == 0; });
    return QImage::fromData(session.run(u"wl-paste --type image/png"_s.split(u' ')))
        .convertToFormat(QImage::Format_RGB32);
  }

  SwaySession session;
  const QImage desktop = noiseWithARedSpot({1280, 800});
  StatusNotifierHost tray{session.busAddress()};
  std::unique_ptr<Program> program;
};

TEST_F(WaylandJob, ACaptureLandsInTheBottleAndInThePanelAndCanBePastedForGood) {
  const QRect area(150, 180, 411, 257);
  beginCapture(u"--capture"_s);
  (void)session.settledPicture();
  drag(area);
  EXPECT_EQ(waitForCapture(), desktop.copy(area));
  (void)waitForThumbnail();
  session.input().tapKey(KEY_ESC);
  waitUntilNothingIsShown();

  tray.activate(trayIcon);
  const QRect thumbnail = waitForThumbnail();
  EXPECT_GT(thumbnail.left(), 640) << "the panel isn't below the icon";
  session.input().tapKey(KEY_RIGHT);
  session.input().pressKey(KEY_LEFTCTRL);
  session.input().tapKey(KEY_C);
  session.input().releaseKey(KEY_LEFTCTRL);
  EXPECT_EQ(pasted(), desktop.copy(area));
  program->send(SIGKILL);
  program->waitForEnd();
  EXPECT_EQ(pasted(), desktop.copy(area));
  EXPECT_EQ(session.run(u"wl-paste --type text/uri-list"_s.split(u' ')).trimmed(),
            QUrl::fromLocalFile(session.home(u"Documents/Sorrel bottle/"_s + bottle().first())).toEncoded());
}

TEST_F(WaylandJob, ACaptureOpensInTheEditorOrGoesToTheClipboardOrIsCancelled) {
  const QRect area(300, 100, 320, 240);
  beginCapture(u"--capture"_s);
  session.input().tapKey(KEY_ESC);
  waitUntilNothingIsShown();
  EXPECT_TRUE(bottle().isEmpty());

  beginCapture(u"--capture-to-clipboard"_s);
  drag(area);
  waitUntilNothingIsShown();
  EXPECT_EQ(pasted(), desktop.copy(area));
  EXPECT_TRUE(bottle().isEmpty());

  beginCapture(u"--capture-and-edit"_s);
  drag(area);
  EXPECT_EQ(waitForCapture(), desktop.copy(area));
  until("the editor is open", [&] { return session.windowTitles().size() == 1; });
  (void)session.settledPicture();
  session.input().tapKey(KEY_ESC);
  until("the editor is closed", [&] { return session.windowTitles().isEmpty(); });

  session.run({sorrel, u"--quit"_s});
  EXPECT_EQ(program->waitForEnd(), 0);
}

TEST_F(WaylandJob, APictureIsDraggedFromThePanelIntoAnotherProgram) {
  const auto target = session.start({dropTarget, u"100"_s, u"200"_s});
  until("the target is there", [&] { return session.windowTitles().contains(u"Drop here"_s); });
  const QString path = session.write(u"Documents/Sorrel bottle/sea & \uBCD1.png"_s, {});
  ASSERT_TRUE(desktop.copy(redSpot).save(path, "PNG"));
  tray.activate(trayIcon);
  const QPoint start = waitForThumbnail().center();
  const QPoint end(200, 600);
  session.moveTo(start);
  session.input().pressButton(1);
  for (int step = 1; step <= 20; ++step)
    session.moveTo(start + (end - start) * step / 20);
  until("the target would take it", [&] {
    session.moveTo(end + QPoint(1, 0));
    session.moveTo(end);
    return target->output().contains("over");
  });
  session.input().releaseButton(1);
  until("the target has the file",
        [&] { return target->output().contains(QUrl::fromLocalFile(path).toEncoded()); });
  EXPECT_TRUE(QFile::exists(path));
}

class WaylandTablet : public WaylandJob {
 protected:
  /// New windows don't come to the front by themselves.
  WaylandTablet() : WaylandJob({.configuration = "no_focus [app_id=\".*\"]\n", .keyboardLayout = {}}) {}
};

TEST_F(WaylandTablet, TheJobIsDoneWithoutAKeyboard) {
  const QRect area(150, 180, 411, 257);
  beginCapture(u"--capture"_s);
  drag(area);
  EXPECT_EQ(waitForCapture(), desktop.copy(area));
  (void)waitForThumbnail();
  session.moveTo({20, 700});
  session.input().clickButton(1);
  waitUntilNothingIsShown();

  beginCapture(u"--capture-to-clipboard"_s);
  drag(area);
  waitUntilNothingIsShown();
  EXPECT_EQ(pasted(), desktop.copy(area));
  beginCapture(u"--capture-and-edit"_s);
  const auto other = session.start({dropTarget, u"0"_s, u"0"_s});
  until("the other window is there", [&] { return session.windowTitles().size() == 1; });
  drag(area);
  until("the editor is open", [&] { return session.windowTitles().size() == 2; });
  for (int i = 0; i < 3; ++i)  // until after the editor has asked to come to the front
    (void)session.settledPicture();
  session.run({sorrel, u"--quit"_s});
  EXPECT_EQ(program->waitForEnd(), 0);
}

}  // namespace
}  // namespace e2e
