#pragma once

#include <QRectF>

#include <functional>
#include <memory>
#include <optional>

class QWidget;

namespace platform {

class PanelSheet;

/// What a panel's window is to the window system, one kind for each that there is: where the sheet is in the
/// window and the window on the screen, how it is shown, and when the keyboard is lost. Places are those of
/// the panel, without its shadow, in the toolkit's coordinates.
class PanelSurface {
 public:
  struct Handlers {
    /// The panel is on the screen, and may begin to move.
    std::function<void()> ready;
    /// The keyboard went to another window, or something beside the panel was clicked.
    std::function<void()> keyLost;
  };

  /// The kind that this session has. `window` holds nothing but the sheet, and isn't shown yet. Both outlive
  /// the surface.
  [[nodiscard]] static std::unique_ptr<PanelSurface> make(QWidget& window, PanelSheet& sheet,
                                                          Handlers handlers);

  PanelSurface() = default;
  virtual ~PanelSurface() = default;
  PanelSurface(const PanelSurface&) = delete;
  PanelSurface& operator=(const PanelSurface&) = delete;

  /// Shows the window with the keyboard in it. Where the panel is to move it isn't seen before it does;
  /// `start` is where it will move from.
  virtual void open(const QRectF& target, const std::optional<QRectF>& start) = 0;
  virtual void moveTo(const QRectF& place, double opacity) = 0;
  /// The window is about to be hidden.
  virtual void close() {}

  /// Whether the keys go to the window, or will again once nobody holds the keyboard any longer.
  [[nodiscard]] virtual bool hasKeyboard() const { return false; }
  /// Whether another program holds the keyboard, which goes back to the panel afterwards.
  [[nodiscard]] virtual bool isKeyboardHeld() const { return false; }
  /// Whether what is beneath the panel is blurred.
  [[nodiscard]] virtual bool isBackdropBlurred() const { return false; }

  /// Whether the panel stays while the user works in other windows.
  virtual void setStaying(bool) {}
  /// While the user selects a part of the screen, which is done above the panel.
  virtual void setSelecting(bool) {}
  /// While something is dragged out of the panel it can be dropped on all that lies beside it.
  virtual void beginDrag() {}
  /// `isTaken` where a program has taken what was dragged.
  virtual void endDrag([[maybe_unused]] bool isTaken) {}
  /// An event of the window, as QWidget::nativeEvent() has it.
  virtual void handleNative(const QByteArray&, const void*) {}
};

}  // namespace platform
