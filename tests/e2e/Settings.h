#pragma once

#include "tests/e2e/Panel.h"

namespace e2e {

/// The settings' window on the screen, and what is done in it.
class Settings {
 public:
  /// In the order of the window's bar.
  enum class Tab { General, Shortcuts, Watermark, Storage };

  Settings(Desktop& desktop, Sorrel& sorrel);

  /// Until the window is there and has the keyboard.
  void waitUntilOpen() const;
  /// Each waits until it is open.
  void openByMenu();
  /// From the open panel.
  void openByKeys();
  void select(Tab tab);
  /// Presses a key together with Control, and lets go.
  void pressWithControl(int evdevCode);
  /// Clicks at a point of the window, from its top left corner.
  void click(QPointF point);
  void close();

  /// Without its frame; absent while it is closed.
  [[nodiscard]] std::optional<ScreenWindow> window() const;
  /// In the row of the shortcut of that number.
  [[nodiscard]] static QPointF recorder(int row) { return {400, 111 + 36.0 * row}; }
  [[nodiscard]] static QPointF changeFolder() { return {82, 240}; }

 private:
  Desktop& desktop;
  Sorrel& sorrel;
  Tab current = Tab::General;
};

}  // namespace e2e
