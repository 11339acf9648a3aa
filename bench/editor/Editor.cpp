// The editor's document: what a slider's step, an added point, opening and saving cost beyond what must be
// done.

#include "app/editor/model/EditorModel.h"
#include "bench/Figures.h"
#include "bench/imaging/Pictures.h"
#include "bench/imaging/PlainFilters.h"
#include "platform/imaging/codecs/ImageDecoder.h"
#include "platform/imaging/codecs/ImageEncoder.h"
#include "platform/imaging/drawing/DrawingSurface.h"
#include "platform/imaging/filters/GaussianBlur.h"
#include "tests/support/ScratchHome.h"

#include <QFile>
#include <QGuiApplication>
#include <QProcess>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <sched.h>

using bench::secondsOf;
using sorrel::BlurStyle;
using sorrel::EditorModel;

namespace {

/// Of this thread's own time: a short piece of work is else measured by who else wants the core.
double cpuSecondsOf(const std::function<void()>& work) {
  const auto now = [] {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + 1e-9 * double(time.tv_nsec);
  };
  const double begin = now();
  work();
  return now() - begin;
}

QUrl written(const testing_support::ScratchHome& home, const QImage& picture, const QString& name) {
  const QString path = home.path(name + QStringLiteral(".png"));
  if (!picture.save(path))
    std::abort();
  return QUrl::fromLocalFile(path);
}

void drawStroke(EditorModel& model, int number, int points) {
  model.begin({50.0 + number % 800, 80.0 + number % 400});
  for (int i = 1; i < points; ++i)
    model.current.change([&](auto& stroke) {
      stroke->points.append({50.0 + number % 800 + i, 80.0 + number % 400 + 30 * std::sin(i / 9.0)});
    });
  model.commit();
}

/// Every kind of layer, and ten regions of both styles all over the picture.
void edit(EditorModel& model) {
  for (int number = 0; number < 10; ++number) {
    model.blurStyle = number % 2 ? BlurStyle::mosaic : BlurStyle::gaussian;
    const QPointF corner(40 + number * 90, 30 + (number * 137) % 480);
    if (number % 4 < 2) {
      model.currentBlurRect = QRectF(corner, QSizeF(120, 60));
    } else {
      for (int i = 0; i < 40; ++i)
        model.extendBlurBrush(corner + QPointF(2 * i, 10 * std::sin(i / 5.0)));
    }
    model.commitBlur();
  }
  for (int number = 0; number < 5; ++number)
    drawStroke(model, 150 * number, 100);
  model.setLogo(bench::photo({400, 200}));
  model.textWM.change([](auto& text) { text.text = QStringLiteral("소렐 워터마크\nSorrel"); });
}

/// The same layers with nothing shared and nothing clever: a whole run of a plain filter for each region, and
/// the toolkit's PNG. Returns the seconds. All the runs of the plain gaussian would take minutes, so that one
/// is measured and counted for each region, and the pixels come from the other gaussian, outside of the time.
double savePlainly(const EditorModel& model, const QImage& logo, const QString& path) {
  const QImage base = model.baseImage;
  const double width = base.width();
  const double scale = width / model.displaySize->width();
  const double oneGaussian = bench::plainGaussianSeconds(base, width * 0.014);
  const QImage blurred = platform::gaussianBlur(base, width * 0.014);
  const auto place = [&](const QPointF& point) { return scale * point; };
  int gaussians = 0;
  const double rest = secondsOf([&] {
    platform::DrawingSurface surface(base);
    for (const auto& region : model.blurRegions.get()) {
      const bool isGaussian = region.style == BlurStyle::gaussian;
      gaussians += isGaussian ? 1 : 0;
      const QImage whole = isGaussian ? blurred : bench::plainlyPixellated(base, width * 0.023);
      if (const auto* stroke = std::get_if<sorrel::BlurRegion::Stroke>(&region.kind)) {
        surface.replace(platform::RoundLine{stroke->points, stroke->width, scale}, whole, {0, 0});
      } else {
        const auto& area = std::get<QRectF>(region.kind);
        surface.replace(QRectF(place(area.topLeft()), scale * area.size()), whole, {0, 0});
      }
    }
    for (const auto& stroke : model.strokes.get())
      surface.draw({{platform::RoundLine{stroke.points, stroke.width, scale}, Qt::red}});
    surface.draw(logo, {place(model.logoWM.get()->center), scale * model.logoDisplaySize()});
    surface.draw(platform::TextBlock(model.textWM->text, model.textWM->style(scale, QString())),
                 place(model.textWM->center));
    if (!surface.finish().save(path))
      std::abort();
  });
  return rest + gaussians * oneGaussian;
}

/// The whole process on one core, while it lives.
class OneCore {
 public:
  OneCore() {
    sched_getaffinity(0, sizeof all, &all);
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(sched_getcpu(), &one);
    sched_setaffinity(0, sizeof one, &one);
  }
  ~OneCore() { sched_setaffinity(0, sizeof all, &all); }
  OneCore(const OneCore&) = delete;
  OneCore& operator=(const OneCore&) = delete;

