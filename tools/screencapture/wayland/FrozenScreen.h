#pragma once

#include "platform/imaging/png/PngEncoder.h"
#include "tools/screencapture/wayland/Layout.h"
#include "tools/screencapture/wayland/Picture.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace screencapture::wayland {

/// A PNG of a whole picture; empty if there is not enough memory.
[[nodiscard]] std::optional<platform::PngFile> encode(const Picture& picture);

/// The whole screen as it was at one moment: the pictures of all outputs, without the pointer.
class FrozenScreen {
 public:
  /// A picture for each place of the layout.
  FrozenScreen(Layout shown, std::vector<Picture> taken)
      : layout(std::move(shown)), pictures(std::move(taken)) {}

  /// A part, which must lie inside, as a PNG. What lies on one output is taken in that output's own pixels,
  /// whatever its scale; black is where no output is. Empty if there is not enough memory.
  [[nodiscard]] std::optional<platform::PngFile> encode(const Rectangle& part) const;

  /// A small part, row by row as 0xffRRGGBB, and 0 for each pixel that no output shows.
  [[nodiscard]] std::vector<std::uint32_t> pixels(const Rectangle& part) const;

  /// How large the picture of a part would be.
  [[nodiscard]] Size sizeOf(const Rectangle& part) const;

  /// Writes a part of one output's row as it looks on the screen, to where `to` points.
  void copyRow(std::size_t output, int y, int left, int right, std::uint32_t* to) const;

  const Layout layout;

 private:
  /// The part in an output's own pixels, if one output shows all of it.
  struct Own {
    std::size_t output;
    Rectangle pixels;
  };
  [[nodiscard]] std::optional<Own> ownPixelsOf(const Rectangle& part) const;

  std::vector<Picture> pictures;
};

}  // namespace screencapture::wayland
