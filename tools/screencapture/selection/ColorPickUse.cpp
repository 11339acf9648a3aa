#include "tools/screencapture/selection/ColorPickUse.h"

namespace screencapture {

ColorPickUse::ColorPickUse(Canvas& shownOn, Setting begun)
    : Use(shownOn, std::move(begun)), pick(setting.monitors, setting.pointer), magnifier(setting.metrics) {
  canvas.setCursor(drawCrosshair(setting.metrics));
}

bool ColorPickUse::draw() {
  const Point pixel = pick.pixel();
  if (pixel == shownPixel)
    return false;
  const auto around = canvas.pixels(Magnifier::sourceAround(pixel));
  if (!around)
    return false;
  shownPixel = pixel;
  const Rectangle before = shown.place;
  shown = {magnifier.draw(*around), magnifier.placeFor(pixel, pick.monitor())};
  const Rectangle changed[] = {before, shown.place};
  canvas.paint(changed, layers());
  return true;
}

void ColorPickUse::repaint(const Rectangle& part) {
  canvas.paint({&part, 1}, layers());
}

Layers ColorPickUse::layers() const {
  return {[](const Rectangle&) { return std::vector<Fill>(); }, {shown}};
}

}  // namespace screencapture
