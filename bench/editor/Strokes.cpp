// What lines drawn by hand cost: whole ones in the file, and one more point on the screen.

#include "app/editor/model/Painting.h"
#include "bench/Figures.h"
#include "bench/imaging/Pictures.h"

#include <QGuiApplication>

#include <cmath>
#include <ctime>
#include <memory>
#include <random>

using namespace sorrel;
using platform::DrawingSurface;

namespace {

const QSizeF display(1000, 625);
const QSize pixels(2880, 1800);
const Placement inFile{.scale = 2.88, .origin = {}, .displaySize = display, .lowerEdge = 1800};

/// A hand's way over the picture, a few points on at a time, that crosses itself over and over.
QList<QPointF> scribble(int count, unsigned seed) {
  std::mt19937 random(seed);
  const auto between = [&](double least, double most) {
    return std::uniform_real_distribution(least, most)(random);
  };
  QPointF at(between(100, 900), between(100, 525));
  double direction = between(0, 6.3);
  QList<QPointF> points;
  for (int i = 0; i < count; ++i) {
    points.append(at);
    const QPointF toMiddle = QPointF(500, 312) - at;
    direction += std::hypot(toMiddle.x(), toMiddle.y()) > 280 ? 0.25 : between(-0.3, 0.3);
    at += 2.0 * QPointF(std::cos(direction), std::sin(direction));
  }
  return points;
}

/// By the clock of a whole line, which is drawn on all cores; of the processor time of a point, which one
/// core adds.
double millisecondsOf(clockid_t clock, const std::function<void()>& work) {
  const auto now = [clock] {
    timespec time{};
    clock_gettime(clock, &time);
    return 1000 * double(time.tv_sec) + 1e-6 * double(time.tv_nsec);
  };
  const double begin = now();
  work();
  return now() - begin;
}

bench::Amount milliseconds(const std::string& name, std::function<void(DrawingSurface&)> paint,
                           double atMost) {
  auto surface = std::make_shared<DrawingSurface>(bench::textAndWindows(pixels));
  surface->draw(bench::photo({2, 2}), {0, 0, 2, 2});  // its pixels are its own from now on
  return {name, [=] { return millisecondsOf(CLOCK_MONOTONIC, [&] { paint(*surface); }); }, "ms", atMost, 7};
}

/// For one point of many: added to the mask and painted.
double millisecondsOfAPoint(int already) {
  platform::LineMask mask(5, {0, 0, 1000, 625});
  DrawingSurface surface(bench::textAndWindows({1000, 625}));
  const QList<QPointF> points = scribble(already + 500, 3);
  for (const QPointF& point : points.first(already))
    mask.append(point);
  QImage picture = surface.finish();
  return millisecondsOf(CLOCK_THREAD_CPUTIME_ID,
                        [&] {
                          for (const QPointF& point : points.sliced(already)) {
                            DrawingSurface part(std::move(picture), mask.append(point));
                            part.draw(mask, Qt::red);
                            picture = part.finish();
                          }
                        }) /
         500;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  bench::Figures figures(argc, argv);
  const QList<PenStroke> one{{.points = scribble(20'000, 1), .colorHex = 0xE5484D, .width = 5}};
  figures.add(milliseconds(
      "a pen stroke of 20000 points, 2880x1800",
      [=](DrawingSurface& surface) { paintStrokes(surface, one, inFile); }, 40));
  QList<PenStroke> many;
  for (unsigned seed = 0; seed < 300; ++seed)
    many.append({.points = scribble(200, seed), .colorHex = 0xE5484D, .width = 5});
  figures.add(milliseconds(
      "300 pen strokes of 200 points, 2880x1800",
      [=](DrawingSurface& surface) { paintStrokes(surface, many, inFile); }, 80));
  const BlurRegion brush{.kind = BlurRegion::Stroke{scribble(20'000, 2), 34}, .style = BlurStyle::gaussian};
  const PlacedPicture blurred{filtered(bench::textAndWindows(pixels), BlurStyle::gaussian, 0.5, 2880), {}};
  figures.add(milliseconds(
      "a blur brush of 20000 points, 2880x1800",
      [=](DrawingSurface& surface) { paintBlurRegion(surface, brush, blurred, inFile); }, 300));
  for (const int already : {10, 20'000})
    figures.add(bench::Amount{"one more point on " + std::to_string(already) + ", 1000x625",
                              [=] { return millisecondsOfAPoint(already); }, "ms", 0.2, 7});
  return figures.run();
}
