#include "tools/screencapture/selection/Painting.h"

namespace screencapture {

namespace {

constexpr Color lightLine{0xffffff, 1};
constexpr Color darkLine{0x101210, 0.75};
constexpr Color windowTint{0x6fae4e, 0.16};
constexpr Color windowLine{0x6fae4e, 1};
constexpr double windowLineWidth = 3;  // at the scale 1

class Fills {
 public:
  explicit Fills(const Rectangle& part) : within(part) {}

  void add(const Rectangle& area, const Color& color) {
    const Rectangle part = area.intersected(within);
    if (!part.isEmpty())
      all.push_back({part, color});
  }
  /// What lies between the edges of two rectangles, one inside the other.
  void addFrame(const Rectangle& outer, const Rectangle& inner, const Color& color) {
    for (const Rectangle& side : subtract(outer, inner))
      add(side, color);
  }

  std::vector<Fill> all;

 private:
  const Rectangle within;
};

}  // namespace

std::vector<Fill> fillsOf(const Scene& scene, const Rectangle& within, const Metrics& metrics) {
  Fills fills(within);
  fills.addFrame(within, scene.bright.value_or(Rectangle{}), veil);
  if (!scene.bright)
    return std::move(fills.all);
  const Rectangle& bright = *scene.bright;
  if (scene.mode == Mode::Area) {
    const Rectangle light = bright.grown(metrics.line);
    fills.addFrame(light.grown(metrics.line), light, darkLine);
    fills.addFrame(light, bright, lightLine);
  } else {
    const Rectangle inside = bright.grown(-metrics.pixels(windowLineWidth));
    fills.add(bright, windowTint);
    fills.addFrame(bright, inside, windowLine);
    fills.addFrame(inside, inside.grown(-metrics.line), lightLine);
  }
  return std::move(fills.all);
}

}  // namespace screencapture
