#pragma once

#include "tools/screencapture/selection/Use.h"
#include "tools/screencapture/wayland/Input.h"

namespace screencapture::wayland {

/// The frozen screen before the user's eyes, and what the user's hand does: all that a use of the tool begins
/// with.
class Stage final : public Canvas {
 public:
  /// Freezes the screen by the compositor's own copies, and shows it, with a veil over it if one is given.
  /// Null where there are none, which is then said on standard error.
  [[nodiscard]] static std::unique_ptr<Stage> copy(Display& display, const std::optional<Color>& veil);
  /// The same with pictures from elsewhere, one for each output.
  [[nodiscard]] static std::unique_ptr<Stage> of(Display& display, std::vector<Picture> pictures,
                                                 const std::optional<Color>& veil);
  /// Gives the screen and the input back to the other programs; the frozen screen can still be read.
  void clear();

  void paint(std::span<const Rectangle> parts, const Layers& layers) override;
  void setCursor(const Artwork& look) override;
  [[nodiscard]] std::optional<std::vector<std::uint32_t>> pixels(const Rectangle& part) const override;
  [[nodiscard]] Size sizeOf(const Rectangle& part) const override { return screen->sizeOf(part); }

  /// Where the pointer is, is known later.
  [[nodiscard]] Setting setting() const;
  /// Where on the screen these parts of the compositor's space are, those that are seen.
  [[nodiscard]] std::vector<Rectangle> onScreen(const std::vector<Rectangle>& parts) const;
  [[nodiscard]] const FrozenScreen& frozen() const { return *screen; }

  Display& display;
  Overlay overlay;
  Input input;

 private:
  explicit Stage(Display& display);
  void show(std::vector<Picture> pictures, const std::optional<Color>& veil);

  std::optional<FrozenScreen> screen;  // there once it is set
};

/// Says on standard error why nothing comes of it, unless the whole compositor is gone, which is then the
/// reason.
void complain(const Display& display, const char* reason);

}  // namespace screencapture::wayland
