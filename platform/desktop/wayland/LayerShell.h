#pragma once

#include "platform/wayland/WaylandGlobals.h"

#include <QSize>

#include <functional>
#include <optional>

struct zwlr_layer_surface_v1;

namespace platform {

/// Whether the compositor has layers.
[[nodiscard]] bool isLayerShellOffered();

/// A surface's role on a layer above windows, over the whole of an output. It goes before the surface.
class LayerRole {
 public:
  /// What of the output it covers. Above full-screen windows the selection of a capture otherwise is alone.
  enum class Extent { WholeOutput, WholeOutputAboveFullScreen, BetweenBars };
  struct Handlers {
    std::function<void(const QSize&)> resized;
    /// The output is gone, or the compositor wants the surface gone.
    std::function<void()> closed;
  };

  /// Waits until the surface may be shown. Where there are no layers this must not be made.
  LayerRole(wl_surface& surface, wl_output* output, Extent extent, Handlers handlers);
  LayerRole(const LayerRole&) = delete;
  LayerRole& operator=(const LayerRole&) = delete;

  /// The compositor's; absent if it has refused.
  [[nodiscard]] std::optional<QSize> size() const { return given; }
  void setTakesKeyboard(bool takesKeyboard);
  void setAboveFullScreen(bool isAbove);
  [[nodiscard]] zwlr_layer_surface_v1& object() const { return *layer; }

 private:
  void configure(std::uint32_t serial, const QSize& size);

  wl_surface& surface;
  const Handlers handlers;
  WaylandObject<zwlr_layer_surface_v1> layer;
  std::optional<QSize> given;
};

}  // namespace platform
