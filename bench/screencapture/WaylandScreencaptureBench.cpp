// Measures the capture tool on Wayland as its user meets it, in whole processes in a session of sway's own:
// from the start to the frozen selection, against the two programs that others put together for it, grim,
// which copies the screen, and then slurp, which lets a part of it be selected. One line for each figure:
// name, value, bound, verdict. Says so and measures nothing where these programs aren't installed.

#include "bench/Figures.h"
#include "tests/support/SwaySession.h"
#include "tests/support/Waiting.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QStandardPaths>

#include <cstdio>
#include <exception>
#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int rounds = 31;
constexpr qint64 patienceMilliseconds = 10000;

/// From the start of a program to the first frame in which the output looks otherwise.
double timeToPicture(testing_support::SwaySession& session, const QStringList& command) {
  const QImage plain = session.picture();
  QElapsedTimer time;
  time.start();
  const auto program = session.start(command);
  while (session.picture() == plain) {
    if (time.elapsed() > patienceMilliseconds)
      throw std::runtime_error("no selection comes: " + program->errors().toStdString());
  }
  const double taken = static_cast<double>(time.nsecsElapsed()) / 1e6;
  session.input().tapKey(KEY_ESC);
  program->waitForEnd();
  testing_support::until("the screen is as before", [&] { return session.picture() == plain; });
  return taken;
}

}  // namespace

int main(int argc, char** argv) try {
  testing_support::becomeOrdinaryUser();
  const QCoreApplication application(argc, argv);
  for (const QString& program : {u"sway"_s, u"grim"_s, u"slurp"_s}) {
    if (QStandardPaths::findExecutable(program).isEmpty()) {
      std::printf("selection on Wayland: not measured, %s is missing\n", qPrintable(program));
      return 0;
    }
  }
  testing_support::SwaySession session;
  session.moveTo({640, 400});
  const QString file = session.home(u"picture.png"_s);
  bench::Figures figures(argc, argv);
  figures.add(bench::MeasuredRatio{
      "selection on Wayland: start to frozen, by grim and slurp",
      [&] {
        return timeToPicture(session, {QStringLiteral(SORREL_CAPTURE_TOOL), u"-i"_s, file});
      },
      [&] {
        return timeToPicture(session, {u"sh"_s, u"-c"_s, u"grim \"$0\" && exec slurp < /dev/null"_s, file});
      },
      0.6, rounds});
  return figures.run();
} catch (const std::exception& error) {
  std::fprintf(stderr, "bench_screencapture_wayland: %s\n", error.what());
  return 1;
}
