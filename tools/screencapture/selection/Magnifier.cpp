#include "tools/screencapture/selection/Magnifier.h"

#include "tools/screencapture/selection/Painter.h"

#include <algorithm>
#include <array>

namespace screencapture {

namespace {

constexpr int across = 15;  // pixels; odd, so that there is one in the middle
constexpr int middle = across / 2;
constexpr std::size_t middleIndex = middle * across + middle;

// Lengths at the scale 1.
constexpr double cellSide = 9;
constexpr double ringWidth = 2;
constexpr double distanceFromPointer = 18;
constexpr double valueDistance = 8;  // of the value from the lens
constexpr double sampleSide = 12, sampleRadius = 3, sampleDistance = 7;

constexpr Paint darkRing{0.06, 0.07, 0.06, 0.75};
constexpr Paint sampleEdge{1, 1, 1, 0.55};
constexpr std::uint32_t beyondTheScreen = 0x232523;
constexpr int gridStrength = 20;  // percent

/// How bright a color looks, of 255, by the weights of ITU-R BT.709.
int brightness(std::uint32_t rgb) {
  return static_cast<int>((2126 * (rgb >> 16 & 0xff) + 7152 * (rgb >> 8 & 0xff) + 722 * (rgb & 0xff)) /
                          10000);
}

/// The grid's line beside a pixel: a little darker than a bright one, a little brighter than a dark one.
std::uint32_t gridColor(std::uint32_t rgb) {
  const std::uint32_t towards = brightness(rgb) < 128 ? 0xff : 0;
  std::uint32_t mixed = 0;
  for (int shift = 0; shift < 24; shift += 8)
    mixed |= ((rgb >> shift & 0xff) * (100 - gridStrength) + towards * gridStrength) / 100 << shift;
  return mixed;
}

}  // namespace

std::string hexOf(std::uint32_t rgb) {
  std::string text = "#";
  for (int shift = 20; shift >= 0; shift -= 4)
    text += "0123456789ABCDEF"[rgb >> shift & 0xf];
  return text;
}

Magnifier::Magnifier(const Metrics& used)
    : metrics(used), cell(metrics.pixels(cellSide)), rim(2 * metrics.line + metrics.pixels(ringWidth)) {
  const Size text = lineOf(hexOf(0), Text::HexDigits, metrics.scale).size;
  const Size box = boxSize(
      {metrics.pixels(sampleSide) + metrics.pixels(sampleDistance) + text.width, text.height}, metrics);
  const int side = across * cell - metrics.line;
  const int width = std::max(side + 2 * rim, box.width);
  lens = {(width - side) / 2, rim, side, side};
  const Circle circle{{lens.x + side / 2.0, lens.y + side / 2.0}, side / 2.0};
  const auto ring = [&](int beyond) { return Circle{circle.center, circle.radius + beyond}; };

  value = {(width - box.width) / 2, lens.bottom() + rim + metrics.pixels(valueDistance), box.width,
           box.height};

  Painter painter({width, value.bottom()});
  painter.fill(darkRing, ring(rim));
  painter.fill(white, ring(rim - metrics.line));
  painter.fill(ink, ring(metrics.line));
  painter.fillBox(value, metrics);
  ground = std::move(painter.artwork);

  Painter mask({width, lens.bottom()});
  mask.fill(white, circle);
  inside.size = {side, side};
  for (int y = lens.y; y < lens.bottom(); ++y)
    for (int x = lens.x; x < lens.right(); ++x)
      inside.values.push_back(
          static_cast<std::uint8_t>(mask.artwork.pixels[mask.artwork.size.indexOf({x, y})] >> 24));
}

Rectangle Magnifier::sourceAround(Point pixel) {
  return {pixel.x - middle, pixel.y - middle, across, across};
}

Rectangle Magnifier::placeFor(Point pixel, const Rectangle& monitor) const {
  return placeBeside(pixel, ground.size, monitor, metrics.pixels(distanceFromPointer));
}

Artwork Magnifier::draw(std::span<const std::uint32_t> pixels) const {
  Painter painter(ground.size);
  painter.artwork = ground;
  const std::uint32_t picked = pixels[middleIndex] & 0xffffff;
  drawPixels(painter, pixels);
  drawMark(painter, picked);
  drawValue(painter, picked);
  return std::move(painter.artwork);
}

void Magnifier::drawPixels(Painter& painter, std::span<const std::uint32_t> pixels) const {
  std::array<std::uint32_t, Size{across, across}.count()> squares{}, lines{};
  for (std::size_t i = 0; i < squares.size(); ++i) {
    squares[i] = pixels[i] == 0 ? beyondTheScreen : pixels[i] & 0xffffff;
    lines[i] = pixels[i] == 0 ? beyondTheScreen : gridColor(squares[i]);
  }
  const auto isLine = [this](int at) { return at % cell >= cell - metrics.line; };
  const std::uint8_t* coverage = inside.values.data();
  for (int y = 0; y < lens.height; ++y) {
    for (int x = 0; x < lens.width; ++x, ++coverage) {
      if (*coverage == 0)
        continue;
      const auto index = Size{across, across}.indexOf({x / cell, y / cell});
      const std::uint32_t rgb = isLine(x) || isLine(y) ? lines[index] : squares[index];
      const Point at{lens.x + x, lens.y + y};
      if (*coverage == 255)
        painter.set(at, rgb);
      else
        painter.blend(at, Paint::of(rgb), *coverage / 255.0);
    }
  }
}

void Magnifier::drawMark(Painter& painter, std::uint32_t rgb) const {
  const int side = cell - metrics.line;
  const Rectangle square{lens.x + middle * cell, lens.y + middle * cell, side, side};
  painter.fill(square.grown(2 * metrics.line), ink);
  painter.fill(square.grown(metrics.line), white);
  painter.fill(square, Paint::of(rgb));
}

void Magnifier::drawValue(Painter& painter, std::uint32_t rgb) const {
  const Point inset = boxInset(metrics);
  const int side = metrics.pixels(sampleSide);
  const Rectangle sample{value.x + inset.x, value.y + (value.height - side) / 2, side, side};
  const double half = side / 2.0;
  const RoundedBox shape{{sample.x + half, sample.y + half}, {half, half}, sampleRadius * metrics.scale};
  painter.fill(sample, sampleEdge, shape);
  painter.fill(sample, Paint::of(rgb), grown(shape, -metrics.line));
  painter.fill(lineOf(hexOf(rgb), Text::HexDigits, metrics.scale),
               {sample.right() + metrics.pixels(sampleDistance), value.y + inset.y}, white);
}

}  // namespace screencapture