 private:
  cpu_set_t all{};
};

double sliderStepMilliseconds(EditorModel& model, BlurStyle style) {
  const OneCore core;
  std::vector<double> steps;
  for (int step = 0; step < 101; ++step) {
    model.blurIntensity = step / 100.0;
    steps.push_back(1000 * secondsOf([&] {
                      if (model.processed(style).isNull())
                        std::abort();
                    }));
  }
  std::nth_element(steps.begin(), steps.begin() + 50, steps.end());
  return steps[50];
}

/// A process's own peak from before opening to after saving, in multiples of the picture's bytes.
double peakOfThisProcess(const QUrl& file) {
  const auto peak = [] {  // not getrusage: what that says begins with the parent's peak
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
      std::abort();
    const QByteArray text = status.readAll();
    const qsizetype at = text.indexOf("VmHWM:") + 6;
    return 1024.0 * text.mid(at, text.indexOf("kB", at) - at).trimmed().toDouble();
  };
  const double before = peak();
  const auto model = EditorModel::open(file);
  edit(*model);
  if (!model->processed(BlurStyle::gaussian).width() || !model->processed(BlurStyle::mosaic).width() ||
      !model->save())
    std::abort();
  return (peak() - before) / double(model->baseImage->sizeInBytes());
}

double peakOfAnotherProcess(const QUrl& file) {
  QProcess process;
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--peak"), file.toLocalFile()});
  process.waitForFinished(-1);
  return process.readAllStandardOutput().toDouble();
}

void addOpeningFigures(const QUrl& file, const std::string& name, bench::Figures& figures) {
  const std::shared_ptr<EditorModel> model = EditorModel::open(file);
  for (const BlurStyle style : {BlurStyle::gaussian, BlurStyle::mosaic})
    figures.add(bench::Amount{std::string("slider step, ") +
                                  (style == BlurStyle::gaussian ? "gaussian" : "mosaic") + ", one core, " +
                                  name,
                              [model, style] { return sliderStepMilliseconds(*model, style); }, "ms", 4});
  figures.add(bench::Ratio{"opening " + name + ", of its decode",
                           [file] {
                             if (!EditorModel::open(file))
                               std::abort();
                           },
                           [path = file.toLocalFile()] {
                             if (!platform::ImageDecoder::read(path))
                               std::abort();
                           },
                           1.15});
}

/// The file is written over, of course.
void addSavingFigures(const QUrl& file, const std::string& name, bench::Figures& figures) {
  const std::shared_ptr<EditorModel> edited = EditorModel::open(file);
  edit(*edited);
  const auto save = [edited] {
    return secondsOf([&] {
      if (!edited->save())
        std::abort();
    });
  };
  figures.add(bench::MeasuredRatio{"saving " + name + ", of the plain way", save,
                                   [edited, logo = edited->logoWM.get()->image,
                                    plain = file.toLocalFile() + QStringLiteral(".plain.png")] {
                                     return savePlainly(*edited, logo, plain);
                                   },
                                   0.1, 3});
  save();
  const QImage flat = *platform::ImageDecoder::read(file.toLocalFile());
  auto copy = std::make_shared<QImage>(flat.copy());
  figures.add(
      bench::MeasuredRatio{"saving " + name + ", of its encode and 5 copies", save,
                           [flat, copy] {
                             return secondsOf([&] {
                               for (int layer = 0; layer < 5; ++layer)
                                 std::memcpy(copy->bits(), flat.constBits(), size_t(flat.sizeInBytes()));
                               if (!platform::ImageEncoder::encode(flat, platform::ImageFileType::Png))
                                 std::abort();
                             });
                           },
                           1.5});
  figures.add(bench::Amount{"peak memory of open, edit, save, " + name,
                            [file] { return peakOfAnotherProcess(file); }, "x", 5});
}

void addFiguresOf(QSize size, const testing_support::ScratchHome& home, bench::Figures& figures) {
  const QString pixels = QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
  const QImage text = bench::textAndWindows(size);
  addOpeningFigures(written(home, text, pixels), pixels.toStdString(), figures);
  for (const auto& [kind, picture] : {std::pair("text, ", text), std::pair("a photo, ", bench::photo(size))})
    addSavingFigures(written(home, picture, QString::fromLatin1(kind) + pixels), kind + pixels.toStdString(),
                     figures);
}

void addPointFigure(const testing_support::ScratchHome& home, bench::Figures& figures) {
  const QUrl file = written(home, bench::textAndWindows({300, 200}), QStringLiteral("small"));
  const std::shared_ptr<EditorModel> empty = EditorModel::open(file);
  const std::shared_ptr<EditorModel> full = EditorModel::open(file);
  const auto addPoints = [](EditorModel& model) {
    return cpuSecondsOf([&] {
      for (int stroke = 0; stroke < 500; ++stroke) {
        drawStroke(model, stroke, 200);
        model.undoLast();
      }
    });
  };
  figures.add(bench::MeasuredRatio{"a point on 10000 strokes of 200, of one on none",
                                   [full, addPoints] {
                                     while (full->strokes->size() < 10'000)
                                       drawStroke(*full, 7, 200);
                                     return addPoints(*full);
                                   },
                                   [empty, addPoints] { return addPoints(*empty); }, 1.2});
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const testing_support::ScratchHome home;
  const QGuiApplication application(argc, argv);
  if (argc == 3 && std::strcmp(argv[1], "--peak") == 0) {
    std::printf("%f\n", peakOfThisProcess(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[2]))));
    return 0;
  }
  bench::Figures figures(argc, argv);
  for (const QSize size : {QSize(2880, 1800), QSize(5120, 2880)})
    addFiguresOf(size, home, figures);
  addPointFigure(home, figures);
  return figures.run();
}
