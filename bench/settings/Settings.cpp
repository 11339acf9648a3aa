// The settings' window, on a screen of its own and with 300 font families beside the system's: what its first
// opening, the watermarks' tab and the list of fonts take of the processor, and what is left of it in memory.
// Each is asked of a process of its own, which is this program again, with one of the parts below.

#include "app/look/LookStyle.h"
#include "app/settings/view/SettingsWindowController.h"
#include "bench/Figures.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/XvfbServer.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFontDatabase>
#include <QProcess>
#include <QTabBar>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <map>
#include <unistd.h>

namespace {

constexpr int families = 300;
constexpr int watermarkTab = 2;
constexpr std::chrono::milliseconds settling(400);

void orAbort(bool done) {
  if (!done)
    std::abort();
}

void runEvents(std::chrono::milliseconds duration) {
  QEventLoop loop;
  QTimer::singleShot(duration, &loop, &QEventLoop::quit);
  loop.exec();
}

double processorMilliseconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// Of the processor, until all that it leads to is done.
double millisecondsOf(const std::function<void()>& work) {
  const double before = processorMilliseconds();
  work();
  runEvents(settling);
  return processorMilliseconds() - before;
}

double mebibytes() {
  QFile file(QStringLiteral("/proc/self/statm"));
  orAbort(file.open(QIODevice::ReadOnly));
  const QList<QByteArray> pages = file.readAll().split(' ');
  return (pages.value(1).toDouble() - pages.value(2).toDouble()) *
         static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

void showWatermarks(sorrel::SettingsWindowController& settings) {
  settings.window()->findChild<QTabBar*>()->setCurrentIndex(watermarkTab);
}

double openFirst() {
  sorrel::SettingsWindowController settings;
  return millisecondsOf([&] { settings.open(); });
}

double openWatermarks() {
  sorrel::SettingsWindowController settings;
  settings.open();
  runEvents(settling);
  const double taken = millisecondsOf([&] { showWatermarks(settings); });
  orAbort(QFontDatabase::families().size() > families);
  return taken;
}

double openFontList() {
  sorrel::SettingsWindowController settings;
  settings.open();
  showWatermarks(settings);
  runEvents(settling);
  return millisecondsOf([&] { settings.window()->findChild<QComboBox*>()->showPopup(); });
}

/// What ten openings leave, of which each has seen all tabs, above what the first has left.
double keepAfterClosing() {
  sorrel::SettingsWindowController settings;
  double afterFirst = 0;
  for (int i = 0; i < 10; ++i) {
    settings.open();
    for (int tab = 0; tab < 4; ++tab) {
      settings.window()->findChild<QTabBar*>()->setCurrentIndex(tab);
      runEvents(settling / 8);
    }
    settings.window()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // no loop runs that would do it
    runEvents(settling / 8);
    orAbort(!settings.window());
    if (i == 0)
      afterFirst = mebibytes();
  }
  return mebibytes() - afterFirst;
}

const std::map<std::string, double (*)()> parts{{"--open", openFirst},
                                                {"--watermarks", openWatermarks},
                                                {"--fonts", openFontList},
                                                {"--close", keepAfterClosing}};

double answerOf(const char* part) {
  QProcess process;
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(QCoreApplication::applicationFilePath(), {QString::fromLatin1(part)});
  orAbort(process.waitForFinished(-1) && process.exitStatus() == QProcess::NormalExit &&
          process.exitCode() == 0);
  return process.readAllStandardOutput().toDouble();
}

/// One installed font under so many names: links to its file, each of which is told to be of another family.
void installFamilies(const testing_support::ScratchHome& home) {
  const QString font = QStringLiteral("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");
  QString rules;
  orAbort(QDir().mkpath(home.path(QStringLiteral("fonts"))));
  for (int i = 0; i < families; ++i) {
    const QString file = home.path(QStringLiteral("fonts/%1.ttf").arg(i));
    orAbort(QFile::link(font, file));
    rules += QStringLiteral(
                 "<match target=\"scan\"><test name=\"file\"><string>%1</string></test>"
                 "<edit name=\"family\"><string>Family %2</string></edit></match>")
                 .arg(file)
                 .arg(i);
  }
  const QString configuration =
      QStringLiteral(
          "<fontconfig><dir>/usr/share/fonts</dir><dir>%1</dir><cachedir>%2</cachedir>%3</fontconfig>")
          .arg(home.path(QStringLiteral("fonts")), home.path(QStringLiteral("cache")), rules);
  qputenv("FONTCONFIG_FILE", home.write(QStringLiteral("fonts.conf"), configuration.toUtf8()).toLocal8Bit());
}

}  // namespace

int main(int argc, char** argv) {
  if (const auto part = argc > 1 ? parts.find(argv[1]) : parts.end(); part != parts.end()) {
    const QApplication application(argc, argv);
    QApplication::setStyle(new sorrel::LookStyle);
    QApplication::setQuitOnLastWindowClosed(false);
    runEvents(settling);
    std::printf("%f", part->second());
    return 0;
  }
  const testing_support::ScratchHome home;
  const testing_support::XvfbServer server(1440, 900);
  qputenv("DISPLAY", server.display().c_str());
  qputenv("QT_QPA_PLATFORM", "xcb");
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
  installFamilies(home);
  const QCoreApplication application(argc, argv);
  bench::Figures figures(argc, argv);
  answerOf("--watermarks");  // the fonts' library has its cache from now on
  const auto add = [&](const char* name, const char* part, const char* unit, double atMost) {
    figures.add(bench::Amount{name, [part] { return answerOf(part); }, unit, atMost, 5});
  };
  add("settings opened first, processor", "--open", "ms", 120);
  add("settings' watermark tab with 300 families, processor", "--watermarks", "ms", 60);
  add("settings' list of 300 families, processor", "--fonts", "ms", 60);
  add("settings kept after ten more openings", "--close", "MiB", 1);
  return figures.run();
}
