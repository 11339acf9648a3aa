// The same as bench_start, in a Wayland session with a StatusNotifier tray. What Wayland may cost on top of
// X11 is a fifth.

#include "bench/Figures.h"
#include "bench/Running.h"
#include "tests/e2e/StatusNotifierHost.h"
#include "tests/support/SwaySession.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>

#include <chrono>
#include <thread>

namespace {

using bench::Running;

void waitForIcon(const e2e::StatusNotifierHost& tray) {
  QEventLoop loop;
  QObject::connect(&tray, &e2e::StatusNotifierHost::StatusNotifierItemRegistered, &loop, &QEventLoop::quit);
  loop.exec();
}

double secondsToIcon(const e2e::StatusNotifierHost& tray, const QString& program) {
  const auto start = std::chrono::steady_clock::now();
  const Running running(program);
  waitForIcon(tray);
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double settledMemory(const e2e::StatusNotifierHost& tray, const QString& program) {
  const Running running(program);
  waitForIcon(tray);
  std::this_thread::sleep_for(std::chrono::seconds(2));
  return running.proportionalSetSize();
}

}  // namespace

int main(int argc, char** argv) {
  testing_support::becomeOrdinaryUser();
  const QCoreApplication application(argc, argv);
  const testing_support::SwaySession desktop;
  for (const QString& name : desktop.environment().keys())
    qputenv(name.toLocal8Bit().constData(), desktop.environment().value(name).toLocal8Bit());
  qunsetenv("DISPLAY");
  const e2e::StatusNotifierHost tray(desktop.busAddress());

  const QDir programs(QCoreApplication::applicationDirPath());
  const QString program = programs.filePath(QStringLiteral("../bin/sorrel"));
  const QString smallest = programs.filePath(QStringLiteral("references/smallest_tray"));
  bench::Figures figures(argc, argv);
  figures.add(bench::MeasuredRatio{"start to status item on Wayland, against the smallest tray program",
                                   [&] { return secondsToIcon(tray, program); },
                                   [&] { return secondsToIcon(tray, smallest); }, 1.5 * 1.2, 21});
  figures.add(bench::MeasuredRatio{"idle memory (PSS) on Wayland, against the smallest tray program",
                                   [&] { return settledMemory(tray, program); },
                                   [&] { return settledMemory(tray, smallest); }, 1.3 * 1.2, 3});
  figures.add(bench::Amount{"wake-ups in 30 idle seconds on Wayland",
                            [&] {
                              const Running running(program);
                              waitForIcon(tray);
                              return running.sleepsIn30Seconds([] {});
                            },
                            "", 2 * 1.2});
  return figures.run();
}
