#pragma once

#include "tools/screencapture/selection/ColorPick.h"
#include "tools/screencapture/selection/Magnifier.h"
#include "tools/screencapture/selection/Use.h"

namespace screencapture {

/// The choice of a pixel's color, by the magnifier.
class ColorPickUse final : public Use {
 public:
  ColorPickUse(Canvas& canvas, Setting setting);

  [[nodiscard]] const ColorPick& result() const { return pick; }

  [[nodiscard]] Gestures& gestures() override { return pick; }
  bool draw() override;
  void repaint(const Rectangle& part) override;

 private:
  [[nodiscard]] Layers layers() const;

  ColorPick pick;
  const Magnifier magnifier;
  std::optional<Point> shownPixel;
  Layers::Piece shown;
};

}  // namespace screencapture
