#pragma once

#include "platform/desktop/wayland/LayerPopups.h"
#include "platform/desktop/wayland/LayerShell.h"

#include <functional>
#include <optional>

class QScreen;
class QWidget;

namespace platform {

/// Makes a widget's window a layer over the whole of an output, its bars included and above all windows:
/// whatever is in the window is at its exact place on that output, and clicks beside it reach the window.
/// Menus and tooltips of the widget lie above it.
class OutputLayer {
 public:
  enum class Keyboard {
    Elsewhere,  // who else wants it, or had it before, has it
    Here,       // the window has it, as long as it is there
  };
  struct Handlers {
    /// The output has another size now, and so has the window.
    std::function<void()> resized;
    /// The output is gone, or the compositor wants the window gone.
    std::function<void()> closed;
  };

  /// Whether the compositor has layers.
  [[nodiscard]] static bool isOffered() { return isLayerShellOffered(); }
  /// What a widget of this kind has besides its other window flags.
  [[nodiscard]] static Qt::WindowFlags windowFlags();

  /// `window` has no native window yet, and outlives this. It takes the output's size, and can be shown
  /// afterwards.
  OutputLayer(QWidget& window, QScreen& screen, Keyboard keyboard, const Handlers& handlers);

  void setKeyboard(Keyboard keyboard);
  /// Meanwhile it isn't above full-screen windows either: the selection is there alone, with the keyboard.
  void setSelecting(bool isSelecting);

 private:
  QWidget& window;
  Keyboard keyboard;
  const bool isAboveFullScreen;
  std::optional<LayerRole> role;
  std::optional<LayerPopups> popups;
};

}  // namespace platform
