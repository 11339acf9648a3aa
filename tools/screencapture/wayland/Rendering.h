#pragma once

#include "tools/screencapture/selection/Canvas.h"

#include <cstdint>

namespace screencapture::wayland {

/// Lays colour over pixels in a row, 0xXXRRGGBB.
void blend(std::uint32_t* row, int count, const Color& color);

/// Lays a row of artwork, colours multiplied by alpha, over pixels.
void blend(std::uint32_t* row, int count, const std::uint32_t* artwork);

/// Lays what lies over the screen onto a row of it: `row` are the pixels from `left` up to `right`. The fills
/// are those of a part of the screen that holds these.
void blendRow(std::uint32_t* row, int y, int left, int right, const std::vector<Fill>& fills,
              const std::vector<Layers::Piece>& pieces);

}  // namespace screencapture::wayland
