#include "app/history/PanelGeometry.h"
#include "tests/e2e/Sorrel.h"
#include "tests/e2e/StatusNotifierHost.h"
#include "tests/support/SwaySession.h"
#include "tests/support/Waiting.h"

#include <QBuffer>
#include <QFile>
#include <QTimer>

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>

using namespace testing_support;
using namespace Qt::StringLiterals;

namespace {

constexpr QRgb thumbnailColor = 0xffd02010;
const QString picturePath = u"Documents/Sorrel bottle/a.png"_s;

QByteArray plainPicture() {
  QImage picture(300, 300, QImage::Format_RGB32);
  picture.fill(thumbnailColor);
  QBuffer file;
  file.open(QIODevice::WriteOnly);
  picture.save(&file, "PNG");
  return file.data();
}

/// The least rectangle with all pixels of these colors; none where there are none.
QRect areaOf(const QImage& picture, const std::vector<QRgb>& colors) {
  QRect area;
  for (int y = 0; y < picture.height(); ++y)
    for (int x = 0; x < picture.width(); ++x)
      if (std::find(colors.begin(), colors.end(), picture.pixel(x, y)) != colors.end())
        area |= QRect(x, y, 1, 1);
  return area;
}

/// The panel as it is seen on an output of that scale: all that is within the line around it.
QRect panelIn(const QImage& picture, int scale = 1) {
  constexpr QRgb background = 0xfffaf6ef, titleBar = 0xff24402f;
  const QRect inside = areaOf(picture, {background, titleBar});
  return inside.isNull() ? QRect() : inside.adjusted(-scale, -scale, scale, scale);
}

/// The program with one picture in its bottle, started and in the tray.
class Started {
 public:
  explicit Started(SwaySession& session, const QStringList& options = {}) : desktop(session) {
    desktop.write(picturePath, plainPicture());
    desktop.write(u".config/Sorrel/defaults.json"_s, R"({"appLanguage": "en"})");
    program = desktop.start(QStringList(e2e::Sorrel::built()) + options);
  }

  void waitUntilAt(const QRect& frame, size_t output = 0, int scale = 1) {
    until("the panel is in its place",
          [&] { return panelIn(desktop.settledPicture(output), scale) == frame; });
  }
  void waitUntilClosed(size_t output = 0) {
    until("the panel is closed", [&] { return panelIn(desktop.settledPicture(output)).isNull(); });
  }
  /// Where the panel shows its picture.
  QRect thumbnail() {
    QRect area;
    until("the thumbnail is there", [&] {
      area = areaOf(desktop.settledPicture(), {thumbnailColor});
      return !area.isNull();
    });
    return area;
  }

  SwaySession& desktop;
  std::unique_ptr<Program> program;
};

/// With a tray that tells where it was clicked.
class WaylandPanelTest : public ::testing::Test {
 protected:
  QRect open() {
    until("the icon is there", [this] { return tray.hasItem(); });
    const QPoint click(1270, 10);
    tray.activate(click);
    const QRect frame(QPoint(1280 - 8 - 460, click.y() + 1 + 4), sorrel::PanelGeometry::size);
    program.waitUntilAt(frame);
    return frame;
  }
  void clickAt(const QPoint& point, int button = 1) {
    desktop.moveTo(point);
    desktop.input().clickButton(button);
  }
  /// Some other window.
  std::unique_ptr<Program> startOther() {
    auto other = desktop.start({QStringLiteral(E2E_BUILD_DIR "/tests/drop_target"), u"0"_s, u"0"_s});
    until("the other window is there", [this] { return desktop.windowTitles().contains(u"Drop here"_s); });
    return other;
  }
  /// Calls for a capture while the panel is open, and cancels it by the keyboard.
  void cancelACapture() {
    const QRgb shown = desktop.picture().pixel(20, 700);
    desktop.run({e2e::Sorrel::built(), u"--capture"_s});
    program.waitUntilClosed();  // or veiled
    ASSERT_NE(desktop.picture().pixel(20, 700), shown) << "no selection";
    desktop.input().tapKey(KEY_ESC);
    until("the selection is gone", [&] { return desktop.picture().pixel(20, 700) == shown; });
  }
  bool isOpen() { return !panelIn(desktop.settledPicture()).isNull(); }

