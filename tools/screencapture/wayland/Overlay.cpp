#include "tools/screencapture/wayland/Overlay.h"

#include <algorithm>
#include <cmath>

namespace screencapture::wayland {

Overlay::Overlay(const Display& display) {
  for (const auto& output : display.outputs)
    surfaces.push_back(std::make_unique<OutputSurface>(display, *output));
}

void Overlay::show(const FrozenScreen& screen, const std::optional<Color>& veil) {
  shown.fills = [veil](const Rectangle& within) {
    return veil ? std::vector<Fill>{{within, *veil}} : std::vector<Fill>();
  };
  for (std::size_t i = 0; i < surfaces.size(); ++i)
    surfaces[i]->show(screen, i, shown);
}

void Overlay::paint(std::span<const Rectangle> parts, const Layers& layers) {
  shown = layers;
  for (const auto& surface : surfaces)
    surface->change(parts);
}

void Overlay::update() {
  for (const auto& surface : surfaces)
    surface->update();
}

const OutputSurface* Overlay::find(const wl_surface* surface) const {
  const auto found =
      std::ranges::find_if(surfaces, [&](const auto& each) { return each->surface() == surface; });
  return found == surfaces.end() ? nullptr : found->get();
}

Point Overlay::onScreen(const OutputSurface& surface, double x, double y) const {
  x += surface.logical().x;
  y += surface.logical().y;
  std::vector<Rectangle> areas;
  for (const auto& each : surfaces)
    areas.push_back(each->logical());
  const Rectangle& hit = nearest(areas, {static_cast<int>(std::floor(x)), static_cast<int>(std::floor(y))});
  return surfaces[static_cast<std::size_t>(&hit - areas.data())]->onScreen(x, y);
}

bool Overlay::isSeen() const {
  return std::ranges::all_of(surfaces, [](const auto& each) { return each->isSeen(); });
}

bool Overlay::isClosed() const {
  return std::ranges::all_of(surfaces, [](const auto& each) { return each->isClosed(); });
}

}  // namespace screencapture::wayland
