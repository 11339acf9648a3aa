// The tool itself, as a process on an X server of its own, with real keys and a real pointer.

#include "tests/support/Program.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/Screen.h"
#include "tests/support/Waiting.h"
#include "tests/support/XTestInput.h"
#include "tests/support/XvfbServer.h"

#include <QDir>
#include <QFile>
#include <QThread>

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <random>
#include <signal.h>

using namespace Qt::StringLiterals;
using namespace testing_support;

namespace {

constexpr int left = 1, right = 3;
constexpr QSize size(400, 300);
constexpr QRect everything({}, size);

/// The server with a picture of noise on it, in which no two places look the same.
struct Desk {
  explicit Desk(int depth = 24, const std::vector<std::string>& options = {})
      : server(size.width(), size.height(), depth, options),
        screen(server.display()),
        hand(server.display()) {
    screen.paintRoot(randomPicture(size, 1));
    environment.insert(u"DISPLAY"_s, QString::fromStdString(server.display()));
  }

  [[nodiscard]] std::unique_ptr<Program> start(const QStringList& command) const {
    return std::make_unique<Program>(command, environment);
  }
  [[nodiscard]] std::unique_ptr<Program> tool(const QString& target) const {
    return start({QStringLiteral(SORREL_CAPTURE_TOOL), u"-i"_s, target});
  }
  /// The tool, once the screen can be selected from; by then it has asked for the pointer and the keyboard.
  [[nodiscard]] std::unique_ptr<Program> selecting(const QString& target) const {
    return shown(tool(target));
  }
  [[nodiscard]] std::unique_ptr<Program> shown(std::unique_ptr<Program> started) const {
    until("the tool's overlay is there", [&] { return screen.find(u"screencapture"_s).has_value(); });
    return started;
  }
  /// Starts to pick a color with the pointer there, and waits for the magnifier.
  [[nodiscard]] std::unique_ptr<Program> picking(QPoint pointer) {
    hand.moveTo(pointer.x(), pointer.y());
    const QImage before = screen.picture();
    auto started = shown(start({QStringLiteral(SORREL_CAPTURE_TOOL), u"--pick-color"_s}));
    until("the magnifier is there", [&] { return screen.picture() != before; });
    return started;
  }
  /// What the tool prints for the pixel there.
  [[nodiscard]] static QByteArray lineFor(const QImage& picture, QPoint point) {
    return picture.pixelColor(point).name().toUpper().toLatin1() + '\n';
  }
  /// Runs the tool to a file, with these gestures; its exit status.
  int take(const std::function<void()>& gestures) const {
    const auto started = selecting(file);
    gestures();
    return started->waitForEnd();
  }

