#pragma once

#include "tools/screencapture/wayland/OutputSurface.h"

#include <memory>
#include <optional>

namespace screencapture::wayland {

/// The surfaces over all outputs, which together show the frozen screen and what lies over it.
class Overlay {
 public:
  /// Asks for the surfaces, without waiting; nothing is seen of them yet.
  explicit Overlay(const Display& display);

  /// Shows the frozen screen, which must live as long, under a veil if there is one.
  void show(const FrozenScreen& screen, const std::optional<Color>& veil);
  void hide() { surfaces.clear(); }
  void paint(std::span<const Rectangle> parts, const Layers& layers);
  /// To be called when something has come from the compositor: it may be ready for what waits to be shown.
  void update();

  /// The surface over an output; null where it is none of these.
  [[nodiscard]] const OutputSurface* find(const wl_surface* surface) const;
  /// The point of the screen at one of a surface. While a button is held, that may lie beside the surface,
  /// over another one.
  [[nodiscard]] Point onScreen(const OutputSurface& surface, double x, double y) const;
  /// Whether all of it is on the screen.
  [[nodiscard]] bool isSeen() const;
  /// Whether the compositor has taken all of it away.
  [[nodiscard]] bool isClosed() const;

 private:
  std::vector<std::unique_ptr<OutputSurface>> surfaces;
  Layers shown;
};

}  // namespace screencapture::wayland
