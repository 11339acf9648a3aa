// The keeper as a process in a Wayland session of its own, with other programs that copy and paste. None of
// them has a window.

#include "platform/system/ClipboardKeeper.h"
#include "platform/system/Descriptor.h"
#include "tests/support/Files.h"
#include "tests/support/SwaySession.h"
#include "tests/support/Waiting.h"

#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>
#include <sys/wait.h>

using namespace Qt::StringLiterals;
using namespace testing_support;
using platform::ClipboardForm;

namespace {

class WaylandKeeper : public testing::Test {
 protected:
  WaylandKeeper() {
    for (const auto* const name : {"XDG_RUNTIME_DIR", "WAYLAND_DISPLAY"})
      qputenv(name, session.environment().value(QString::fromLatin1(name)).toLocal8Bit());
    std::mt19937 random(1);
    std::ranges::generate(picture, [&] { return static_cast<std::uint8_t>(random()); });
  }
  ~WaylandKeeper() override { qunsetenv("WAYLAND_DISPLAY"); }

  [[nodiscard]] static bool keep(const std::vector<ClipboardForm>& forms) {
    return platform::leaveOnClipboard(SORREL_KEEPER, forms, std::chrono::seconds(20));
  }
  [[nodiscard]] QByteArray paste(const QString& type) const {
    return session.run({u"wl-paste"_s, u"--no-newline"_s, u"--type"_s, type});
  }
  void copyWithAnotherProgram(const QString& text, const QStringList& options = {}) const {
    session.run(QStringList{u"wl-copy"_s} + options + QStringList{text});
  }
  [[nodiscard]] std::unique_ptr<Program> shell(const QString& commands) const {
    return session.start({u"sh"_s, u"-c"_s, commands});
  }
  [[nodiscard]] QByteArray pictureBytes() const {
    return {reinterpret_cast<const char*>(picture.data()), qsizetype(picture.size())};
  }
  static void expectEndOfOne() {
    int status = -1;
    until("a keeper has ended", [&] { return waitpid(-1, &status, WNOHANG) > 0 && WIFEXITED(status); });
    EXPECT_EQ(status, 0);
  }

  SwaySession session;
  std::vector<std::uint8_t> picture = std::vector<std::uint8_t>(8 << 20);  // many times what a pipe holds
};

TEST_F(WaylandKeeper, GivesOutExactlyWhatItWasGivenUntilAnotherProgramCopies) {
  copyWithAnotherProgram(u"selected"_s, {u"--primary"_s});
  ASSERT_TRUE(keep({{"image/png", picture},
                    {"text/uri-list", platform::bytesOf("file:///a%20b.png\r\n")},
                    {"text/x-empty", {}}}));
  EXPECT_EQ(session.run(u"wl-paste --list-types"_s.split(u' ')).trimmed().split('\n'),
            QByteArrayList({"image/png", "text/uri-list", "text/x-empty"}));
  EXPECT_EQ(paste(u"image/png"_s), pictureBytes());
  EXPECT_EQ(paste(u"text/uri-list"_s), "file:///a%20b.png\r\n");
  EXPECT_EQ(paste(u"text/x-empty"_s), "");
  ASSERT_TRUE(keep({{"text/plain", platform::bytesOf("next")}}));
  expectEndOfOne();
  EXPECT_EQ(paste(u"text/plain"_s), "next");
  copyWithAnotherProgram(u"another's"_s);
  expectEndOfOne();
  EXPECT_EQ(paste(u"text/plain"_s), "another's");
  EXPECT_EQ(session.run(u"wl-paste --primary --no-newline"_s.split(u' ')), "selected");
}

TEST_F(WaylandKeeper, LetsNoReaderWaitForAnotherAndFinishesWithTheLast) {
  ASSERT_TRUE(keep({{"image/png", picture}}));
  // One reads the beginning, and the rest when the pipe "go" is written to.
  ASSERT_EQ(mkfifo(session.home(u"go"_s).toLocal8Bit().constData(), 0600), 0);
  const auto slow = shell(
      u"wl-paste -t image/png | { head -c 100000 >start; touch begun; cat go >/dev/null; cat >rest; }"_s);
  until("the slow reader has begun", [&] { return QFile::exists(session.home(u"begun"_s)); });
  EXPECT_EQ(shell(u"wl-paste -t image/png | head -c 100000 >/dev/null"_s)->waitForEnd(), 0);
  EXPECT_EQ(paste(u"image/png"_s), pictureBytes());

  copyWithAnotherProgram(u"another's"_s);
  EXPECT_EQ(paste(u"text/plain"_s), "another's");
  session.write(u"go"_s, "now");
  EXPECT_EQ(slow->waitForEnd(), 0);
  EXPECT_EQ(contentsOf(session.home(u"start"_s)) + contentsOf(session.home(u"rest"_s)), pictureBytes());
  expectEndOfOne();
}

TEST_F(WaylandKeeper, LeavesTheClipboardAsItIsWhereItCannotKeepAnything) {
  copyWithAnotherProgram(u"before"_s);
  EXPECT_FALSE(keep({}));
  qputenv("WAYLAND_DISPLAY", "wayland-none");
  qunsetenv("DISPLAY");
  EXPECT_FALSE(keep({{"text/plain", platform::bytesOf("kept")}}));
  EXPECT_EQ(paste(u"text/plain"_s), "before");
}

}  // namespace
