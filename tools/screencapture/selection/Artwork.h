#pragma once

#include "tools/screencapture/selection/Geometry.h"
#include "tools/screencapture/selection/Scene.h"
#include "tools/screencapture/selection/TextMasks.h"

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

/// A text in white on a dark box with round corners: how large the box is around a text of that size, and the
/// whole. `opacity` goes up to 255.
[[nodiscard]] Size boxSize(Size text, const Metrics& metrics);
/// Where in the box the text begins.
[[nodiscard]] Point boxInset(const Metrics& metrics);
[[nodiscard]] Artwork drawBox(const Coverage& text, const Metrics& metrics, int opacity = 255);

/// Beside the pointer: the size of what would be taken. `text` may hold digits, spaces and "x" for the
/// multiplication sign.
[[nodiscard]] Size labelSize(std::string_view text, const Metrics& metrics);
[[nodiscard]] Artwork drawLabel(std::string_view text, const Metrics& metrics);

/// Thin cross with an open centre, so that the pixel under it is seen.
[[nodiscard]] Artwork drawCrosshair(const Metrics& metrics);
/// A small camera, for picking a window.
[[nodiscard]] Artwork drawCamera(const Metrics& metrics);

}  // namespace screencapture
