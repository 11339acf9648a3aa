#pragma once

#include "tools/screencapture/Geometry.h"
#include "tools/screencapture/Selection.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace screencapture {

/// The overlay's measures in physical pixels, all from the one scale of the desktop.
struct Metrics {
  double scale = 1;
  int line = 1;  // the thinnest line

  /// `resources` is the text of the root window's RESOURCE_MANAGER property; its Xft.dpi, 96 being a scale of
  /// 1, is the only place where desktops agree to keep the user's choice. Between 1 and 4; 1 where it says
  /// nothing of use.
  [[nodiscard]] static Metrics fromResources(std::string_view resources);
  /// A length given for the scale 1, in whole pixels.
  [[nodiscard]] int pixels(double length) const;

  /// Two lines around a bright area, one light and one dark, lie outside of it.
  [[nodiscard]] int areaFrame() const { return 2 * line; }
};

struct Label {
  std::string text;
  Rectangle place;
  bool operator==(const Label&) const = default;
};

/// All that the overlay shows above the veiled screen.
struct Scene {
  Mode mode = Mode::Area;
  std::optional<Rectangle> bright;
  std::optional<Label> label;
  bool operator==(const Scene&) const = default;
};

/// What to show for a selection: a dragged area has its size beside the pointer, a window has none.
/// `monitors` lie on the screen; `labelSize` tells how large a text will be drawn.
[[nodiscard]] Scene sceneOf(const Selection& selection, std::span<const Rectangle> monitors,
                            const Metrics& metrics);

/// Rectangles, possibly overlapping, outside of which both scenes look the same. Larger than necessary by
/// little, so that a small gesture paints little.
[[nodiscard]] std::vector<Rectangle> difference(const Scene& before, const Scene& after,
                                                const Metrics& metrics);

}  // namespace screencapture
