#pragma once

#include "tools/screencapture/Geometry.h"
#include "tools/screencapture/Scene.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace screencapture {

/// A small picture with transparency: 0xAARRGGBB, the colours multiplied by alpha, rows without gaps.
struct Artwork {
  Size size;
  std::vector<std::uint32_t> pixels;
  Point hotSpot;  // of a cursor: the pixel that it points at
};

/// Beside the pointer during a drag: the area's size, in digits drawn from strokes so that no font is needed.
/// `text` may hold digits, spaces and "x" for the multiplication sign.
[[nodiscard]] Size labelSize(std::string_view text, const Metrics& metrics);
[[nodiscard]] Artwork drawLabel(std::string_view text, const Metrics& metrics);

/// Thin cross with an open centre, so that the pixel under it is seen.
[[nodiscard]] Artwork drawCrosshair(const Metrics& metrics);
/// A small camera, for picking a window.
[[nodiscard]] Artwork drawCamera(const Metrics& metrics);

}  // namespace screencapture
