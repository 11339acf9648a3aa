#include "tools/screencapture/wayland/Layout.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace screencapture::wayland {

namespace {

// Scales are multiples of this; what a whole number of logical pixels makes of them is only nearly so.
constexpr double scaleStep = 1.0 / 120;
constexpr double nearlyEqual = 0.02;
constexpr int touching = 1;  // logical pixels

double scaleOf(const OutputShape& output) {
  return static_cast<double>(output.pixels.width) / output.logical.width;
}

/// One axis of an output: its logical beginning and end, and its length on the screen.
struct Span {
  int begin;
  int end;
  int length;
};

/// Where the spans lie on the screen, by the largest scale, and beside one another without gaps.
std::vector<int> place(const std::vector<Span>& spans, double scale) {
  int least = spans.front().begin;
  for (const Span& each : spans)
    least = std::min(least, each.begin);
  std::vector<std::size_t> order(spans.size());
  for (std::size_t i = 0; i < order.size(); ++i)
    order[i] = i;
  std::ranges::sort(order, {}, [&](std::size_t i) { return spans[i].begin; });
  std::vector<int> places(spans.size());
  for (std::size_t at = 0; at < order.size(); ++at) {
    const Span& span = spans[order[at]];
    int begin = static_cast<int>(std::lround((span.begin - least) * scale));
    for (std::size_t before = 0; before < at; ++before) {
      const Span& other = spans[order[before]];
      if (std::abs(other.end - span.begin) <= touching)
        begin = places[order[before]] + other.length;
      else if (std::abs(other.begin - span.begin) <= touching)
        begin = places[order[before]];
    }
    places[order[at]] = begin;
  }
  return places;
}

}  // namespace

Layout Layout::of(std::span<const OutputShape> outputs) {
  Layout layout;
  for (const OutputShape& each : outputs)
    layout.scale = std::max(layout.scale, std::round(scaleOf(each) / scaleStep) * scaleStep);
  std::vector<Span> across, down;
  for (const OutputShape& each : outputs) {
    const Rectangle& logical = each.logical;
    const bool isLargest = scaleOf(each) > layout.scale * (1 - nearlyEqual);
    const auto length = [&](int own, int logicalLength) {
      return isLargest ? own : static_cast<int>(std::lround(logicalLength * layout.scale));
    };
    across.push_back({logical.x, logical.right(), length(each.pixels.width, logical.width)});
    down.push_back({logical.y, logical.bottom(), length(each.pixels.height, logical.height)});
  }
  const std::vector<int> left = place(across, layout.scale), top = place(down, layout.scale);
  for (std::size_t i = 0; i < outputs.size(); ++i) {
    const Rectangle& placed =
        layout.places.emplace_back(Rectangle{left[i], top[i], across[i].length, down[i].length});
    layout.screen = {std::max(layout.screen.width, placed.right()),
                     std::max(layout.screen.height, placed.bottom())};
  }
  return layout;
}

Rectangle onScreen(const Rectangle& part, std::span<const Rectangle> logical, const Layout& layout) {
  const auto area = [](const Rectangle& shown) { return std::int64_t{shown.width} * shown.height; };
  const auto most = std::ranges::max_element(
      logical, {}, [&](const Rectangle& output) { return area(part.intersected(output)); });
  if (part.intersected(*most).isEmpty())
    return {};
  const Rectangle& place = layout.places[static_cast<std::size_t>(most - logical.begin())];
  const auto scaled = [](int at, int begin, int length, int placed, int placedLength) {
    return placed + static_cast<int>(std::lround(static_cast<double>(at - begin) * placedLength / length));
  };
  const auto across = [&](int x) { return scaled(x, most->x, most->width, place.x, place.width); };
  const auto down = [&](int y) { return scaled(y, most->y, most->height, place.y, place.height); };
  const Rectangle whole{across(part.x), down(part.y), across(part.right()) - across(part.x),
                        down(part.bottom()) - down(part.y)};
  return whole.intersected({0, 0, layout.screen.width, layout.screen.height});
}

Rectangle ownPixels(const Rectangle& part, const Rectangle& place, Size pixels) {
  const auto own = [](int at, int length, int ownLength, double (*rounded)(double)) {
    return static_cast<int>(rounded(static_cast<double>(at) * ownLength / length));
  };
  const auto down = [](double value) { return std::floor(value); };
  const auto up = [](double value) { return std::ceil(value); };
  const int left = own(part.x - place.x, place.width, pixels.width, down);
  const int top = own(part.y - place.y, place.height, pixels.height, down);
  return {left, top, own(part.right() - place.x, place.width, pixels.width, up) - left,
          own(part.bottom() - place.y, place.height, pixels.height, up) - top};
}

}  // namespace screencapture::wayland
