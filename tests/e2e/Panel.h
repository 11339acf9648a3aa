#pragma once

#include "tests/e2e/Sorrel.h"

namespace e2e {

/// The history panel on the screen, and where its parts are. Areas and points are pixels of the screen.
class Panel {
 public:
  Panel(Desktop& desktop, Sorrel& sorrel, double scale = 1);

  /// A click on the status item; waits until the panel is there and still.
  void open();
  void waitUntilOpen();
  void close();
  [[nodiscard]] bool isOpen() const;

  /// Whether the message at the panel's foot is in its place.
  [[nodiscard]] bool hasToast() const;

  /// The panel without its shadow.
  [[nodiscard]] QRect area() const;
  /// The middle of a thumbnail that is in view before any scrolling, and of the buttons on it.
  [[nodiscard]] QPoint thumbnail(int index) const;
  [[nodiscard]] QPoint copyButton(int index) const;
  [[nodiscard]] QPoint lockButton() const;

  void moveTo(QPoint point);
  void click(QPoint point);

 private:
  [[nodiscard]] std::optional<QRect> window() const;
  [[nodiscard]] QPoint at(double x, double y) const;

  Desktop& desktop;
  Sorrel& sorrel;
  const double scale;
};

}  // namespace e2e
