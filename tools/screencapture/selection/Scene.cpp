#include "tools/screencapture/selection/Scene.h"

#include "tools/screencapture/selection/Artwork.h"

#include <algorithm>
#include <cmath>

namespace screencapture {

namespace {

constexpr double largestScale = 4;
constexpr double labelDistance = 14;  // from the pointer, at the scale 1

void append(std::vector<Rectangle>& to, const std::vector<Rectangle>& more) {
  to.insert(to.end(), more.begin(), more.end());
}

}  // namespace

Metrics Metrics::at(double scale) {
  Metrics metrics;
  metrics.scale = std::clamp(scale, 1.0, largestScale);
  metrics.line = metrics.pixels(1);
  return metrics;
}

int Metrics::pixels(double length) const {
  return static_cast<int>(std::lround(length * scale));
}

Scene sceneOf(const Selection& selection, std::span<const Rectangle> monitors, const Metrics& metrics,
              std::optional<Size> taken) {
  Scene scene{selection.mode(), selection.selected(), std::nullopt, std::nullopt};
  if (!scene.bright)
    return scene;
  const auto [width, height] = taken.value_or(Size{scene.bright->width, scene.bright->height});
  const std::string text = std::to_string(width) + " x " + std::to_string(height);
  scene.label =
      Label{text, placeBeside(selection.pointer(), labelSize(text, metrics),
                              nearest(monitors, selection.pointer()), metrics.pixels(labelDistance))};
  return scene;
}

std::vector<Rectangle> difference(const Scene& before, const Scene& after, const Metrics& metrics) {
  std::vector<Rectangle> changed;
  if (before.bright != after.bright || before.mode != after.mode) {
    const int frame = metrics.areaFrame();
    const bool bothAreas = before.mode == Mode::Area && after.mode == Mode::Area;
    if (bothAreas && before.bright && after.bright) {
      append(changed, subtract(*before.bright, *after.bright));
      append(changed, subtract(*after.bright, *before.bright));
      append(changed, subtract(before.bright->grown(frame), *before.bright));
      append(changed, subtract(after.bright->grown(frame), *after.bright));
    } else {
      for (const auto& bright : {before.bright, after.bright}) {
        if (bright)
          changed.push_back(bright->grown(frame));
      }
    }
  }
  if (before.label != after.label) {
    for (const auto& label : {before.label, after.label}) {
      if (label)
        changed.push_back(label->place);
    }
  }
  if (before.hint != after.hint) {
    for (const auto& hint : {before.hint, after.hint}) {
      if (hint)
        changed.push_back(hint->place);
    }
  }
  return changed;
}

}  // namespace screencapture
