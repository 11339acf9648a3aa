// The history panel, on a screen of its own whose desktop composites: how long it takes to open with few and
// many pictures, what it keeps, and how long scrolling holds the main thread. The two latter are asked of
// processes of their own, which are this program again, with one of the parts below.

#include "app/capture/ScreenshotStore.h"
#include "app/history/HistoryPanelController.h"
#include "app/history/HistoryViewModel.h"
#include "app/history/ThumbnailGrid.h"
#include "app/history/ThumbnailLoader.h"
#include "bench/Figures.h"
#include "bench/imaging/Pictures.h"
#include "platform/base/UserDefaults.h"
#include "platform/desktop/FocusablePanel.h"
#include "platform/imaging/codecs/ImageEncoder.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/Screen.h"
#include "tests/support/XvfbServer.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QScrollBar>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <map>
#include <string>
#include <unistd.h>

namespace {

using platform::ImageFileType;

constexpr int framePeriod = 16;  // milliseconds
constexpr std::chrono::milliseconds breather(50);

void orAbort(bool done) {
  if (!done)
    std::abort();
}

double secondsOf(const std::function<void()>& work) {
  QElapsedTimer timer;
  timer.start();
  work();
  return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

void use(const QString& folder) {
  platform::UserDefaults::standard().set(QStringLiteral("storageDirectory"), folder);
}

void runEvents(std::chrono::milliseconds duration) {
  QEventLoop loop;
  QTimer::singleShot(duration, &loop, &QEventLoop::quit);
  loop.exec();
}

/// The panel of a program that has just been started; its thumbnails are kept from one opening to the next.
class Panel : private QObject {
 public:
  explicit Panel(sorrel::ThumbnailLoader& loader)
      : controller(
            std::make_unique<sorrel::HistoryPanelController>(sorrel::HistoryViewModel::create(), loader)) {
    qApp->installEventFilter(this);
  }
  ~Panel() override { close(); }

  /// Returns when the panel's first frame has been handed to the X server.
  void open() {
    isPainted = false;
    controller->show(std::nullopt);
    while (!isPainted)
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  void close() {
    controller->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    runEvents(breather);
  }
  [[nodiscard]] QWidget& window() const { return *controller->window(); }

 private:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && watched == controller->window())
      isPainted = true;
    return false;
  }

  const std::unique_ptr<sorrel::HistoryPanelController> controller;
  bool isPainted = false;
};

double secondsToOpen(Panel& panel) {
  const double seconds = secondsOf([&] { panel.open(); });
  panel.close();
  return seconds;
}

double secondsToOpenUnseen(const QString& folder) {
  use(folder);
  sorrel::ThumbnailLoader loader;
  Panel panel(loader);
  return secondsToOpen(panel);
}

/// Mebibytes that this process holds once it has opened the panel so often and it is open.
void printMemory(const QStringList& arguments) {
  use(arguments[2]);
  sorrel::ThumbnailLoader loader;
  Panel panel(loader);
  for (int i = 1; i < arguments[3].toInt(); ++i) {
    panel.open();
    panel.close();
  }
  panel.open();
  runEvents(breather * 10);
  QFile file(QStringLiteral("/proc/self/statm"));
  orAbort(file.open(QIODevice::ReadOnly));
  const double pages = file.readAll().split(' ').value(1).toDouble();
  std::printf("%f", pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20));
}

double threadMilliseconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// Turns the wheel a notch a frame over the whole list, while the thumbnails load. Prints the main thread's
/// milliseconds in its longest turn of the event loop and in the one that 1 in 100 exceed: first of processor
/// time, then as the clock on the wall has it, with what other threads and processes took.
void printTurns(const QStringList& arguments) {
  use(arguments[2]);
  sorrel::ThumbnailLoader loader;
  Panel panel(loader);
  panel.open();
  runEvents(std::chrono::seconds(1));  // past the opening's motion
  auto* const grid = panel.window().findChild<QAbstractScrollArea*>();
  QWidget* const viewport = grid->viewport();
  const QPoint middle = viewport->rect().center();
  QCursor::setPos(viewport->mapToGlobal(middle));
  runEvents(breather);

  QTimer wheel;
  wheel.setTimerType(Qt::PreciseTimer);
  QObject::connect(&wheel, &QTimer::timeout, viewport, [&] {
    QCoreApplication::postEvent(
        viewport, new QWheelEvent(middle, viewport->mapToGlobal(middle), {}, {0, -120}, Qt::NoButton,
                                  Qt::NoModifier, Qt::NoScrollPhase, false));
  });
  wheel.start(framePeriod);
  std::vector<double> processor, wall;
  const QScrollBar& bar = *grid->verticalScrollBar();
  while (bar.value() < bar.maximum()) {
    const double before = threadMilliseconds();
    wall.push_back(1e3 * secondsOf([] { QCoreApplication::processEvents(QEventLoop::AllEvents); }));
    processor.push_back(threadMilliseconds() - before);
    usleep(200);  // each turn is of what has come meanwhile, without the wait for it
  }
  for (std::vector<double>* const turns : {&processor, &wall}) {
    // Turns in which there was nothing to do don't count.
    std::erase_if(*turns, [](double milliseconds) { return milliseconds < 0.1; });
    std::sort(turns->begin(), turns->end());
    std::printf("%f %f ", turns->back(), (*turns)[turns->size() * 99 / 100]);
  }
}

/// What this program does as a process of its own: PART FOLDER [TIMES].
const std::map<std::string, void (*)(const QStringList& arguments)> parts{{"--open", printMemory},
                                                                          {"--scroll", printTurns}};

