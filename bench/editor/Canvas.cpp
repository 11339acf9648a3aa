// What the editor's canvas costs: a point under the pointer, a frame of a zoom, a step of scrolling, undoing.
// The main thread's processor time, painting included, at both of the usual device ratios.

#include "app/editor/view/Canvas.h"

#include "app/editor/model/EditorModel.h"
#include "app/editor/view/BlurTool.h"
#include "app/editor/view/PenTool.h"
#include "bench/Figures.h"
#include "bench/editor/Drawing.h"
#include "bench/imaging/Pictures.h"
#include "platform/base/MainQueue.h"
#include "tests/support/ScratchHome.h"

#include <QApplication>
#include <QMouseEvent>
#include <QProcess>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <ctime>

using namespace sorrel;

namespace {

double millisecondsOf(const std::function<void()>& work) {
  const auto now = [] {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return 1e3 * double(time.tv_sec) + 1e-6 * double(time.tv_nsec);
  };
  const double begin = now();
  work();
  return now() - begin;
}

double middleOf(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + std::ptrdiff_t(values.size() / 2), values.end());
  return values[values.size() / 2];
}

/// A canvas as large as the window that opens with a large picture, which 20 strokes of blur lie on.
class Bench {
 public:
  Bench(platform::ManualClock& clock, const QUrl& file, int strokes)
      : clock(clock), model(EditorModel::open(file)) {
    bench::addBlur(*model);
    for (int number = 0; number < strokes; ++number)
      bench::addStroke(*model, number);
    canvas = std::make_unique<Canvas>(*model, nullptr);
    canvas->setTool(EditorModel::Tool::pen, std::make_unique<PenTool>(*model));
    canvas->setTool(EditorModel::Tool::blur, std::make_unique<BlurTool>(*model, *canvas));
    canvas->resize(1104, 744);
    canvas->show();
    paint();
  }

