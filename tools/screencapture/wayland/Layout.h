#pragma once

#include "tools/screencapture/selection/Geometry.h"

#include <span>
#include <vector>

namespace screencapture::wayland {

/// An output as the compositor tells of it.
struct OutputShape {
  Rectangle logical;  // where it lies for the compositor, whose unit is the same on all outputs
  Size pixels;        // its own, upright
};

/// The outputs put together to one screen of physical pixels.
struct Layout {
  double scale = 1;  // the largest of an output
  Size screen;
  /// Of each output. It has as many pixels as the output itself, unless that has a smaller scale than
  /// another: then it is as large as it would be at the largest.
  std::vector<Rectangle> places;

  /// `outputs`, of which there are some, have a size. Those that touch one another still do on the screen,
  /// although a length in the compositor's unit is seldom a whole number of pixels.
  [[nodiscard]] static Layout of(std::span<const OutputShape> outputs);
};

/// Where on the screen a part of the compositor's space is, by the output that shows most of it; cut off at
/// the screen's edges, empty where no output shows any. `logical` are the outputs of the layout.
[[nodiscard]] Rectangle onScreen(const Rectangle& part, std::span<const Rectangle> logical,
                                 const Layout& layout);

/// The smallest part of an output of this many pixels, shown at `place`, that shows all of `part`, which lies
/// inside of that place.
[[nodiscard]] Rectangle ownPixels(const Rectangle& part, const Rectangle& place, Size pixels);

}  // namespace screencapture::wayland