  SwaySession desktop;
  e2e::StatusNotifierHost tray{desktop.busAddress()};
  Started program{desktop};
};

TEST_F(WaylandPanelTest, DropsOutOfTheTrayWithTheKeyboardAndClosesAtAClickBesideIt) {
  const QRect frame = open();
  const QImage picture = desktop.picture();
  EXPECT_NE(picture.pixel(frame.topLeft()), picture.pixel(frame.topLeft() + QPoint(30, 3)))
      << "its corners are round";
  EXPECT_LT(qGreen(picture.pixel(frame.center().x(), frame.bottom() + 10)), 0x99) << "it has a shadow";
  EXPECT_EQ(picture.pixel(20, 700), 0xff6699cc) << "the rest of the screen is as it was";
  desktop.input().tapKey(KEY_ESC);
  program.waitUntilClosed();
  open();
  clickAt({20, 700});
  program.waitUntilClosed();
}

TEST_F(WaylandPanelTest, IsAtThePointerWhereTheTrayCountsFromItsIcon) {
  until("the icon is there", [this] { return tray.hasItem(); });
  desktop.moveTo({1000, 12});
  tray.activate({14, 15});
  program.waitUntilAt(QRect({1000 - 230 + 1, 12 + 1 + 4}, sorrel::PanelGeometry::size));
}

TEST_F(WaylandPanelTest, IsAtThePointerThatTheTrayStillHoldsDownAboveAllWindows) {
  const auto other = startOther();
  desktop.command(u"[title=\"Drop here\"] fullscreen enable"_s);
  until("the icon is there", [this] { return tray.hasItem(); });
  desktop.moveTo({1000, 12});
  desktop.input().pressButton(1);
  // While the click is answered; nothing tells when the compositor has been asked.
  QTimer::singleShot(50, [this] { desktop.input().releaseButton(1); });
  tray.activate({14, 15});
  program.waitUntilAt(QRect({1000 - 230 + 1, 12 + 1 + 4}, sorrel::PanelGeometry::size));
}

TEST_F(WaylandPanelTest, StaysWhileTheLockIsOnAndLeavesTheKeyboardToOthers) {
  const auto other = startOther();
  const QRect frame = open();
  clickAt(frame.topLeft() + QPoint(413, 20));
  ASSERT_TRUE(isOpen());  // which also waits until it has changed its look
  clickAt({20, 700});
  ASSERT_TRUE(isOpen());
  desktop.input().tapKey(KEY_ESC);
  EXPECT_TRUE(isOpen());
  clickAt(frame.center() + QPoint(0, 150));
  ASSERT_TRUE(isOpen());
  desktop.input().tapKey(KEY_ESC);
  program.waitUntilClosed();
}

TEST_F(WaylandPanelTest, LiesBelowTheSelectionOfACapture) {
  open();
  cancelACapture();
}

TEST_F(WaylandPanelTest, LiesAboveAFullScreenWindow) {
  const auto other = startOther();
  desktop.command(u"[title=\"Drop here\"] fullscreen enable"_s);
  open();
  cancelACapture();
}

TEST_F(WaylandPanelTest, ItsMenuIsNoWindowAndActs) {
  const QRect frame = open();
  clickAt(program.thumbnail().center(), 3);
  until("the menu lies over the thumbnail", [this] {
    return desktop.settledPicture().pixel(program.thumbnail().center() + QPoint(20, 20)) != thumbnailColor;
  });
  EXPECT_TRUE(desktop.windowTitles().isEmpty());
  desktop.input().tapKey(KEY_ESC);
  program.waitUntilAt(frame);
  clickAt(program.thumbnail().center(), 3);
  desktop.input().tapKey(KEY_UP);  // the last row: to the Trash
  desktop.input().tapKey(KEY_ENTER);
  until("the picture is gone", [this] { return !QFile::exists(desktop.home(picturePath)); });
  EXPECT_TRUE(isOpen());
}

TEST(WaylandScreensTest, ThePanelOpensOnTheOutputThatWasClicked) {
  SwaySession desktop({{{QSize(1000, 700)}, {QSize(1200, 1200), 2, QPoint(1000, 0)}}});
  const e2e::StatusNotifierHost tray(desktop.busAddress());
  Started program(desktop);
  until("the icon is there", [&] { return tray.hasItem(); });
  tray.activate({1590, 10});
  program.waitUntilAt(QRect(QPoint(600 - 8 - 460, 15) * 2, sorrel::PanelGeometry::size * 2), 1, 2);
  desktop.moveTo({300, 400});
  desktop.input().clickButton(1);
  program.waitUntilClosed(1);
}

TEST(WaylandScreensTest, WhereNoTrayHasToldAPlaceThePanelIsInTheCornerOfTheOutputInUse) {
  SwaySession desktop({{{QSize(1000, 700)}, {QSize(1000, 700), 1, QPoint(1000, 0)}}});
  desktop.command(u"focus output HEADLESS-2"_s);
  Started program(desktop, {u"--history"_s});
  const QRect corner({1000 - 8 - 460, 1 + 4}, sorrel::PanelGeometry::size);
  program.waitUntilAt(corner, 1);

  desktop.run({e2e::Sorrel::built(), u"--history"_s});
  program.waitUntilClosed(1);
  const e2e::StatusNotifierHost tray(desktop.busAddress());
  until("the icon is there", [&] { return tray.hasItem(); });
  desktop.run({e2e::Sorrel::built(), u"--history"_s});
  program.waitUntilAt(corner, 1);
}

bool isPlain(const QImage& picture) {
  QImage plain(picture.size(), picture.format());
  plain.fill(picture.pixelColor(0, 0));
  return picture == plain;
}

TEST(WaylandScreensTest, ThePanelKeepsOffTheBarThatItsIconIsOn) {
  for (const char* const edge : {"top", "bottom"}) {
    SwaySession desktop({.configuration = QByteArray("bar {\n position ") + edge + "\n}\n"});
    Started program(desktop);
    constexpr QSize screen(1280, 800);
    until("the bar is there", [&] { return desktop.freePart().height() < screen.height(); });
    const QRect free = desktop.freePart();
    const int barHeight = screen.height() - free.height();
    const bool isAtTop = free.top() > 0;
    const QRect icon(screen.width() - barHeight, isAtTop ? 0 : free.height(), barHeight, barHeight);
    until("the icon is there", [&] { return !isPlain(desktop.picture().copy(icon)); });
    desktop.moveTo(icon.center());
    desktop.input().clickButton(1);
    const int top = isAtTop ? free.top() + 4 : free.bottom() + 1 - 4 - 500;
    program.waitUntilAt(QRect(QPoint(812, top), sorrel::PanelGeometry::size));
  }
}

}  // namespace