  /// Until nothing is waiting, but for what waits for time to pass.
  void paint() {
    clock.run();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
  }
  void pointer(QEvent::Type type, const QPointF& place) {
    QMouseEvent event(type, place, canvas->mapToGlobal(place),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(canvas->viewport(), &event);
    paint();
  }
  void choose(EditorModel::Tool tool, BlurApply apply = BlurApply::brush) {
    model->tool = tool;
    model->blurApply = apply;
    paint();
  }
  /// Of each movement of a drag along a hand's way.
  double dragMilliseconds(int points, double* release = nullptr) {
    const auto place = [](int i) { return QPointF(200 + 0.35 * i, 360 + 150 * std::sin(i / 40.0)); };
    pointer(QEvent::MouseButtonPress, place(0));
    const double moves = millisecondsOf([&] {
      for (int i = 1; i < points; ++i)
        pointer(QEvent::MouseMove, place(i));
    });
    const double end = millisecondsOf([&] { pointer(QEvent::MouseButtonRelease, place(points)); });
    if (release)
      *release = end;
    model->undoLast();
    paint();
    return moves / (points - 1);
  }
  double areaMilliseconds() {
    pointer(QEvent::MouseButtonPress, {150, 150});
    const double moves = millisecondsOf([&] {
      for (int i = 1; i <= 200; ++i)
        pointer(QEvent::MouseMove, QPointF(150 + 4 * i, 150 + 2.5 * i));
    });
    pointer(QEvent::MouseButtonRelease, {950, 650});
    model->undoLast();
    paint();
    return moves / 200;
  }
  /// The dearest frame of a step's animation but the last, or the last, which paints the picture anew.
  double zoomMilliseconds(bool isLast) {
    canvas->zoomToFit();
    passTime();
    canvas->zoomIn();
    paint();
    std::vector<double> frames;
    for (int frame = 0; frame < 11; ++frame)
      frames.push_back(millisecondsOf([&] {
        clock.advance(std::chrono::milliseconds(16));
        paint();
      }));
    const auto dearest = std::max_element(frames.begin(), frames.end());
    const double last = *dearest;
    frames.erase(dearest);
    return isLast ? last : *std::max_element(frames.begin(), frames.end());
  }
  double scrollMilliseconds() {
    while (canvas->zoomFactor() < 8) {
      canvas->zoomIn();
      passTime();
    }
    std::vector<double> steps;
    for (int step = 0; step < 24; ++step)
      steps.push_back(millisecondsOf([&] {
        QWheelEvent event({500, 300}, canvas->mapToGlobal(QPointF(500, 300)), {}, {0, step < 12 ? 120 : -120},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(canvas->viewport(), &event);
        paint();
      }));
    canvas->zoomToFit();
    passTime();
    return *std::max_element(steps.begin(), steps.end());
  }
  std::vector<double> undoMilliseconds() {
    std::vector<double> undone;
    const qsizetype strokes = model->strokes->size();
    while (!model->strokes->isEmpty())
      undone.push_back(millisecondsOf([&] {
        model->undoLast();
        paint();
      }));
    for (qsizetype number = 0; number < strokes; ++number)
      bench::addStroke(*model, int(number));
    paint();
    return undone;
  }
  double sliderMilliseconds() {
    std::vector<double> steps;
    for (int step = 0; step <= 50; ++step)
      steps.push_back(millisecondsOf([&] {
        model->blurIntensity = step / 50.0;
        paint();
      }));
    return middleOf(steps);
  }

 private:
  void passTime() {
    clock.advance(std::chrono::seconds(1));
    paint();
  }

  platform::ManualClock& clock;
  const std::unique_ptr<EditorModel> model;
  std::unique_ptr<Canvas> canvas;
};

/// Made when it is first asked for.
std::function<Bench&()> benchOf(platform::ManualClock& clock, const QUrl& file, int strokes) {
  return [=, &clock, bench = std::make_shared<std::unique_ptr<Bench>>()]() -> Bench& {
    if (!*bench)
      *bench = std::make_unique<Bench>(clock, file, strokes);
    return **bench;
  };
}

void addFigures(platform::ManualClock& clock, const QUrl& file, bool isFine, bench::Figures& figures) {
  const std::string at = isFine ? ", ratio 2" : ", ratio 1";
  const auto add = [&](const std::string& name, std::function<double()> measure, double coarse, double fine) {
    figures.add(bench::Amount{name + at, std::move(measure), "ms", isFine ? fine : coarse, 5});
  };
  const auto penOn = [](const std::function<Bench&()>& bench) {
    bench().choose(EditorModel::Tool::pen);
    return bench().dragMilliseconds(500);
  };
  const auto none = benchOf(clock, file, 0);
  const auto some = benchOf(clock, file, 300);
  const auto many = benchOf(clock, file, 10'000);
  add(
      "a point of the pen", [=] { return penOn(none); }, 0.10, 0.15);
  add(
      "a point of the pen on 10000 strokes", [=] { return penOn(many); }, 0.10, 0.15);
  figures.add(bench::MeasuredRatio{"a point of the pen on 10000 strokes, of one on none" + at,
                                   [=] { return penOn(many); }, [=] { return penOn(none); }, 1.3, 5});
  add(
      "the end of a stroke of 2000 points",
      [=] {
        some().choose(EditorModel::Tool::pen);
        double end = 0;
        some().dragMilliseconds(2000, &end);
        return end;
      },
      4, 6);
  add(
      "a point of the blur brush",
      [=] {
        many().choose(EditorModel::Tool::blur);
        return many().dragMilliseconds(500);
      },
      0.15, 0.25);
  add(
      "a step of a blurred area",
      [=] {
        some().choose(EditorModel::Tool::blur, BlurApply::area);
        return some().areaMilliseconds();
      },
      0.8, 1.5);
  add(
      "the dearest frame of a zoom", [=] { return some().zoomMilliseconds(false); }, 4, 4);
  add(
      "the picture painted anew after a zoom, 300 strokes", [=] { return some().zoomMilliseconds(true); }, 60,
      120);
  add(
      "the dearest step of scrolling at 800 %, 300 strokes", [=] { return some().scrollMilliseconds(); }, 10,
      25);
  add(
      "undoing one of 300 strokes, the middle", [=] { return middleOf(some().undoMilliseconds()); }, 1, 2);
  add(
      "undoing one of 300 strokes, the dearest",
      [=] {
        const auto all = some().undoMilliseconds();
        return *std::max_element(all.begin(), all.end());
      },
      80, 180);
  add(
      "a step of the intensity", [=] { return none().sliderMilliseconds(); }, 8, 16);
}

}  // namespace

/// The ratio is one of a whole run of the toolkit, so a second process measures at the second.
int main(int argc, char** argv) {
  const bool isFine = qEnvironmentVariable("QT_SCALE_FACTOR") == QStringLiteral("2");
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const testing_support::ScratchHome home;
  const QApplication application(argc, argv);
  QCoreApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
  const QString path = home.path(QStringLiteral("picture.png"));
  if (!bench::textAndWindows({2880, 1800}).save(path))
    return 1;
  platform::ManualClock clock;
  bench::Figures figures(argc, argv);
  addFigures(clock, QUrl::fromLocalFile(path), isFine, figures);
  const int status = figures.run();
  if (isFine)
    return status;
  std::fflush(stdout);
  qputenv("QT_SCALE_FACTOR", "2");
  return QProcess::execute(QCoreApplication::applicationFilePath(), QCoreApplication::arguments().sliced(1));
}
