#pragma once

#include "tools/screencapture/selection/Canvas.h"
#include "tools/screencapture/x11/Display.h"
#include "tools/screencapture/x11/FrozenScreen.h"
#include "tools/screencapture/x11/Input.h"
#include "tools/screencapture/x11/Overlay.h"

#include <memory>
#include <optional>

namespace screencapture {

/// The frozen screen before the user's eyes, and the user's hand asked for: all that a use of the tool begins
/// with.
class Stage final : public Canvas {
 public:
  /// With a veil over the screen if one is given. Null where it fails, which is then said on standard error.
  [[nodiscard]] static std::unique_ptr<Stage> set(const Display& display, const std::optional<Color>& veil);
  /// Gives the screen and the input back to the other programs; the frozen screen can still be read.
  void clear();

  void paint(std::span<const Rectangle> parts, const Layers& layers) override;
  void setCursor(const Artwork& look) override;
  [[nodiscard]] std::optional<std::vector<std::uint32_t>> pixels(const Rectangle& part) const override;

  const Display& display;
  Input input;
  const FrozenScreen frozen;
  std::optional<Overlay> overlay;  // there once it is set

 private:
  explicit Stage(const Display& display);

  xcb_cursor_t cursor = XCB_CURSOR_NONE;
};

/// Says on standard error why nothing comes of it, unless the whole X server is gone, which is then the
/// reason.
void complain(const Display& display, const char* reason);

}  // namespace screencapture
