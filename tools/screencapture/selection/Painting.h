#pragma once

#include "tools/screencapture/selection/Scene.h"

#include <cstdint>

namespace screencapture {

/// A colour of sRGB, 0xRRGGBB, and how much of what lies below it hides, from 0 to 1.
struct Color {
  std::uint32_t rgb = 0;
  double alpha = 1;
};

/// What lies over all of the frozen screen but the bright part.
inline constexpr Color veil{0x000000, 0.45};

struct Fill {
  Rectangle area;
  Color color;
};

/// The plain rectangles to lay over the part `within` of the frozen screen, one after another, for it to show
/// the scene without its label and hint. All lie within that part.
[[nodiscard]] std::vector<Fill> fillsOf(const Scene& scene, const Rectangle& within, const Metrics& metrics);

}  // namespace screencapture
