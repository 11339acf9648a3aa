#pragma once

#include "platform/imaging/png/PngEncoder.h"
#include "tools/screencapture/x11/Display.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace screencapture {

/// The whole screen as it was at one moment: all monitors, without the pointer. The picture stays in the X
/// server; only what is asked for is fetched, at the end.
class FrozenScreen {
 public:
  /// Asks the server for the copy, without waiting.
  explicit FrozenScreen(const Display& display);

  [[nodiscard]] xcb_pixmap_t pixmap() const { return picture; }
  [[nodiscard]] Size size() const { return display.size(); }

  /// Fetches a part, which must lie inside, and makes a PNG of it. Empty where the connection is lost, the
  /// screen's pixels are of a kind that PixelFormat doesn't know, or there is not enough memory.
  [[nodiscard]] std::optional<platform::PngFile> encode(const Rectangle& part) const;

  /// Fetches a small part, row by row as 0xffRRGGBB, and 0 for each pixel that lies outside of the screen.
  /// Empty as encode() is.
  [[nodiscard]] std::optional<std::vector<std::uint32_t>> pixels(const Rectangle& part) const;

 private:
  const Display& display;
  xcb_pixmap_t picture;
};

}  // namespace screencapture
