#pragma once

#include "tools/screencapture/selection/Use.h"
#include "tools/screencapture/wayland/Input.h"

namespace screencapture::wayland {

/// The frozen screen before the user's eyes, and what the user's hand does: all that a use of the tool begins
/// with.
class Stage final : public Canvas {
 public:
  /// With a veil over the screen if one is given. Null where it fails, which is then said on standard error.
  [[nodiscard]] static std::unique_ptr<Stage> set(Display& display, const std::optional<Color>& veil);
  /// Gives the screen and the input back to the other programs; the frozen screen can still be read.
  void clear();

  void paint(std::span<const Rectangle> parts, const Layers& layers) override;
  void setCursor(const Artwork& look) override;
  [[nodiscard]] std::optional<std::vector<std::uint32_t>> pixels(const Rectangle& part) const override;

  /// Where the pointer is, is known later.
  [[nodiscard]] Setting setting() const;
  [[nodiscard]] const FrozenScreen& frozen() const { return *screen; }

  Display& display;
  Overlay overlay;
  Input input;

 private:
  explicit Stage(Display& display);
  void freeze(std::vector<Picture> pictures);

  std::optional<FrozenScreen> screen;  // there once it is set
};

/// Says on standard error why nothing comes of it, unless the whole compositor is gone, which is then the
/// reason.
void complain(const Display& display, const char* reason);

}  // namespace screencapture::wayland
