// The editor's window, on a screen of its own: how soon it shows a picture, what it holds while it is open
// and what is left of that afterwards. All is asked of processes of their own, which are this program again,
// with one of the parts below: the program opens its first picture in the fresh state of a Sorrel that has
// just been started.

#include "app/editor/view/Canvas.h"
#include "app/editor/view/EditorView.h"
#include "app/editor/view/EditorWindowController.h"
#include "app/look/LookStyle.h"
#include "bench/Figures.h"
#include "bench/editor/Drawing.h"
#include "bench/imaging/Pictures.h"
#include "platform/desktop/Screens.h"
#include "platform/desktop/WindowFront.h"
#include "platform/imaging/codecs/ImageDecoder.h"
#include "platform/system/FreeMemory.h"
#include "tests/support/ScratchHome.h"
#include "tests/support/XTestInput.h"
#include "tests/support/XvfbServer.h"

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QPushButton>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <linux/input-event-codes.h>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace {

constexpr std::chrono::milliseconds breather(400);

void orAbort(bool done) {
  if (!done)
    std::abort();
}

void runEvents(std::chrono::milliseconds duration) {
  QEventLoop loop;
  QTimer::singleShot(duration, &loop, &QEventLoop::quit);
  loop.exec();
}

/// In MiB, with its share of what others have too. Pages of programs' and libraries' files aren't counted:
/// they are the kernel's to drop at any time.
double memoryHeld() {
  QFile file(QStringLiteral("/proc/self/smaps_rollup"));
  orAbort(file.open(QIODevice::ReadOnly));
  const QByteArray text = file.readAll();
  const qsizetype at = text.indexOf("\nPss_Dirty:") + 11;
  return text.mid(at, text.indexOf("kB", at) - at).trimmed().toDouble() / 1024;
}

struct Duration {
  double elapsed = 0;    // in milliseconds
  double processor = 0;  // the same, of all threads together
};

/// Prints both.
void printDuration(const std::function<void()>& work) {
  const auto now = [](clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
  };
  const Duration begin{now(CLOCK_MONOTONIC), now(CLOCK_PROCESS_CPUTIME_ID)};
  work();
  std::printf("%f %f", now(CLOCK_MONOTONIC) - begin.elapsed, now(CLOCK_PROCESS_CPUTIME_ID) - begin.processor);
}

/// The editor of a program that has just been started.
class Editor : private QObject {
 public:
  Editor() { qApp->installEventFilter(this); }

  /// Returns when the window's first frame has been handed to the X server.
  void open(const QString& path) {
    isPainted = false;
    controller.open(QUrl::fromLocalFile(path));
    while (!isPainted)
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  /// The same window with 20 strokes of blur and 300 of the pen on the picture.
  void openDrawn(const QString& path) {
    auto model = sorrel::EditorModel::open(QUrl::fromLocalFile(path));
    bench::addBlur(*model);
    for (int number = 0; number < 300; ++number)
      bench::addStroke(*model, number);
    const QSizeF size =
        sorrel::editorContentSize(model->displaySize, platform::screens().front().visibleFrame.size());
    drawn = std::make_unique<sorrel::EditorView>(std::move(model), [] {});
    drawn->resize(size.toSize());
    drawn->setFocus();
    platform::bringToFront(*drawn);
  }
  [[nodiscard]] QWidget& window() const { return drawn ? *drawn : *controller.window(); }
  [[nodiscard]] bool isOpen() const { return controller.window() && window().isVisible(); }

  void zoomIn() {
    hand.pressKey(KEY_LEFTCTRL);
    for (int step = 0; step < 6; ++step)
      hand.tapKey(KEY_EQUAL);
    hand.releaseKey(KEY_LEFTCTRL);
    runEvents(breather);
    for (const auto* const child : window().findChildren<QAbstractScrollArea*>())
      if (const auto* const canvas = dynamic_cast<const sorrel::Canvas*>(child))
        return orAbort(canvas->fit().zoom == sorrel::CanvasFit::greatestZoom);
    orAbort(false);
  }
  void closeBy(const QString& way) {
    if (way == QStringLiteral("cancel"))
      hand.tapKey(KEY_ESC);
    else if (way == QStringLiteral("save"))
      save();
    else
      window().close();
    runEvents(breather);
    orAbort(!isOpen());
  }

 private:
  void save() const {
    for (auto* const button : window().findChildren<QPushButton*>())
      if (button->text() == QStringLiteral("Save"))
        return button->click();
    orAbort(false);
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && watched->isWidgetType())
      isPainted = true;
    return false;
  }

  sorrel::EditorWindowController controller;
  std::unique_ptr<sorrel::EditorView> drawn;
  testing_support::XTestInput hand{qgetenv("DISPLAY").toStdString()};
  bool isPainted = false;
};

/// FILE: what it takes until the first picture is on the screen.
void printOpening(const QStringList& arguments) {
  Editor editor;
  runEvents(breather);
  printDuration([&] { editor.open(arguments[2]); });
}

/// FILE: what its decoding takes of that. It is the first picture that the process decodes, as in the
/// opening: a second one finds the memory and the code at hand.
void printDecoding(const QStringList& arguments) {
  Editor editor;
  runEvents(breather);
  printDuration([&] { orAbort(bool(platform::ImageDecoder::read(QFile::encodeName(arguments[2])))); });
}

/// FILE WAY: mebibytes above those of before, while it is open, while it is zoomed, and when it is closed in
/// that way.
void printMemory(const QStringList& arguments) {
  Editor editor;
  runEvents(breather);
  const double before = memoryHeld();
  editor.open(arguments[2]);
  runEvents(breather);
  std::printf("%f ", memoryHeld() - before);
  editor.zoomIn();
  std::printf("%f ", memoryHeld() - before);
  editor.closeBy(arguments[3]);
  std::printf("%f", memoryHeld() - before);
}

/// FILE: mebibytes above those of before with much drawn on the picture, and then zoomed.
void printDrawnMemory(const QStringList& arguments) {
  Editor editor;
  runEvents(breather);
  const double before = memoryHeld();
  editor.openDrawn(arguments[2]);
  runEvents(breather);
  std::printf("%f ", memoryHeld() - before);
  editor.zoomIn();
  std::printf("%f", memoryHeld() - before);
}

/// FILE TIMES: mebibytes that so many openings have left behind since the tenth.
void printLeak(const QStringList& arguments) {
  Editor editor;
  double afterTen = 0;
  for (int i = 0; i < arguments[3].toInt(); ++i) {
    editor.open(arguments[2]);
    if (i % 2)
      editor.closeBy(QStringLiteral("cancel"));
    if (i == 9)
      afterTen = memoryHeld();
  }
  std::printf("%f", memoryHeld() - afterTen);
}

/// What this program does as a process of its own.
const std::map<std::string, void (*)(const QStringList& arguments)> parts{
    {"--opening", printOpening},
    {"--decoding", printDecoding},
    {"--memory", printMemory},
    {"--drawn-memory", printDrawnMemory},
    {"--leak", printLeak}};

QList<QByteArray> answerOf(const QStringList& arguments, const char* scale = "1") {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QString::fromLatin1(scale));
  process.setProcessEnvironment(environment);
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(QCoreApplication::applicationFilePath(), arguments);
  orAbort(process.waitForFinished(-1) && process.exitStatus() == QProcess::NormalExit &&
          process.exitCode() == 0);
  return process.readAllStandardOutput().split(' ');
}

