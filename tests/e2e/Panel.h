#pragma once

#include "tests/e2e/Sorrel.h"

namespace e2e {

/// The history panel on the screen, where its parts are, and what is done with it. Areas and points are
/// pixels of the screen; on a desktop of another scale than 1 they may be off by the rounding.
class Panel {
 public:
  Panel(Desktop& desktop, Sorrel& sorrel);

  struct Window {
    quint32 id = 0;
    /// Without its shadow.
    QRect frame;
  };
  /// Absent while the panel is closed.
  [[nodiscard]] std::optional<Window> window() const;
  /// Where the panel is to be on a monitor that bears an XEmbed tray.
  [[nodiscard]] QRect place(const QRect& monitor) const;
  /// The same on a desktop with one monitor.
  [[nodiscard]] QRect place() const { return place(QRect({}, desktop.screen().size())); }

  /// Opens the panel with its hot key, or by a click on the icon, and waits until it is in its place.
  Window open();
  Window openByClick();
  /// Waits until the panel stands still at `where` and has the keyboard.
  Window waitUntilOpen(const QRect& where) const;
  Window waitUntilOpen() const { return waitUntilOpen(place()); }
  /// Closes the panel with its hot key.
  void close();
  /// Waits until the panel is closed, and stays so.
  void waitUntilClosed() const;

  // While it is open and not scrolled:
  [[nodiscard]] QRect thumbnail(int index) const;
  /// The button on the thumbnail, while the pointer is on it.
  [[nodiscard]] QPoint copyButton(int index) const;
  [[nodiscard]] QPoint lockButton() const;
  [[nodiscard]] QPoint closeButton() const;
  /// Whether the message at the panel's foot is in its place.
  [[nodiscard]] bool hasToast() const;

  void moveTo(QPoint point) const;
  void click(QPoint point) const;

 private:
  /// Points of the panel, from its top left corner.
  [[nodiscard]] QPoint at(double x, double y) const;

  Desktop& desktop;
  Sorrel& sorrel;
};

}  // namespace e2e
