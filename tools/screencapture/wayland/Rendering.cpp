#include "tools/screencapture/wayland/Rendering.h"

#include <algorithm>
#include <cmath>

namespace screencapture::wayland {

namespace {

/// Where a row and a rectangle meet; empty where they don't.
Rectangle met(const Rectangle& area, int y, int left, int right) {
  return area.intersected({left, y, right - left, 1});
}

}  // namespace

void blend(std::uint32_t* row, int count, const Color& color) {
  if (color.alpha >= 1) {
    std::fill_n(row, count, color.rgb);
    return;
  }
  constexpr int whole = 256;
  const auto kept = static_cast<std::uint16_t>(std::lround((1 - color.alpha) * whole));
  std::uint16_t added[4];
  for (int i = 0; i < 4; ++i)
    added[i] = static_cast<std::uint16_t>((color.rgb >> 8 * i & 0xff) * static_cast<unsigned>(whole - kept));
  auto* channels = reinterpret_cast<std::uint8_t*>(row);
  for (int i = 0; i < count; ++i, channels += 4)
    for (int channel = 0; channel < 4; ++channel)
      channels[channel] = static_cast<std::uint8_t>((channels[channel] * kept + added[channel]) / whole);
}

void blend(std::uint32_t* row, int count, const std::uint32_t* artwork) {
  for (int i = 0; i < count; ++i) {
    const std::uint32_t over = artwork[i], kept = 255 - (over >> 24);
    std::uint32_t mixed = 0;
    for (int shift = 0; shift < 24; shift += 8)
      mixed |= std::min((over >> shift & 0xff) + ((row[i] >> shift & 0xff) * kept + 127) / 255, 255U)
               << shift;
    row[i] = mixed;
  }
}

void blendRow(std::uint32_t* row, int y, int left, int right, const std::vector<Fill>& fills,
              const std::vector<Layers::Piece>& pieces) {
  for (const Fill& fill : fills) {
    const Rectangle part = met(fill.area, y, left, right);
    if (!part.isEmpty())
      blend(row + (part.x - left), part.width, fill.color);
  }
  for (const Layers::Piece& piece : pieces) {
    const Rectangle part = met(piece.place, y, left, right);
    if (part.isEmpty())
      continue;
    const int offset = (y - piece.place.y) * piece.artwork.size.width + part.x - piece.place.x;
    blend(row + (part.x - left), part.width, &piece.artwork.pixels[static_cast<std::size_t>(offset)]);
  }
}

}  // namespace screencapture::wayland
