#pragma once

#include "tools/screencapture/selection/Artwork.h"
#include "tools/screencapture/selection/Painting.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace screencapture {

/// What lies over the frozen screen: plain rectangles, and artwork above them.
struct Layers {
  struct Piece {
    Artwork artwork;
    Rectangle place;
  };

  /// For a part of the screen, all within that part.
  std::function<std::vector<Fill>(const Rectangle& within)> fills;
  std::vector<Piece> pieces;
};

/// The frozen screen before the user's eyes, on whichever display.
class Canvas {
 public:
  virtual ~Canvas() = default;

  /// Draws these parts of the screen with what lies over them. A display that draws later asks for the fills
  /// again then, so these are always of the last call.
  virtual void paint(std::span<const Rectangle> parts, const Layers& layers) = 0;
  /// The pointer's look from now on.
  virtual void setCursor(const Artwork& look) = 0;
  /// A small part of the frozen screen, row by row as 0xffRRGGBB, and 0 for each pixel that lies outside of
  /// it. Empty where it can't be fetched.
  [[nodiscard]] virtual std::optional<std::vector<std::uint32_t>> pixels(const Rectangle& part) const = 0;
  /// How large the picture of a part is. Its own pixels may be fewer than the screen shows.
  [[nodiscard]] virtual Size sizeOf(const Rectangle& part) const { return {part.width, part.height}; }

 protected:
  Canvas() = default;
  Canvas(const Canvas&) = default;
  Canvas& operator=(const Canvas&) = default;
};

}  // namespace screencapture