/// The least of several, in which other programs have disturbed least.
Duration besidesDecoding(const QString& file, const char* scale) {
  constexpr int rounds = 9;
  const auto least = [](Duration& of, const QList<QByteArray>& answer) {
    of = {std::min(of.elapsed, answer[0].toDouble()), std::min(of.processor, answer[1].toDouble())};
  };
  Duration opening{1e9, 1e9};
  Duration decoding{1e9, 1e9};
  for (int round = 0; round < rounds; ++round) {
    least(opening, answerOf({QStringLiteral("--opening"), file}, scale));
    least(decoding, answerOf({QStringLiteral("--decoding"), file}, scale));
  }
  return {opening.elapsed - decoding.elapsed, opening.processor - decoding.processor};
}

/// The bound is on what the user waits for, the time that elapses. That of the processor is what it costs,
/// told beside it.
void addOpening(const QString& file, const char* scale, bench::Figures& figures) {
  const std::string name =
      std::string("to the first painted window at scale ") + scale + ", besides decoding";
  const auto times = std::make_shared<std::optional<Duration>>();
  const auto measured = [=] {
    if (!*times)
      *times = besidesDecoding(file, scale);
    return **times;
  };
  figures.add(bench::Amount{name, [=] { return measured().elapsed; }, "ms", 40});
  figures.add(bench::Amount{name + " (processor)", [=] { return measured().processor; }, "ms", 75});
}

