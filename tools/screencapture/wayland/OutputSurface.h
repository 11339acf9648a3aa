#pragma once

#include "tools/screencapture/selection/Canvas.h"
#include "tools/screencapture/wayland/Display.h"
#include "tools/screencapture/wayland/FrozenScreen.h"
#include "tools/screencapture/wayland/SharedBuffer.h"

#include <array>

struct wp_viewport;
struct xdg_surface;
struct xdg_toplevel;
struct zwlr_layer_surface_v1;

namespace screencapture::wayland {

/// The surface over one output: of the layer shell where there is one, else a fullscreen window. It isn't
/// seen before it is given something to show.
///
/// What changes is drawn when the compositor is ready for the next frame, all changes until then together.
class OutputSurface {
 public:
  OutputSurface(const Display& display, const Output& output);
  ~OutputSurface();
  OutputSurface(const OutputSurface&) = delete;
  OutputSurface& operator=(const OutputSurface&) = delete;

  /// From now on it shows the frozen screen's part of that number, with the layers, which must live as long.
  void show(const FrozenScreen& screen, std::size_t number, const Layers& layers);
  /// These parts of the screen look otherwise now.
  void change(std::span<const Rectangle> parts);
  /// Shows what has changed, unless the compositor isn't ready: then this is to be called again when
  /// something has come from it.
  void update();

  [[nodiscard]] wl_surface* surface() const { return own.get(); }
  /// Where it lies, in the compositor's unit.
  [[nodiscard]] const Rectangle& logical() const { return output.logical; }
  /// The point of the screen at one in the compositor's unit; the nearest one of the output.
  [[nodiscard]] Point onScreen(double x, double y) const;
  /// Whether the compositor has shown the first picture.
  [[nodiscard]] bool isSeen() const { return hasBeenSeen; }
  /// Whether the compositor has taken it away, as it does when the monitor goes.
  [[nodiscard]] bool isClosed() const { return closed; }

 private:
  struct Listeners;
  /// What is drawn into, with the parts of the screen in which it is out of date.
  struct Sheet {
    std::unique_ptr<SharedBuffer> buffer;
    std::vector<Rectangle> stale;
  };

  void makeLayer();
  void makeWindow();
  void configure(Size size);
  [[nodiscard]] Sheet* freeSheet();
  void draw(Sheet& sheet);

  const Display& display;
  const Output& output;
  const platform::WaylandObject<wl_surface> own;
  const platform::WaylandObject<wp_viewport> viewport;
  platform::WaylandObject<zwlr_layer_surface_v1> layer;
  platform::WaylandObject<xdg_surface> windowSurface;
  platform::WaylandObject<xdg_toplevel> window;
  platform::WaylandObject<wl_callback> frame;  // there while the compositor isn't ready for the next one
  std::array<Sheet, 2> sheets;

  const FrozenScreen* frozen = nullptr;
  const Layers* layers = nullptr;
  std::size_t number = 0;
  Rectangle place;  // on the screen
  Size size;        // of the surface, in the compositor's unit
  Size asked;       // the window's size to come
  bool hasChanged = false;
  bool isConfigured = false;
  bool hasBeenSeen = false;
  bool closed = false;
};

}  // namespace screencapture::wayland
