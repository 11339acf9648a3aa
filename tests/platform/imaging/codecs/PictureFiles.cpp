#include "tests/platform/imaging/codecs/PictureFiles.h"

#include <QProcess>
#include <QProcessEnvironment>

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <span>

namespace testing_support {

QImage sample(QSize size, SampleKind kind, unsigned seed) {
  std::mt19937 random(seed);
  QImage image(size, QImage::Format_RGBA8888);
  const auto level = [](int number) { return static_cast<uchar>(std::clamp(number, 0, 255)); };
  for (int y = 0; y < size.height(); ++y) {
    uchar* pixel = image.scanLine(y);
    for (int x = 0; x < size.width(); ++x, pixel += 4) {
      const int noise = static_cast<int>(random() % 24);
      const bool striped = (x / 5 + y / 7) % 3 == 0;
      pixel[0] = level(255 * x / size.width() + noise);
      pixel[1] = level(striped ? 230 : 255 * y / size.height());
      pixel[2] = level(200 - 160 * x / size.width() - noise);
      pixel[3] = kind == SampleKind::Opaque ? 255 : level(300 * x / size.width() - 20);
    }
  }
  return image.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
}

QByteArray convert(const QStringList& arguments, const QByteArray& input) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("MAGICK_THREAD_LIMIT"), QStringLiteral("1"));
  process.setProcessEnvironment(environment);
  process.start(QStringLiteral("convert"), arguments);
  process.write(input);
  process.closeWriteChannel();
  EXPECT_TRUE(process.waitForFinished()) << process.errorString().toStdString();
  EXPECT_EQ(process.exitCode(), 0) << arguments.join(u' ').toStdString() << '\n'
                                   << process.readAllStandardError().toStdString();
  return process.readAllStandardOutput();
}

QByteArray makeFile(const QImage& picture, const QStringList& options, const QString& format) {
  const QImage straight = picture.convertToFormat(QImage::Format_RGBA8888);
  QStringList arguments{QStringLiteral("-size"),
                        QStringLiteral("%1x%2").arg(picture.width()).arg(picture.height()),
                        QStringLiteral("-depth"), QStringLiteral("8"), QStringLiteral("rgba:-")};
  if (std::ranges::all_of(std::span(straight.constBits(), static_cast<size_t>(straight.sizeInBytes())),
                          [at = 0](uchar byte) mutable { return at++ % 4 != 3 || byte == 255; }))
    arguments << QStringLiteral("-alpha") << QStringLiteral("off");
  arguments << options << format + QStringLiteral(":-");
  return convert(arguments,
                 QByteArray(reinterpret_cast<const char*>(straight.constBits()), straight.sizeInBytes()));
}

QImage readByOther(const QByteArray& file, const QString& format, const QStringList& options) {
  const QStringList arguments =
      QStringList{format + QStringLiteral(":-[0]")} + options +
      QStringList{QStringLiteral("-colorspace"),    QStringLiteral("sRGB"),   QStringLiteral("-type"),
                  QStringLiteral("TrueColorAlpha"), QStringLiteral("-depth"), QStringLiteral("8"),
                  QStringLiteral("pam:-")};
  const QByteArray pam = convert(arguments, file);
  const auto number = [&](const char* name) {
    return pam.mid(pam.indexOf(name) + qstrlen(name)).split('\n')[0].toInt();
  };
  const int width = number("WIDTH "), height = number("HEIGHT ");
  const QByteArray pixels = pam.mid(pam.indexOf("ENDHDR\n") + 7);
  if (width <= 0 || height <= 0 || pixels.size() != 4LL * width * height)
    return {};
  return QImage(reinterpret_cast<const uchar*>(pixels.constData()), width, height, QImage::Format_RGBA8888)
      .convertToFormat(QImage::Format_RGBA8888_Premultiplied);
}

namespace {

template <typename Visit>
bool forEachChannel(const QImage& left, const QImage& right, Visit visit) {
  if (left.size() != right.size() || left.isNull() || left.format() != right.format())
    return false;
  for (int y = 0; y < left.height(); ++y)
    for (int i = 0; i < 4 * left.width(); ++i)
      visit(left.constScanLine(y)[i] - right.constScanLine(y)[i]);
  return true;
}

}  // namespace

int largestDifference(const QImage& left, const QImage& right) {
  int largest = 0;
  const bool comparable =
      forEachChannel(left, right, [&](int difference) { largest = std::max(largest, std::abs(difference)); });
  return comparable ? largest : 256;
}

double meanDifference(const QImage& left, const QImage& right) {
  double sum = 0;
  const bool comparable =
      forEachChannel(left, right, [&](int difference) { sum += difference * difference; });
  return comparable ? std::sqrt(sum / (4.0 * left.width() * left.height())) : 256;
}

}  // namespace testing_support