void addFigures(const QString& file, double megabytes, const char* scale, bench::Figures& figures) {
  const std::string at = std::string(" at scale ") + scale;
  addOpening(file, scale, figures);
  const auto memory = [=](const char* way, int which) {
    return answerOf({QStringLiteral("--memory"), file, QString::fromLatin1(way)}, scale)[which].toDouble();
  };
  figures.add(bench::Amount{"memory of the open editor" + at + ", of the picture's",
                            [=] { return memory("cancel", 0) / megabytes; }, "x", 3, 3});
  figures.add(bench::Amount{"memory at zoom 8" + at + ", of the picture's",
                            [=] { return memory("cancel", 1) / megabytes; }, "x", 3, 3});
  const auto drawnMemory = [=](int which) {
    return answerOf({QStringLiteral("--drawn-memory"), file}, scale)[which].toDouble() / megabytes;
  };
  figures.add(bench::Amount{"memory with 300 strokes and 20 of blur" + at + ", of the picture's",
                            [=] { return drawnMemory(0); }, "x", 3, 3});
  figures.add(bench::Amount{"memory with 300 strokes and 20 of blur at zoom 8" + at + ", of the picture's",
                            [=] { return drawnMemory(1); }, "x", 3, 3});
  for (const char* const way : {"cancel", "save"})
    figures.add(bench::Amount{std::string("memory that ") + way + " leaves" + at,
                              [=] { return memory(way, 2); }, "MiB", 3, 3});
  // The document's own reduced picture stays with it.
  figures.add(bench::Amount{"memory that the close button leaves" + at + ", of the picture's",
                            [=] { return memory("close", 2) / megabytes; }, "x", 1.7, 3});
}

}  // namespace

int main(int argc, char** argv) {
  platform::shareOneHeap();  // as the program does
  if (const auto part = argc > 1 ? parts.find(argv[1]) : parts.end(); part != parts.end()) {
    const QApplication application(argc, argv);
    QApplication::setStyle(new sorrel::LookStyle);
    part->second(QCoreApplication::arguments());
    return 0;
  }
  const testing_support::ScratchHome home;
  const testing_support::XvfbServer server(2880, 1800);
  qputenv("DISPLAY", server.display().c_str());
  qputenv("QT_QPA_PLATFORM", "xcb");
  qputenv("LANGUAGE", "en");
  qunsetenv("DBUS_SESSION_BUS_ADDRESS");
  const QApplication application(argc, argv);
  bench::Figures figures(argc, argv);
  const QImage picture = bench::textAndWindows({2880, 1800});
  const QString file = home.path(QStringLiteral("picture.png"));
  orAbort(picture.save(file));
  for (const char* const scale : {"1", "2"})
    addFigures(file, static_cast<double>(picture.sizeInBytes()) / (1 << 20), scale, figures);
  figures.add(
      bench::Amount{"memory after 190 further openings",
                    [=] {
                      return answerOf({QStringLiteral("--leak"), file, QStringLiteral("200")})[0].toDouble();
                    },
                    "MiB", 1});
  return figures.run();
}
