// The keeper as a process on an X server of its own, with other programs that copy and paste.

#include "platform/system/ClipboardKeeper.h"
#include "platform/system/Descriptor.h"
#include "tests/support/Program.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/Screen.h"
#include "tests/support/Waiting.h"
#include "tests/support/XvfbServer.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>

using namespace Qt::StringLiterals;
using namespace testing_support;
using platform::ClipboardForm;

namespace {

class Keeper : public testing::Test {
 protected:
  Keeper() {
    qputenv("DISPLAY", QByteArray::fromStdString(server.display()));
    prctl(PR_SET_CHILD_SUBREAPER,
          1);  // what the keeper leaves behind becomes ours, so that its end can be seen
  }
  ~Keeper() override { prctl(PR_SET_CHILD_SUBREAPER, 0); }

  [[nodiscard]] static bool keep(const std::vector<ClipboardForm>& forms) {
    return platform::leaveOnClipboard(SORREL_KEEPER, forms, std::chrono::seconds(20));
  }
  [[nodiscard]] static bool keep(std::string_view text) {
    return keep({{"text/x-test", platform::bytesOf(text)}});
  }
  [[nodiscard]] static QByteArray paste(const QString& target = u"text/x-test"_s) {
    Program program({u"xclip"_s, u"-selection"_s, u"clipboard"_s, u"-o"_s, u"-t"_s, target},
                    QProcessEnvironment::systemEnvironment());
    return program.waitForEnd() == 0 ? program.output() : QByteArray("nothing");
  }
  void copyWithAnotherProgram(const QByteArray& text) const {
    Program program({u"xclip"_s, u"-selection"_s, u"clipboard"_s, u"-i"_s, u"-t"_s, u"text/x-test"_s,
                     home.write(u"text"_s, text)},
                    QProcessEnvironment::systemEnvironment());
    EXPECT_EQ(program.waitForEnd(), 0);
  }
  static void expectEndOfOne() {
    int status = -1;
    // Other programs are ours too now; those are ended by their server, with a signal.
    until("a keeper has ended", [&] { return waitpid(-1, &status, WNOHANG) > 0 && WIFEXITED(status); });
    EXPECT_EQ(status, 0);
  }

  const ScratchHome home;
  const XvfbServer server{200, 200};
  Screen screen{server.display()};
};

TEST_F(Keeper, GivesOutExactlyWhatItWasGivenUntilAnotherProgramCopies) {
  const std::vector<std::uint8_t> large(1 << 20, 'p');  // too much for one request
  const std::vector<ClipboardForm> forms{
      {"image/png", large}, {"text/x-test", platform::bytesOf("kept")}, {"text/x-empty", {}}};
  ASSERT_TRUE(keep(forms));
  EXPECT_EQ(paste(u"TARGETS"_s).trimmed().split('\n'),
            QByteArrayList({"TARGETS", "TIMESTAMP", "MULTIPLE", "SAVE_TARGETS", "image/png", "text/x-test",
                            "text/x-empty"}));
  EXPECT_EQ(paste(u"image/png"_s), QByteArray(1 << 20, 'p'));
  EXPECT_EQ(paste(), "kept");
  EXPECT_EQ(paste(u"text/x-empty"_s), "");
  ASSERT_TRUE(keep("next"));
  expectEndOfOne();
  EXPECT_EQ(paste(), "next");
  copyWithAnotherProgram("another's");
  expectEndOfOne();
  EXPECT_EQ(paste(), "another's");
}

TEST_F(Keeper, TakesTheClipboardBackFromAProgramThatPutsOlderContentsThere) {
  // The screen's windows stand for a manager's: they were there before the copy, and haven't the keyboard.
  const quint32 window = screen.openWindow(u"manager"_s, {}, randomPicture({20, 20}, 1));
  for (bool isInTime = false; !isInTime;) {
    QElapsedTimer timer;
    timer.start();
    ASSERT_TRUE(keep("kept"));
    screen.takeSelection("CLIPBOARD");
    isInTime = timer.elapsed() < 400;
  }
  until("the keeper has it again", [&] { return !screen.holdsSelection("CLIPBOARD"); });
  EXPECT_EQ(paste(), "kept");

  screen.giveKeyboard(window);  // now it stands for the program that the user works with
  ASSERT_TRUE(keep("kept"));
  expectEndOfOne();
  screen.takeSelection("CLIPBOARD");
  expectEndOfOne();
}

TEST_F(Keeper, LeavesTheClipboardAsItIsWhereItCannotKeepAnything) {
  copyWithAnotherProgram("before");
  EXPECT_FALSE(platform::leaveOnClipboard("/nowhere/keeper", {}, std::chrono::seconds(20)));
  EXPECT_FALSE(platform::leaveOnClipboard("/bin/false", {}, std::chrono::seconds(20)));
  EXPECT_FALSE(keep(std::vector<ClipboardForm>()));
  EXPECT_FALSE(keep({{"two words", platform::bytesOf("x")}}));
  EXPECT_EQ(paste(), "before");
  qunsetenv("DISPLAY");
  EXPECT_FALSE(keep("kept"));
}

}  // namespace
