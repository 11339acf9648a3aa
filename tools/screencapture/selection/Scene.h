#pragma once

#include "tools/screencapture/selection/Geometry.h"
#include "tools/screencapture/selection/Selection.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace screencapture {

/// The overlay's measures in physical pixels, all from the one scale of the desktop.
struct Metrics {
  double scale = 1;
  int line = 1;  // the thinnest line

  /// Scales between 1 and 4 are shown as they are, others as the nearest of these.
  [[nodiscard]] static Metrics at(double scale);
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

/// What the keys do, shown for the first moments.
struct ShownHint {
  Rectangle place;
  int opacity = 255;
  bool operator==(const ShownHint&) const = default;
};

/// All that the overlay shows above the veiled screen.
struct Scene {
  Mode mode = Mode::Area;
  std::optional<Rectangle> bright;
  std::optional<Label> label;
  std::optional<ShownHint> hint;
  bool operator==(const Scene&) const = default;
};

/// What to show for a selection: what it would take, bright, and the size of that beside the pointer. The
/// hint is left to the caller. `monitors`, of which there are some, lie on the screen. `taken` is the size of
/// the picture, if that isn't the selected part's.
[[nodiscard]] Scene sceneOf(const Selection& selection, std::span<const Rectangle> monitors,
                            const Metrics& metrics, std::optional<Size> taken = {});

/// Rectangles, possibly overlapping, outside of which both scenes look the same. Larger than necessary by
/// little, so that a small gesture paints little.
[[nodiscard]] std::vector<Rectangle> difference(const Scene& before, const Scene& after,
                                                const Metrics& metrics);

}  // namespace screencapture
