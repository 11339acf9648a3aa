// The filters of the editor's blur layer, against copying the picture, and the gaussian against the way that
// needs no idea: convolving each row and each column with all weights up to 5 sigma.

#include "bench/Figures.h"
#include "bench/imaging/PlainFilters.h"
#include "platform/imaging/filters/GaussianBlur.h"
#include "platform/imaging/filters/Pixellate.h"

#include <QImage>

#include <algorithm>
#include <cstring>
#include <ctime>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

using platform::Cores;

namespace {

/// Flat windows with text-like noise in them.
QImage screenshotLike(int width, int height) {
  std::mt19937 random(1);
  QImage picture(width, height, QImage::Format_RGBA8888_Premultiplied);
  picture.fill(qRgb(60, 90, 140));
  for (int y = 0; y < height; ++y) {
    uchar* line = picture.scanLine(y);
    for (int x = 0; x < width; ++x)
      for (int channel = 0; channel < 3; ++channel)
        if (x / 300 % 2 == y / 200 % 2)
          line[4 * x + channel] = y / 12 % 2 && random() % 4 == 0 ? 20 : 245;
  }
  return picture;
}

double medianSecondsOf(const std::function<void()>& work) {
  std::vector<double> seconds(15);
  for (double& one : seconds)
    one = bench::secondsOf(work);
  std::nth_element(seconds.begin(), seconds.begin() + 7, seconds.end());
  return seconds[7];
}

void addFiguresOf(const QImage& picture, bench::Figures& figures) {
  const double width = picture.width();
  const std::string size = std::to_string(picture.width()) + "x" + std::to_string(picture.height());
  auto copy = std::make_shared<QImage>(picture.copy());
  const auto copyAll = [picture, copy] {
    std::memcpy(copy->bits(), picture.constBits(), static_cast<size_t>(picture.sizeInBytes()));
  };
  for (const Cores cores : {Cores::One, Cores::All}) {
    const std::string on = size + (cores == Cores::One ? ", one core" : ", all cores");
    for (const double part : {0.014, 0.024}) {
      const std::string name = "gaussian " + std::to_string(part).substr(0, 5) + " of " + on;
      const auto blur = [picture, sigma = part * width, cores] {
        if (platform::gaussianBlur(picture, sigma, {}, {cores}).isNull())
          std::abort();
      };
      figures.add(bench::Ratio{name + ", of memcpy", blur, copyAll, 8});
      figures.add(bench::MeasuredRatio{
          name + ", of plain", [blur] { return medianSecondsOf(blur); },
          [picture, sigma = part * width] { return bench::plainGaussianSeconds(picture, sigma); }, 0.01, 3});
    }
    const auto pixellate = [picture, cellSize = 0.023 * width, cores] {
      if (platform::pixellate(picture, cellSize, {}, {cores}).isNull())
        std::abort();
    };
    figures.add(bench::Ratio{"pixellate " + on + ", of memcpy", pixellate, copyAll, 4});
  }
}

/// The slowest place of the slider that sets how strong a filter is, from 0 to 1, in milliseconds of the
/// processor's time.
double slowestStep(const std::function<void(double)>& filter) {
  constexpr int repetitions = 20;
  std::clock_t slowest = 0;
  for (int tenth = 0; tenth <= 10; ++tenth) {
    const std::clock_t begin = std::clock();
    for (int repetition = 0; repetition < repetitions; ++repetition)
      filter(tenth / 10.0);
    slowest = std::max(slowest, std::clock() - begin);
  }
  return static_cast<double>(slowest) * 1'000 / CLOCKS_PER_SEC / repetitions;
}

}  // namespace

int main(int argc, char** argv) {
  bench::Figures figures(argc, argv);
  for (const QSize& size : {QSize(2880, 1800), QSize(5120, 2880)})
    addFiguresOf(screenshotLike(size.width(), size.height()), figures);
  const QImage shown = screenshotLike(1000, 625);
  figures.add(bench::Amount{"gaussian slider's slowest step, 1000x625, one core",
                            [shown] {
                              return slowestStep([&](double place) {
                                (void)platform::gaussianBlur(shown, 1000 * (place * 0.02 + 0.004), {},
                                                             {Cores::One});
                              });
                            },
                            "ms", 4});
  figures.add(bench::Amount{"pixellate slider's slowest step, 1000x625, one core",
                            [shown] {
                              return slowestStep([&](double place) {
                                (void)platform::pixellate(shown, 1000 * (place * 0.03 + 0.008), {},
                                                          {Cores::One});
                              });
                            },
                            "ms", 4});
  return figures.run();
}
