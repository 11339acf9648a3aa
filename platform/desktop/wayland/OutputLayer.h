#pragma once

#include "platform/desktop/wayland/LayerPopups.h"
#include "platform/wayland/WaylandGlobals.h"

#include <QSize>

#include <functional>
#include <optional>

class QScreen;
class QWidget;

struct zwlr_layer_surface_v1;

namespace platform {

/// Makes a widget's window a layer surface over the whole of an output, its bars included and above all
/// windows: whatever is in the window is at its exact place on that output, and clicks beside it reach the
/// window. Menus and tooltips of the widget lie above it.
class OutputLayer {
 public:
  enum class Keyboard {
    Elsewhere,  // who else wants it, or had it before, has it
    Here,       // the window has it, as long as it is there
  };
  struct Handlers {
    /// The output has another size now.
    std::function<void(const QSize&)> resized;
    /// The output is gone, or the compositor wants the window gone.
    std::function<void()> closed;
  };

  /// Whether the compositor has layers.
  [[nodiscard]] static bool isOffered();
  /// What a widget of this kind has besides its other window flags.
  [[nodiscard]] static Qt::WindowFlags windowFlags();

  /// `window` has no native window yet, and outlives this. It takes the output's size, and can be shown
  /// afterwards.
  OutputLayer(QWidget& window, QScreen& screen, Keyboard keyboard, Handlers handlers);
  OutputLayer(const OutputLayer&) = delete;
  OutputLayer& operator=(const OutputLayer&) = delete;

  /// False where the compositor has refused; the window is to be given up then.
  [[nodiscard]] bool isConfigured() const { return size.has_value(); }

  void setKeyboard(Keyboard keyboard);

 private:
  void makeRole(QScreen& screen);
  void configured(std::uint32_t serial, const QSize& given);

  QWidget& window;
  const Handlers handlers;
  std::optional<QSize> size;
  Keyboard keyboard;
  WaylandObject<zwlr_layer_surface_v1> layer;
  std::optional<LayerPopups> popups;
};

}  // namespace platform
