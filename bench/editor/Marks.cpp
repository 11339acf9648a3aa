// What it costs to move a watermark on the canvas, and what a burst costs a frame: the main thread's
// processor time at two device pixels a point, painting included.

#include "app/editor/model/EditorModel.h"
#include "app/editor/view/Canvas.h"
#include "app/editor/view/WatermarkTool.h"
#include "bench/Figures.h"
#include "bench/imaging/Pictures.h"
#include "platform/base/MainQueue.h"
#include "tests/support/ScratchHome.h"

#include <QApplication>
#include <QMouseEvent>

#include <algorithm>
#include <cmath>
#include <ctime>

using namespace sorrel;

namespace {

constexpr int steps = 60;

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

/// A canvas as large as the window that opens with a large picture.
class Bench {
 public:
  explicit Bench(const QUrl& file) : model(EditorModel::open(file)), canvas(*model, nullptr) {
    canvas.setTool(EditorModel::Tool::watermark, std::make_unique<WatermarkTool>(*model, canvas));
    canvas.resize(1104, 744);
    canvas.setVisible(true);
    model->tool = EditorModel::Tool::watermark;
    paint();
  }

  /// Of four lines that fill the picture, with their shadow.
  void write() {
    model->textWM.change([](TextWatermark& text) {
      text.text = QStringLiteral("Sorrel\nbottle 한글\nscreen\nshot");
      text.scale = 6;
      text.center = {480, 330};
    });
    paint();
  }
  void clear() {
    model->textWM.change([](TextWatermark& text) { text.text.clear(); });
    model->logoWM = std::nullopt;
    paint();
  }
  void setLogo(int side) {
    QImage logo(side, side, QImage::Format_RGBA8888_Premultiplied);
    logo.fill(QColor(200, 40, 30, 128));
    model->setLogo(logo);
    paint();
  }

  /// Of each step of a drag from a place, at guides and beside them; `ends`: of its dearest step, the release
  /// and the rest after it among them.
  double dragMilliseconds(const QPointF& from, bool isDearest) {
    const QPointF start = canvas.fit().toCanvas(from);
    const auto place = [&](int i) { return start + QPointF(90 * std::sin(i / 9.0), 1.5 * i); };
    pointer(QEvent::MouseButtonPress, start);
    std::vector<double> times;
    for (int i = 1; i <= steps; ++i)
      times.push_back(millisecondsOf([&] { pointer(QEvent::MouseMove, place(i)); }));
    times.push_back(millisecondsOf([&] { pointer(QEvent::MouseButtonRelease, place(steps)); }));
    if (isDearest)
      return *std::ranges::max_element(times);
    double sum = 0;
    for (int i = 0; i < steps; ++i)
      sum += times[size_t(i)];
    return sum / steps;
  }

  double burstMilliseconds() {
    model->maybeTriggerBurst(QStringLiteral("sorrel"));
    paint();
    constexpr int frames = 130;
    const double all = millisecondsOf([&] {
      for (int frame = 0; frame < frames; ++frame) {
        clock.advance(std::chrono::milliseconds(16));
        paint();
      }
    });
    clock.advance(std::chrono::seconds(3));
    paint();
    return all / frames;
  }
  [[nodiscard]] double waiting() const { return clock.pending(); }

 private:
  void paint() {
    clock.run();
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
  }
  void pointer(QEvent::Type type, const QPointF& place) {
    QMouseEvent event(type, place, canvas.mapToGlobal(place),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(canvas.viewport(), &event);
    paint();
  }

  platform::ManualClock clock;
  const std::unique_ptr<EditorModel> model;
  Canvas canvas;
};

QUrl screenshotIn(const testing_support::ScratchHome& home) {
  const QString path = home.path(QStringLiteral("screenshot.png"));
  if (!bench::textAndWindows({2880, 1800}).save(path))
    std::abort();
  return QUrl::fromLocalFile(path);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_SCALE_FACTOR", "2");
  const testing_support::ScratchHome home;
  const QApplication application(argc, argv);
  Bench canvas(screenshotIn(home));
  bench::Figures figures(argc, argv);
  const auto add = [&](const std::string& name, const std::string& unit, double atMost,
                       const std::function<double()>& measure) {
    figures.add(bench::Amount{name, measure, unit, atMost, 5});
  };
  for (const bool isDearest : {false, true}) {
    const std::string step = isDearest ? "the dearest step of a drag, " : "a step of a drag, ";
    add(step + "text of four lines at scale 6", "ms", isDearest ? 60 : 4, [&canvas, isDearest] {
      canvas.clear();
      canvas.write();
      return canvas.dragMilliseconds({480, 330}, isDearest);
    });
    add(step + "logo of 10000x10000", "ms", isDearest ? 16 : 4, [&canvas, isDearest] {
      canvas.clear();
      canvas.setLogo(10'000);
      return canvas.dragMilliseconds({500, 375}, isDearest);
    });
  }
  add("a frame of a burst", "ms", 6, [&canvas] {
    canvas.clear();
    return canvas.burstMilliseconds();
  });
  add("what waits after a burst", "blocks", 0, [&canvas] { return canvas.waiting(); });
  return figures.run();
}