  void drag(const QRect& area) {
    hand.moveTo(area.left(), area.top());
    hand.pressButton(left);
    hand.moveTo(area.center().x(), area.center().y());
    hand.moveTo(area.right(), area.bottom());
    hand.releaseButton(left);
  }
  [[nodiscard]] QByteArray paste(const QString& target) const {
    const auto program = start({u"xclip"_s, u"-selection"_s, u"clipboard"_s, u"-o"_s, u"-t"_s, target});
    EXPECT_EQ(program->waitForEnd(), 0) << program->errors().constData();
    return program->output();
  }
  void pickWindow(QPoint point) {
    hand.tapKey(KEY_SPACE);
    hand.moveTo(point.x(), point.y());
    hand.clickButton(left);
  }
  [[nodiscard]] QImage taken() const { return QImage(file).convertToFormat(QImage::Format_RGB32); }
  /// All names that the tool may have left in the folder.
  [[nodiscard]] QStringList names() const {
    QStringList all = QDir(home.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    all.removeAll(u".runtime"_s);
    return all;
  }

  const ScratchHome home;
  const QString file = home.path(u"shot.png"_s);
  XvfbServer server;
  Screen screen;
  XTestInput hand;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};

TEST(Screencapture, takesTheScreenAsItWasAtTheStart) {
  Desk desk;
  const quint32 menu = desk.screen.openWindow({}, {50, 50}, randomPicture({60, 40}, 2), WindowKind::Menu);
  const QImage before = desk.screen.settledPicture();
  EXPECT_EQ(desk.take([&] {
    desk.screen.closeWindow(menu);
    desk.drag(everything);
  }),
            0);
  EXPECT_EQ(desk.taken(), before);
}

TEST(Screencapture, showsTheAreaBrightAndTheRestVeiled) {
  Desk desk;
  const QImage picture = desk.screen.picture();
  const QRect area(QPoint(100, 80), QPoint(180, 120));
  const auto tool = desk.selecting(desk.file);
  desk.hand.moveTo(100, 80);
  desk.hand.pressButton(left);
  desk.hand.moveTo(200, 150);
  desk.hand.moveTo(180, 120);
  until("the area is bright", [&] { return desk.screen.picture().copy(area) == picture.copy(area); });
  const QImage shown = desk.screen.settledPicture();
  EXPECT_EQ(shown.copy(area), picture.copy(area));
  EXPECT_EQ(shown.pixelColor(99, 100), QColor(Qt::white));
  EXPECT_EQ(shown.pixelColor(181, 100), QColor(Qt::white));
  // Where the area was larger before, and where it never was, the veil lies alike.
  for (const QPoint point : {QPoint(190, 82), QPoint(120, 140), QPoint(5, 5), everything.bottomRight()}) {
    const QRgb bright = picture.pixel(point), dim = shown.pixel(point);
    for (const int shift : {16, 8, 0})
      EXPECT_NEAR(dim >> shift & 255, (bright >> shift & 255) * 0.55, 2) << point.x() << ", " << point.y();
  }
  desk.hand.tapKey(KEY_ESC);
  EXPECT_EQ(tool->waitForEnd(), 1);
  EXPECT_EQ(desk.screen.settledPicture(), picture);
}

TEST(Screencapture, leavesNothingWhenCancelled) {
  Desk desk;
  for (const int button : {left, right}) {
    const auto tool = desk.selecting(desk.file);
    desk.hand.clickButton(button);
    EXPECT_EQ(tool->waitForEnd(), 1);
    EXPECT_EQ(tool->errors(), QByteArray());
  }
  EXPECT_EQ(desk.names(), QStringList());
}

TEST(Screencapture, thePointerWorksWhileAnotherProgramHoldsTheKeyboard) {
  Desk desk;
  ASSERT_TRUE(desk.screen.grabKeyboard());
  EXPECT_EQ(desk.take([&] { desk.drag(QRect(10, 10, 11, 21)); }), 0);
  EXPECT_EQ(desk.taken().size(), QSize(11, 21));
  EXPECT_EQ(desk.take([&] {
    desk.screen.ungrabKeyboard();
    until("the tool has the keyboard", [&] { return desk.screen.isKeyboardGrabbed(); });
    desk.hand.tapKey(KEY_ESC);
  }),
            1);
}

TEST(Screencapture, takesAWindowWithItsFrameAndWithoutItsShadow) {
  Desk desk;
  desk.screen.openWindow({}, {-20, 210}, randomPicture({100, 80}, 5));
  const QImage unmanaged = desk.screen.settledPicture();
  EXPECT_EQ(desk.take([&] { desk.pickWindow({10, 250}); }), 0);
  EXPECT_EQ(desk.taken(), unmanaged.copy(0, 210, 80, 80)) << "cut off at the screen's edge";

  const auto manager = desk.start({u"openbox"_s, u"--sm-disable"_s, u"--startup"_s, u"echo ready"_s});
  until("the window manager is there", [&] { return manager->output().contains("ready"); });
  desk.screen.openWindow({}, {30, 60}, randomPicture({120, 80}, 3));
  const quint32 upper = desk.screen.openWindow({}, {100, 100}, randomPicture({120, 80}, 4));
  // Its program draws the frame by itself, so it asks for none, and keeps room for a shadow.
  const quint32 bare = desk.screen.openWindow({}, {260, 40}, randomPicture({100, 90}, 6));
  desk.screen.setProperty(bare, "_MOTIF_WM_HINTS", "_MOTIF_WM_HINTS", {2, 0, 0, 0, 0});
  desk.screen.setProperty(bare, "_GTK_FRAME_EXTENTS", "CARDINAL", {10, 11, 12, 13});
  // A menu is no window to pick: what lies under it is taken, with the menu on it.
  desk.screen.openWindow({}, {190, 110}, randomPicture({60, 30}, 4), WindowKind::Menu);
  const QImage before = desk.screen.settledPicture();
  const QRect frame = desk.screen.frameOf(upper);
  EXPECT_GT(frame.height(), 80);
  const QRect visible = desk.screen.frameOf(bare).adjusted(10, 12, -11, -13);
  for (const auto& [point, expected] :
       {std::pair(QPoint(200, 120), frame), std::pair(QPoint(310, 90), visible)}) {
    EXPECT_EQ(desk.take([&] { desk.pickWindow(point); }), 0);
    EXPECT_EQ(desk.taken(), before.copy(expected));
  }
}

/// The smallest rectangle outside of which both pictures are the same.
QRect differenceOf(const QImage& one, const QImage& other) {
  QRect all;
  for (int y = 0; y < one.height(); ++y)
    for (int x = 0; x < one.width(); ++x)
      if (one.pixel(x, y) != other.pixel(x, y))
        all |= QRect(x, y, 1, 1);
  return all;
}

TEST(Screencapture, picksThePixelOfAClickOnEveryMonitor) {
  Desk desk;
  const QRect monitors[] = {{0, 0, 200, 300}, {200, 0, 500, 300}};  // of which the second is seen in part
  desk.screen.setMonitors({std::begin(monitors), std::end(monitors)});
  const QImage picture = desk.screen.picture();
  for (const QPoint point : {QPoint(10, 10), QPoint(199, 299), QPoint(200, 150), QPoint(399, 0)}) {
    const auto tool = desk.picking({100, 100});
    desk.hand.moveTo(point.x(), point.y());
    const QImage shown = desk.screen.settledPicture();
    const QRect magnifier = differenceOf(shown, picture);
    EXPECT_TRUE(monitors[point.x() < 200 ? 0 : 1].contains(magnifier)) << point.x() << ", " << point.y();
    EXPECT_GT(magnifier.height(), 100);
    EXPECT_FALSE(magnifier.contains(point));
    desk.hand.clickButton(left);
    EXPECT_EQ(tool->waitForEnd(), 0) << tool->errors().constData();
    EXPECT_EQ(tool->output(), Desk::lineFor(picture, point));
    EXPECT_EQ(desk.screen.settledPicture(), picture);
  }
}

TEST(Screencapture, theArrowKeysPickPixelByPixel) {
  Desk desk(24, {"-ardelay", "60000"});
  const QImage picture = desk.screen.picture();
  const auto tool = desk.picking({100, 100});
  until("the tool has the keyboard", [&] { return desk.screen.isKeyboardGrabbed(); });
  // Faster than the pointer can follow.
  for (int i = 0; i < 20; ++i)
    desk.hand.tapKey(KEY_RIGHT);
  for (int i = 0; i < 3; ++i)
    desk.hand.tapKey(KEY_UP);
  desk.hand.pressKey(KEY_LEFTSHIFT);
  desk.hand.tapKey(KEY_DOWN);
  desk.hand.releaseKey(KEY_LEFTSHIFT);
  desk.hand.clickButton(left);
  EXPECT_EQ(tool->waitForEnd(), 0);
  EXPECT_EQ(tool->output(), Desk::lineFor(picture, {120, 107}));
  // The pointer was taken along.
  const auto again = desk.start({QStringLiteral(SORREL_CAPTURE_TOOL), u"--pick-color"_s});
  until("the tool has the keyboard", [&] { return desk.screen.isKeyboardGrabbed(); });
  desk.hand.tapKey(KEY_ENTER);
  EXPECT_EQ(again->waitForEnd(), 0);
  EXPECT_EQ(again->output(), Desk::lineFor(picture, {120, 107}));
}

TEST(Screencapture, picksNoColorWhenCancelled) {
  Desk desk;
  const auto byButton = desk.picking({50, 50});
  desk.hand.clickButton(right);
  const auto expectNothing = [](Program& tool) {
    EXPECT_EQ(tool.waitForEnd(), 1);
    EXPECT_EQ(tool.output() + tool.errors(), QByteArray());
  };
  expectNothing(*byButton);
  // While another program holds keyboard and pointer nothing is lost, and Escape works as soon as it can.
  ASSERT_TRUE(desk.screen.grabKeyboard());
  const auto byKey = desk.picking({50, 50});
  desk.screen.ungrabKeyboard();
  until("the tool has the keyboard", [&] { return desk.screen.isKeyboardGrabbed(); });
  desk.hand.tapKey(KEY_ESC);
  expectNothing(*byKey);
}

TEST(Screencapture, takesAScreenOfSixteenBits) {
  Desk desk(16);
  EXPECT_EQ(desk.take([&] { desk.drag(everything); }), 0);
  EXPECT_EQ(desk.taken().convertToFormat(QImage::Format_RGB16),
            randomPicture(size, 1).convertToFormat(QImage::Format_RGB16));
  const auto tool = desk.picking({40, 30});
  desk.hand.clickButton(left);
  EXPECT_EQ(tool->waitForEnd(), 0);
  EXPECT_EQ(tool->output(), Desk::lineFor(desk.taken(), {40, 30}));
}

TEST(Screencapture, leavesThePictureAndNothingElseOnTheClipboard) {
  Desk desk;
  const QImage before = desk.screen.picture();
  const auto tool = desk.selecting(u"-c"_s);
  desk.drag(everything);
  ASSERT_EQ(tool->waitForEnd(), 0) << tool->errors().constData();
  EXPECT_EQ(desk.paste(u"TARGETS"_s), "TARGETS\nTIMESTAMP\nMULTIPLE\nSAVE_TARGETS\nimage/png\n");
  const QImage pasted = QImage::fromData(desk.paste(u"image/png"_s));
  EXPECT_EQ(pasted.convertToFormat(QImage::Format_RGB32), before);
}

TEST(Screencapture, aKilledToolLeavesNoFileOrAWholeOne) {
  Desk desk;
  const QImage before = desk.screen.picture();
  std::mt19937 random(1);
  for (int round = 0; round < 25; ++round) {
    const auto tool = desk.selecting(desk.file);
    desk.drag(everything);
    QThread::usleep(random() % 15'000);
    tool->send(SIGKILL);
    (void)tool->waitForEnd();
    EXPECT_TRUE(!QFile::exists(desk.file) || desk.taken() == before);
    QFile::remove(desk.file);
    EXPECT_EQ(desk.names(), QStringList());
    until("the overlay is gone", [&] { return !desk.screen.find(u"screencapture"_s); });
  }
}

TEST(Screencapture, saysWhatWentWrong) {
  Desk desk;
  const QString program = QStringLiteral(SORREL_CAPTURE_TOOL);
  const auto expect = [](const std::unique_ptr<Program>& tool, int status, const char* said) {
    EXPECT_EQ(tool->waitForEnd(), status);
    EXPECT_EQ(tool->errors(), QByteArray(said));
  };
  expect(desk.start({program, u"-x"_s}), 64,
         "usage: screencapture -i (PATH | -c)\n       screencapture --pick-color\n");
  const auto homeless = desk.selecting(u"/nowhere/shot.png"_s);
  desk.drag(QRect(1, 1, 5, 5));
  expect(homeless, 1, "screencapture: /nowhere/shot.png: No such file or directory\n");
  desk.environment.remove(u"DISPLAY"_s);
  expect(desk.tool(desk.file), 1, "screencapture: there is no X11 display\n");
}

TEST(Screencapture, endsWithTheXServerAtWhateverMoment) {
  std::mt19937 random(2);
  for (int round = 0; round < 8; ++round) {
    Desk desk;
    const auto tool = round == 0 ? desk.selecting(desk.file) : desk.tool(desk.file);
    if (round > 0)
      QThread::usleep(random() % 8000);
    kill(desk.server.processId(), SIGKILL);
    EXPECT_EQ(tool->waitForEnd(), 1);
    const QByteArray said = tool->errors();
    EXPECT_TRUE(said == "screencapture: lost the X server\n" ||
                said == "screencapture: there is no X11 display\n")
        << said.constData();
    EXPECT_EQ(desk.names(), QStringList());
  }
}

}  // namespace
