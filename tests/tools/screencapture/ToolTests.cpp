// The tool itself, as a process on an X server of its own, with real keys and a real pointer.

#include "tests/support/DecodedPng.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/XTestInput.h"
#include "tests/support/XvfbServer.h"
#include "tests/tools/screencapture/Bystander.h"
#include "tests/tools/screencapture/Child.h"

#include <QDir>
#include <QFile>

#include <cmath>
#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <random>
#include <signal.h>
#include <sys/prctl.h>
#include <unistd.h>

using screencapture::Point;
using screencapture::Rectangle;
using testing_support::DecodedPng;
using testing_support::XTestInput;
using testing_support::XvfbServer;

namespace {

constexpr int left = 1, right = 3;
constexpr Point farCorner{399, 299};

/// The server with a picture of noise on it, in which no two places look the same.
struct Desk {
  explicit Desk(int depth = 24, const std::vector<std::string>& options = {})
      : server(farCorner.x + 1, farCorner.y + 1, depth, options),
        bystander(server.display()),
        input(server.display()),
        picture(Picture::random(farCorner.x + 1, farCorner.y + 1, depth == 24 ? 0xffffff : 0xffff, 1)) {
    bystander.paintDesktop(picture);
  }

  [[nodiscard]] std::string path() const { return home.path(QStringLiteral("shot.png")).toStdString(); }
  [[nodiscard]] bool hasFile() const { return QFile::exists(home.path(QStringLiteral("shot.png"))); }
  [[nodiscard]] QByteArray fileBytes(const QString& name = QStringLiteral("shot.png")) const {
    QFile file(home.path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  [[nodiscard]] QStringList names() const {
    QStringList all = QDir(home.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    all.removeAll(QStringLiteral(".runtime"));
    all.removeAll(QStringLiteral("errors"));
    return all;
  }

  [[nodiscard]] Child tool(const std::string& target) const {
    return Child({SORREL_CAPTURE_TOOL, "-i", target}, server.display(),
                 home.path(QStringLiteral("errors")).toStdString());
  }

  void drag(Point from, Point to) {
    input.moveTo(from.x, from.y);
    input.pressButton(left);
    input.moveTo((from.x + to.x) / 2, (from.y + to.y) / 2);
    input.moveTo(to.x, to.y);
    input.releaseButton(left);
  }

  /// The file's picture must be this part of what is expected, pixel by pixel.
  void expectFile(const Rectangle& part, const Picture& expected) const {
    expectPicture(fileBytes(), part, expected);
  }
  static void expectPicture(const QByteArray& file, const Rectangle& part, const Picture& expected) {
    const auto png = DecodedPng::read(
        {reinterpret_cast<const std::uint8_t*>(file.constData()), static_cast<std::size_t>(file.size())});
    ASSERT_TRUE(png);
    ASSERT_EQ(png->width, part.width);
    ASSERT_EQ(png->height, part.height);
    EXPECT_EQ(png->channels, 3);
    int different = 0;
    for (int y = 0; y < part.height; ++y) {
      for (int x = 0; x < part.width; ++x)
        different += png->at(x, y) != expected.at(part.x + x, part.y + y);
    }
    EXPECT_EQ(different, 0);
  }

  testing_support::ScratchHome home;
  XvfbServer server;
  Bystander bystander;
  XTestInput input;
  const Picture picture;
};

}  // namespace

TEST(Screencapture, takesAnAreaDraggedInAnyDirectionUpToTheScreensCorners) {
  Desk desk;
  for (const auto& [from, to] : {std::pair<Point, Point>{{20, 30}, {90, 77}},
                                 {{90, 77}, {20, 30}},
                                 {{20, 77}, {90, 30}},
                                 {{90, 30}, {20, 77}},
                                 {{0, 0}, farCorner},
                                 {farCorner, {farCorner.x - 9, farCorner.y - 3}},
                                 {{0, farCorner.y}, {5, farCorner.y}},
                                 {{farCorner.x, 0}, {farCorner.x, 8}},
                                 {{100, 100}, {101, 100}}}) {
    Child tool = desk.tool(desk.path());
    ASSERT_TRUE(desk.bystander.waitForOverlay());
    desk.drag(from, to);
    EXPECT_EQ(tool.wait(), 0) << tool.errors();
    desk.expectFile(Rectangle::spanning(from, to), desk.picture);
  }
  EXPECT_EQ(desk.bystander.look(), desk.picture);
}

TEST(Screencapture, takesTheScreenAsItWasAtTheStart) {
  Desk desk;
  const xcb_window_t menu =
      desk.bystander.openWindow({50, 50, 60, 40}, Picture::random(60, 40, 0xffffff, 2), true);
  const Picture before = desk.bystander.look();
  Child tool = desk.tool(desk.path());
  ASSERT_TRUE(desk.bystander.waitForOverlay());
  desk.bystander.closeWindow(menu);
  desk.drag({40, 40}, {120, 100});
  EXPECT_EQ(tool.wait(), 0);
  desk.expectFile({40, 40, 81, 61}, before);
}

TEST(Screencapture, showsTheAreaBrightAndTheRestVeiled) {
  Desk desk;
  Child tool = desk.tool(desk.path());
  ASSERT_TRUE(desk.bystander.waitForOverlay());
  desk.input.moveTo(100, 80);
  desk.input.pressButton(left);
  desk.input.moveTo(200, 150);
  desk.input.moveTo(180, 120);
  desk.bystander.waitForChange(190, 100, desk.bystander.look().at(190, 100) ^ 1);
  const Picture shown = desk.bystander.lookWhenSettled();
  for (int y = 80; y <= 120; ++y) {
    for (int x = 100; x <= 180; ++x)
      ASSERT_EQ(shown.at(x, y), desk.picture.at(x, y)) << x << ", " << y;
  }
  EXPECT_EQ(shown.at(99, 100), 0xffffffU);
  EXPECT_EQ(shown.at(181, 100), 0xffffffU);
  // Where the area was larger before, and where it never was, the veil lies alike.
  for (const Point point : {Point{190, 82}, Point{120, 140}, Point{5, 5}, farCorner}) {
    for (const int shift : {0, 8, 16}) {
      const double bright = desk.picture.at(point.x, point.y) >> shift & 0xff;
      const double dim = shown.at(point.x, point.y) >> shift & 0xff;
      EXPECT_NEAR(dim, bright * 0.55, 2) << point.x << ", " << point.y;
    }
  }
  desk.input.tapKey(KEY_ESC);
  EXPECT_EQ(tool.wait(), 1);
  EXPECT_EQ(desk.bystander.look(), desk.picture);
}

TEST(Screencapture, leavesNothingWhenCancelled) {
  Desk desk;
  const auto cancelled = [&](auto gesture) {
    Child tool = desk.tool(desk.path());
    EXPECT_TRUE(desk.bystander.waitForOverlay());
    gesture();
    const int status = tool.wait();
    EXPECT_EQ(tool.errors(), "");
    return status == 1 && desk.names().isEmpty();
  };
  EXPECT_TRUE(cancelled([&] { desk.input.tapKey(KEY_ESC); }));
  EXPECT_TRUE(cancelled([&] { desk.input.clickButton(right); }));
  EXPECT_TRUE(cancelled([&] { desk.input.clickButton(left); }));
  EXPECT_TRUE(cancelled([&] {
    desk.input.pressButton(left);
    desk.input.moveTo(30, 30);
    desk.input.tapKey(KEY_ESC);
    desk.input.releaseButton(left);
  }));
}

TEST(Screencapture, spaceMovesAndShiftLocksWhileDragging) {
  Desk desk;
  Child tool = desk.tool(desk.path());
  ASSERT_TRUE(desk.bystander.waitForOverlay());
  desk.input.moveTo(10, 10);
  desk.input.pressButton(left);
  desk.input.moveTo(49, 29);
  desk.input.pressKey(KEY_SPACE);
  desk.input.moveTo(149, 79);
  desk.input.releaseKey(KEY_SPACE);
  desk.input.pressKey(KEY_LEFTSHIFT);
  desk.input.moveTo(160, 80);
  desk.input.moveTo(169, 150);
  desk.input.releaseButton(left);
  EXPECT_EQ(tool.wait(), 0);
  desk.expectFile({110, 60, 60, 20}, desk.picture);
}

TEST(Screencapture, keysHeldSinceBeforeTheStartDoNotCountUntilPressedAgain) {
  Desk desk(24, {"-ardelay", "20", "-arinterval", "5"});
  for (const int key : {KEY_LEFTALT, KEY_LEFTSHIFT, KEY_S, KEY_SPACE, KEY_ESC})
    desk.input.pressKey(key);
  Child tool = desk.tool(desk.path());
  ASSERT_TRUE(desk.bystander.waitForOverlay());
  usleep(300'000);  // gives the server the time to repeat the last of them many times
  EXPECT_TRUE(tool.isRunning());
  desk.drag({10, 10}, {60, 70});  // Shift would have locked it, Space made it a click on a window
  EXPECT_EQ(tool.wait(), 0);
  desk.expectFile({10, 10, 51, 61}, desk.picture);

  Child again = desk.tool(desk.path());
  ASSERT_TRUE(desk.bystander.waitForOverlay());
  desk.input.releaseKey(KEY_ESC);
  EXPECT_TRUE(again.isRunning());
  desk.input.pressKey(KEY_ESC);
  EXPECT_EQ(again.wait(), 1);
}

TEST(Screencapture, thePointerWorksWhileAnotherProgramHoldsTheKeyboard) {
  Desk desk;
  ASSERT_TRUE(desk.bystander.holdKeyboard());
  Child tool = desk.tool(desk.path());
  ASSERT_TRUE(desk.bystander.waitForOverlay());
  desk.drag({10, 10}, {20, 30});
  EXPECT_EQ(tool.wait(), 0);
  desk.expectFile({10, 10, 11, 21}, desk.picture);

  Child waiting = desk.tool(desk.path());
  ASSERT_TRUE(desk.bystander.waitForOverlay());
  desk.bystander.releaseKeyboard();
  desk.bystander.waitForKeyboardTaken();
  desk.input.tapKey(KEY_ESC);
  EXPECT_EQ(waiting.wait(), 1);
}

TEST(Screencapture, takesAWindowWithItsFrame) {
  Desk desk;
  Child manager({"openbox", "--sm-disable"}, desk.server.display(),
                desk.home.path(QStringLiteral("errors")).toStdString());
  const auto content = Picture::random(120, 80, 0xffffff, 3);
  const Rectangle lower = desk.bystander.waitForFrame(desk.bystander.openWindow({30, 60, 120, 80}, content));
  const Rectangle upper =
      desk.bystander.waitForFrame(desk.bystander.openWindow({100, 100, 120, 80}, content));
  EXPECT_GT(upper.height, 80);
  // A menu is no window to pick: what lies under it is taken, with the menu on it.
  desk.bystander.openWindow({190, 110, 60, 30}, Picture::random(60, 30, 0xffffff, 4), true);
  const Picture before = desk.bystander.lookWhenSettled();
  for (const auto& [point, frame] : {std::pair<Point, Rectangle>{{40, 70}, lower}, {{200, 120}, upper}}) {
    Child tool = desk.tool(desk.path());
    ASSERT_TRUE(desk.bystander.waitForOverlay());
    desk.input.tapKey(KEY_SPACE);
    desk.input.moveTo(point.x, point.y);
    desk.input.clickButton(left);
    EXPECT_EQ(tool.wait(), 0);
    desk.expectFile(frame, before);
  }
}

TEST(Screencapture, takesAWindowWithoutAManagerAndWithoutItsShadow) {
  Desk desk;
  desk.bystander.openWindow({-20, 210, 100, 100}, Picture::random(100, 100, 0xffffff, 5));
  const Picture before = desk.bystander.look();
  Child tool = desk.tool(desk.path());
  ASSERT_TRUE(desk.bystander.waitForOverlay());
  desk.input.moveTo(10, 250);
  desk.input.tapKey(KEY_SPACE);
  desk.input.clickButton(left);
  EXPECT_EQ(tool.wait(), 0);
  desk.expectFile({0, 210, 80, 90}, before);  // cut off at the screen's edges

  Child manager({"openbox", "--sm-disable"}, desk.server.display(),
                desk.home.path(QStringLiteral("errors")).toStdString());
  const xcb_window_t window =
      desk.bystander.openWindow({120, 40, 100, 90}, Picture::random(100, 90, 0xffffff, 6));
  // Its program draws the frame by itself, so it asks for none, and keeps room for a shadow.
  desk.bystander.setProperty(window, "_MOTIF_WM_HINTS", "_MOTIF_WM_HINTS", {2, 0, 0, 0, 0});
  desk.bystander.setProperty(window, "_GTK_FRAME_EXTENTS", "CARDINAL", {10, 11, 12, 13});
  desk.bystander.waitForFrame(window);
  const Picture framed = desk.bystander.lookWhenSettled();
  const Rectangle frame = desk.bystander.waitForFrame(window);
  Child second = desk.tool(desk.path());
  ASSERT_TRUE(desk.bystander.waitForOverlay());
  desk.input.tapKey(KEY_SPACE);
  desk.input.moveTo(170, 90);
  desk.input.clickButton(left);
  EXPECT_EQ(second.wait(), 0);
  desk.expectFile({frame.x + 10, frame.y + 12, frame.width - 21, frame.height - 25}, framed);
}

TEST(Screencapture, takesAnAreaAcrossTwoMonitors) {
  Desk desk;
  desk.bystander.splitIntoMonitors(200);
  Child tool = desk.tool(desk.path());
  ASSERT_TRUE(desk.bystander.waitForOverlay());
  desk.drag({150, 20}, {250, 90});
  EXPECT_EQ(tool.wait(), 0);
  desk.expectFile({150, 20, 101, 71}, desk.picture);
}

TEST(Screencapture, takesAScreenOfSixteenBits) {
  Desk desk(16);
  Child tool = desk.tool(desk.path());
  ASSERT_TRUE(desk.bystander.waitForOverlay());
  desk.drag({0, 0}, farCorner);
  EXPECT_EQ(tool.wait(), 0) << tool.errors();
  Picture expected = desk.picture;
  for (std::uint32_t& pixel : expected.pixels) {
    const auto channel = [pixel](int shift, unsigned largest) {
      return static_cast<std::uint32_t>(std::lround((pixel >> shift & largest) * 255.0 / largest));
    };
    pixel = channel(11, 31) << 16 | channel(5, 63) << 8 | channel(0, 31);
  }
  desk.expectFile({0, 0, farCorner.x + 1, farCorner.y + 1}, expected);
}

TEST(Screencapture, leavesThePictureOnTheClipboardUntilAnotherProgramTakesIt) {
  // What the tool leaves behind becomes ours, so that its end can be seen.
  prctl(PR_SET_CHILD_SUBREAPER, 1);
  Desk desk;
  const std::string paste = "xclip -selection clipboard -o -t image/png > " +
                            desk.home.path(QStringLiteral("pasted.png")).toStdString();
  // The first fits into one request, the second goes over in pieces.
  for (const Point corner : {Point{40, 30}, farCorner}) {
    Child toFile = desk.tool(desk.path());
    ASSERT_TRUE(desk.bystander.waitForOverlay());
    desk.drag({0, 0}, corner);
    ASSERT_EQ(toFile.wait(), 0);
    Child tool = desk.tool("-c");
    ASSERT_TRUE(desk.bystander.waitForOverlay());
    desk.drag({0, 0}, corner);
    ASSERT_EQ(tool.wait(), 0) << tool.errors();
    for (int round = 0; round < 2; ++round) {
      Child program({"sh", "-c", paste}, desk.server.display(),
                    desk.home.path(QStringLiteral("errors")).toStdString());
      EXPECT_EQ(program.wait(), 0) << program.errors();
      EXPECT_EQ(desk.fileBytes(QStringLiteral("pasted.png")), desk.fileBytes());
    }
    Child targets({"sh", "-c", "xclip -selection clipboard -o -t TARGETS | grep -qx image/png"},
                  desk.server.display(), desk.home.path(QStringLiteral("errors")).toStdString());
    EXPECT_EQ(targets.wait(), 0);
    desk.bystander.takeClipboard();
    EXPECT_EQ(waitForOrphan(), 0);
  }
  EXPECT_GT(desk.fileBytes().size(), 256 * 1024);
  prctl(PR_SET_CHILD_SUBREAPER, 0);
}

TEST(Screencapture, aKilledToolLeavesNoFileOrAWholeOne) {
  Desk desk;
  std::mt19937 random(1);
  for (int round = 0; round < 25; ++round) {
    Child tool = desk.tool(desk.path());
    ASSERT_TRUE(desk.bystander.waitForOverlay());
    desk.drag({0, 0}, farCorner);
    usleep(static_cast<unsigned>(random() % 15'000));
    tool.kill(SIGKILL);
    (void)tool.wait();
    if (desk.hasFile())
      desk.expectFile({0, 0, farCorner.x + 1, farCorner.y + 1}, desk.picture);
    QFile::remove(desk.home.path(QStringLiteral("shot.png")));
    EXPECT_TRUE(desk.names().isEmpty());
  }
}

TEST(Screencapture, saysWhatWentWrong) {
  Desk desk;
  const std::string errors = desk.home.path(QStringLiteral("errors")).toStdString();
  Child wrong({SORREL_CAPTURE_TOOL, "-x"}, desk.server.display(), errors);
  EXPECT_EQ(wrong.wait(), 64);
  EXPECT_EQ(wrong.errors(), "usage: screencapture -i (PATH | -c)\n");
  Child holder({SORREL_CAPTURE_TOOL, "--hold-clipboard"}, desk.server.display(), errors);
  EXPECT_EQ(holder.wait(), 64);
  Child blind({SORREL_CAPTURE_TOOL, "-i", desk.path()}, "", errors);
  EXPECT_EQ(blind.wait(), 1);
  EXPECT_EQ(blind.errors(), "screencapture: there is no X11 display\n");

  Child homeless = desk.tool("/nowhere/shot.png");
  ASSERT_TRUE(desk.bystander.waitForOverlay());
  desk.drag({1, 1}, {5, 5});
  EXPECT_EQ(homeless.wait(), 1);
  EXPECT_EQ(homeless.errors(), "screencapture: /nowhere/shot.png: No such file or directory\n");
}

TEST(Screencapture, endsWithTheXServerAtWhateverMoment) {
  std::mt19937 random(2);
  for (int round = 0; round < 8; ++round) {
    Desk desk;
    Child tool = desk.tool(desk.path());
    if (round == 0)
      ASSERT_TRUE(desk.bystander.waitForOverlay());
    else
      usleep(static_cast<unsigned>(random() % 8000));
    kill(desk.server.processId(), SIGKILL);
    EXPECT_EQ(tool.wait(), 1);
    const std::string said = tool.errors();
    EXPECT_TRUE(said == "screencapture: lost the X server\n" ||
                said == "screencapture: there is no X11 display\n")
        << said;
    EXPECT_FALSE(desk.hasFile());
  }
}
