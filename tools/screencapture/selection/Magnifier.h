#pragma once

#include "tools/screencapture/selection/Artwork.h"
#include "tools/screencapture/selection/Scene.h"

#include <cstdint>
#include <span>
#include <string>

namespace screencapture {

class Painter;

/// A color of a screen's pixel, 0xRRGGBB, as "#RRGGBB".
[[nodiscard]] std::string hexOf(std::uint32_t rgb);

/// What a color is picked with: a round lens in which the pixels around one are large squares, that one
/// marked in the middle, and below it its color, as a sample and as "#RRGGBB".
class Magnifier {
 public:
  explicit Magnifier(const Metrics& metrics);

  /// The pixels that the lens shows for this one; they may lie beyond the screen.
  [[nodiscard]] static Rectangle sourceAround(Point pixel);
  /// Beside the pointer and all of it on the monitor.
  [[nodiscard]] Rectangle placeFor(Point pixel, const Rectangle& monitor) const;
  /// `pixels` are those of the source row by row, 0xffRRGGBB, and 0 where there is no screen.
  [[nodiscard]] Artwork draw(std::span<const std::uint32_t> pixels) const;

 private:
  void drawPixels(Painter& painter, std::span<const std::uint32_t> pixels) const;
  void drawMark(Painter& painter, std::uint32_t rgb) const;
  void drawValue(Painter& painter, std::uint32_t rgb) const;

  Metrics metrics;
  int cell;         // the side of a pixel's square, with the grid's line after it
  int rim;          // around the lens
  Rectangle lens;   // the square that it fills
  Rectangle value;  // the box below
  Coverage inside;  // how much of each of that square's pixels lies in the lens
  Artwork ground;   // what is the same for all pixels
};

}  // namespace screencapture
