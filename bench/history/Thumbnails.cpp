// Thumbnails of pictures as large as a screen: time and memory against the toolkit's reader that is asked for
// a scaled size, two cores against one, and whole processes against libvips' thumbnailer. The processes are
// this program again, with one of the parts below.

#include "app/history/ThumbnailLoader.h"
#include "bench/Figures.h"
#include "bench/imaging/Pictures.h"
#include "platform/imaging/codecs/ImageEncoder.h"
#include "platform/imaging/codecs/Thumbnail.h"
#include "tests/support/ScratchHome.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QImageReader>
#include <QProcess>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <tuple>

namespace {

using platform::ImageFileType;

constexpr int longestSide = 320;

void orAbort(bool done) {
  if (!done)
    std::abort();
}

QImage thumbnail(const QString& path) {
  const auto image = platform::Thumbnail::read(path, longestSide);
  orAbort(image.has_value());
  return *image;
}

QImage thumbnailByToolkit(const QString& path) {
  QImageReader reader(path);
  reader.setScaledSize(reader.size().scaled(longestSide, longestSide, Qt::KeepAspectRatio));
  const QImage image = reader.read();
  orAbort(!image.isNull());
  return image;
}

void save(const QImage& picture, ImageFileType type, const QString& path) {
  const auto encoded = platform::ImageEncoder::encode(picture, type);
  QFile file(path);
  orAbort(encoded && file.open(QIODevice::WriteOnly) && file.write(*encoded) == encoded->size());
}

/// Most memory that this process has held, in KiB.
long peakMemory() {
  QFile status(QStringLiteral("/proc/self/status"));
  orAbort(status.open(QIODevice::ReadOnly));
  const QByteArray text = status.readAll();
  return text.mid(text.indexOf("VmHWM:") + 6, 16).simplified().split(' ').first().toLong();
}

/// What this program does as a process of its own: PART PICTURE [RESULT].
const std::map<std::string, void (*)(const QStringList& arguments)> parts{
    {"--load-nothing", [](const QStringList&) { std::printf("%ld", peakMemory()); }},
    {"--load",
     [](const QStringList& arguments) {
       thumbnail(arguments[2]);
       std::printf("%ld", peakMemory());
     }},
    {"--load-by-toolkit",
     [](const QStringList& arguments) {
       thumbnailByToolkit(arguments[2]);
       std::printf("%ld", peakMemory());
     }},
    {"--make",
     [](const QStringList& arguments) { save(thumbnail(arguments[2]), ImageFileType::Png, arguments[3]); }}};

QByteArray outputOf(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  orAbort(process.waitForFinished() && process.exitStatus() == QProcess::NormalExit &&
          process.exitCode() == 0);
  return process.readAllStandardOutput();
}

double memoryOf(const QString& part, const QString& path) {
  const QString self = QCoreApplication::applicationFilePath();
  return outputOf(self, {part, path}).toDouble() -
         outputOf(self, {QStringLiteral("--load-nothing"), path}).toDouble();
}

double secondsOf(const std::function<void()>& work) {
  QElapsedTimer timer;
  timer.start();
  work();
  return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

/// Asks a new loader for each picture several times over, each time for another size, so that none is shared.
void load(const QStringList& paths, unsigned workers) {
  sorrel::ThumbnailLoader loader(
      [](const QByteArray& path, int maxPixel) { return platform::Thumbnail::read(path, maxPixel); },
      workers);
  QEventLoop loop;
  std::vector<sorrel::ThumbnailLoader::Request> requests;
  qsizetype missing = 0;
  for (int maxPixel = longestSide - 5; maxPixel <= longestSide; ++maxPixel)
    for (const QString& path : paths) {
      ++missing;
      requests.push_back(loader.thumbnail(QUrl::fromLocalFile(path), maxPixel, [&](const QImage& image) {
        orAbort(!image.isNull());
        if (--missing == 0)
          loop.quit();
      }));
    }
  loop.exec();
}

void addFiguresOf(const QString& path, const std::string& what, double time, bench::Figures& figures) {
  figures.add(bench::Ratio{what + ", time of QImageReader", [path] { thumbnail(path); },
                           [path] { thumbnailByToolkit(path); }, time});
  figures.add(bench::MeasuredRatio{
      what + ", memory of QImageReader", [path] { return memoryOf(QStringLiteral("--load"), path); },
      [path] { return memoryOf(QStringLiteral("--load-by-toolkit"), path); }, 1, 3});
  const QString result = path + QStringLiteral(".thumbnail.png");
  figures.add(bench::MeasuredRatio{
      what + ", process, time of vipsthumbnail",
      [=] {
        return secondsOf([&] {
          outputOf(QCoreApplication::applicationFilePath(), {QStringLiteral("--make"), path, result});
        });
      },
      [=] {
        return secondsOf([&] {
          outputOf(
              QStringLiteral("vipsthumbnail"),
              {path, QStringLiteral("--size"), QString::number(longestSide), QStringLiteral("-o"), result});
        });
      },
      1, 21});
}

}  // namespace

int main(int argc, char** argv) {
  if (const auto part = argc > 1 ? parts.find(argv[1]) : parts.end(); part != parts.end()) {
    const QCoreApplication application(argc, argv);
    part->second(application.arguments());
    return 0;
  }
  const testing_support::ScratchHome home;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  bench::Figures figures(argc, argv);
  const QSize size(2880, 1800);
  QStringList paths;
  for (const auto& [what, picture, pngTime] : {std::tuple("text", bench::textAndWindows(size), 0.40),
                                               std::tuple("a photo", bench::photo(size), 0.45)})
    for (const auto& [name, type] :
         {std::pair("PNG", ImageFileType::Png), std::pair("JPEG", ImageFileType::Jpeg)}) {
      paths.append(home.path(QStringLiteral("%1.%2").arg(paths.size()).arg(QLatin1String(name))));
      save(picture, type, paths.last());
      addFiguresOf(paths.last(), std::string(name) + " of " + what, type == ImageFileType::Png ? pngTime : 1,
                   figures);
    }
  figures.add(bench::MeasuredRatio{"loading these, two cores, time of one",
                                   [=] { return secondsOf([&] { load(paths, 2); }); },
                                   [=] { return secondsOf([&] { load(paths, 1); }); }, 1 / 1.8});
  return figures.run();
}
