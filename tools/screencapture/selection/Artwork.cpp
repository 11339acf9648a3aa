#include "tools/screencapture/selection/Artwork.h"

#include "tools/screencapture/selection/Painter.h"

namespace screencapture {

namespace {

// Lengths at the scale 1.
constexpr double boxPadding = 10;
constexpr double boxMargin = 4;  // above and below the text's own height

}  // namespace

Size boxSize(Size text, const Metrics& metrics) {
  return {text.width + 2 * metrics.pixels(boxPadding), text.height + 2 * metrics.pixels(boxMargin)};
}

Point boxInset(const Metrics& metrics) {
  return {metrics.pixels(boxPadding), metrics.pixels(boxMargin)};
}

Artwork drawBox(const Coverage& text, const Metrics& metrics, int opacity) {
  Painter painter(boxSize(text.size, metrics));
  const Size size = painter.artwork.size;
  painter.fillBox({0, 0, size.width, size.height}, metrics);
  painter.fill(text, boxInset(metrics), white);
  if (opacity < 255)
    painter.fade(opacity);
  return std::move(painter.artwork);
}

Size labelSize(std::string_view text, const Metrics& metrics) {
  return boxSize(lineOf(text, Text::Digits, metrics.scale).size, metrics);
}

Artwork drawLabel(std::string_view text, const Metrics& metrics) {
  return drawBox(lineOf(text, Text::Digits, metrics.scale), metrics);
}

Artwork drawCrosshair(const Metrics& metrics) {
  const int line = metrics.line;
  const int reach = metrics.pixels(12), gap = metrics.pixels(3);
  const int side = 2 * (reach + line) + line;
  Painter painter({side, side});
  const double middle = side / 2.0;
  painter.artwork.hotSpot = {side / 2, side / 2};
  const double half = line / 2.0, length = (reach - gap) / 2.0, distance = half + gap + length;
  const RoundedBox arms[] = {{{middle - distance, middle}, {length, half}, 0},
                             {{middle + distance, middle}, {length, half}, 0},
                             {{middle, middle - distance}, {half, length}, 0},
                             {{middle, middle + distance}, {half, length}, 0}};
  for (const RoundedBox& arm : arms)
    painter.fill(ink, grown(arm, line));
  for (const RoundedBox& arm : arms)
    painter.fill(white, arm);
  return std::move(painter.artwork);
}

Artwork drawCamera(const Metrics& metrics) {
  const double scale = metrics.scale;
  Painter painter({metrics.pixels(28), metrics.pixels(24)});
  painter.artwork.hotSpot = {painter.artwork.size.width / 2, metrics.pixels(13)};
  const auto at = [scale](double x, double y) { return Vector{x * scale, y * scale}; };
  const RoundedBox body{at(14, 13), at(11, 7), 2.5 * scale};
  const RoundedBox finder{at(14, 6), at(4, 3), 1.5 * scale};
  const double edge = scale;
  painter.fill(ink, grown(body, edge));
  painter.fill(ink, grown(finder, edge));
  painter.fill(white, body);
  painter.fill(white, finder);
  painter.fill(ink, Circle{at(14, 13), 4.6 * scale});
  painter.fill(white, Circle{at(14, 13), 2.4 * scale});
  return std::move(painter.artwork);
}

}  // namespace screencapture
