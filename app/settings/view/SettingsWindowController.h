#pragma once

#include <QPointer>
#include <QWidget>

namespace platform {
class Updater;
}

namespace sorrel {

/// Owns the settings' window, of which there is at most one. It is made when it is first asked for, and gone
/// when it is closed. Main thread only.
class SettingsWindowController {
 public:
  /// Without an updater, what asks for updates can't be used.
  explicit SettingsWindowController(platform::Updater* updater = nullptr);
  ~SettingsWindowController();
  SettingsWindowController(const SettingsWindowController&) = delete;
  SettingsWindowController& operator=(const SettingsWindowController&) = delete;

  /// Shows the settings, with the tab that was last in use, in front of all other windows.
  void open();

  /// Null while it is closed.
  [[nodiscard]] QWidget* window() const { return shown; }

 private:
  platform::Updater* const updater;
  int lastTab = 0;
  QPointer<QWidget> shown;
};

}  // namespace sorrel