QList<QByteArray> answerOf(const QStringList& arguments, const QString& scale = QStringLiteral("1")) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("QT_SCALE_FACTOR"), scale);
  process.setProcessEnvironment(environment);
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(QCoreApplication::applicationFilePath(), arguments);
  orAbort(process.waitForFinished(-1) && process.exitStatus() == QProcess::NormalExit &&
          process.exitCode() == 0);
  return process.readAllStandardOutput().split(' ');
}

double memoryAfter(const QString& folder, int openings) {
  return answerOf({QStringLiteral("--open"), folder, QString::number(openings)}).first().toDouble();
}

/// A folder of so many pictures, each under a name of its own, which are links to a few files.
void fill(const QString& folder, int count, const QStringList& files) {
  orAbort(QDir().mkpath(folder));
  for (int i = 0; i < count; ++i) {
    const QString& file = files[i % files.size()];
    const QString name = QStringLiteral("/Sorrel 2026-03-14 at 09.26.53 (%1).").arg(i);
    const QByteArray path = QFile::encodeName(folder + name + QFileInfo(file).suffix());
    orAbort(link(QFile::encodeName(file).constData(), path.constData()) == 0);
  }
}

/// Four files: text and a photo, as PNG and as JPEG.
QStringList makePictures(const QString& folder, QSize size) {
  orAbort(QDir().mkpath(folder));
  QStringList paths;
  for (const QImage& picture : {bench::textAndWindows(size), bench::photo(size)})
    for (const auto& [name, type] :
         {std::pair("png", ImageFileType::Png), std::pair("jpg", ImageFileType::Jpeg)}) {
      paths.append(QStringLiteral("%1/%2.%3").arg(folder).arg(paths.size()).arg(QLatin1String(name)));
      const auto encoded = platform::ImageEncoder::encode(picture, type);
      QFile file(paths.last());
      orAbort(encoded && file.open(QIODevice::WriteOnly) && file.write(*encoded) == encoded->size());
    }
  return paths;
}

void addOpening(const testing_support::ScratchHome& home, Panel& panel, bench::Figures& figures) {
  const QStringList pictures = makePictures(home.path(QStringLiteral("small")), {300, 200});
  const QString empty = home.path(QStringLiteral("empty"));
  fill(empty, 0, pictures);
  for (const int count : {10, 1'000, 10'000}) {
    const QString folder = home.path(QString::number(count));
    fill(folder, count, pictures);
    const auto listing = [folder] {
      use(folder);
      return secondsOf([] { orAbort(!sorrel::ScreenshotStore::all().empty()); });
    };
    const std::string what = "opening with " + std::to_string(count) + " pictures";
    const std::string against = ", against listing and an empty panel";
    figures.add(bench::MeasuredRatio{what + " seen before" + against,
                                     [folder, &panel] {
                                       use(folder);
                                       return secondsToOpen(panel);
                                     },
                                     [=, &panel] {
                                       const double seconds = listing();
                                       use(empty);
                                       return seconds + secondsToOpen(panel);
                                     },
                                     1.5, 21});
    figures.add(bench::MeasuredRatio{what + " not seen before" + against,
                                     [=] { return secondsToOpenUnseen(folder); },
                                     [=] { return listing() + secondsToOpenUnseen(empty); }, 1.5, 21});
  }
  const QString few = home.path(QStringLiteral("10"));
  const QString many = home.path(QStringLiteral("10000"));
  // After the tenth opening: the second still needs room for the old list and the new one.
  figures.add(bench::Amount{"memory of 10000 pictures, more than that of 10",
                            [=] { return memoryAfter(many, 10) - memoryAfter(few, 10); }, "MiB", 6, 3});
  figures.add(bench::Amount{"memory after 100 further openings with 10000",
                            [=] { return memoryAfter(many, 110) - memoryAfter(many, 10); }, "MiB", 1, 3});
}

void addScrolling(const testing_support::ScratchHome& home, bench::Figures& figures) {
  const QString folder = home.path(QStringLiteral("large pictures"));
  fill(folder, 1'000, makePictures(home.path(QStringLiteral("large")), {2880, 1800}));
  for (const char* const scale : {"1", "1.25", "2"}) {
    const auto runs = std::make_shared<std::vector<QList<QByteArray>>>();
    // The same runs answer for each figure.
    const auto measure = [=](int which) {
      return [=, run = size_t(0)]() mutable {
        if (run == runs->size())
          runs->push_back(answerOf({QStringLiteral("--scroll"), folder}, QString::fromLatin1(scale)));
        return (*runs)[run++][which].toDouble();
      };
    };
    const std::string what = std::string("scrolling at scale ") + scale + ", ";
    figures.add(bench::Amount{what + "longest turn (processor), median of 5 runs", measure(0), "ms", 8, 5});
    figures.add(bench::Amount{what + "99th percentile", measure(1), "ms", 8, 5});
    figures.add(
        bench::Amount{what + "99th percentile with what other processes took", measure(3), "ms", 16, 5});
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (const auto part = argc > 1 ? parts.find(argv[1]) : parts.end(); part != parts.end()) {
    const QApplication application(argc, argv);
    part->second(QCoreApplication::arguments());
    return 0;
  }
  const testing_support::ScratchHome home;
  const testing_support::XvfbServer server(1440, 1200);
  testing_support::Screen screen(server.display());
  screen.takeSelection("_NET_WM_CM_S0");
  qputenv("DISPLAY", server.display().c_str());
  qputenv("QT_QPA_PLATFORM", "xcb");
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
  const QApplication application(argc, argv);
  bench::Figures figures(argc, argv);
  sorrel::ThumbnailLoader loader;
  Panel panel(loader);
  addOpening(home, panel, figures);
  addScrolling(home, figures);
  return figures.run();
}
