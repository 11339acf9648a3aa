#pragma once

#include <QPointer>
#include <QWidget>

namespace sorrel {

/// Owns the settings' window, of which there is at most one. It is made when it is first asked for, and gone
/// when it is closed. Main thread only.
class SettingsWindowController {
 public:
  /// `hasUpdater`: what asks for updates can be used.
  explicit SettingsWindowController(bool hasUpdater = false);
  ~SettingsWindowController();
  SettingsWindowController(const SettingsWindowController&) = delete;
  SettingsWindowController& operator=(const SettingsWindowController&) = delete;

  /// Shows the settings, with the tab that was last in use, in front of all other windows.
  void open();

  /// Null while it is closed.
  [[nodiscard]] QWidget* window() const { return shown; }

 private:
  const bool hasUpdater;
  int lastTab = 0;
  QPointer<QWidget> shown;
};

}  // namespace sorrel
