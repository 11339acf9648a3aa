#pragma once

#include "app/editor/view/EditorWindowController.h"
#include "app/settings/view/SettingsWindowController.h"
#include "platform/base/Environment.h"
#include "platform/base/SingleInstance.h"
#include "platform/desktop/ApplicationService.h"
#include "platform/desktop/DesktopAppearance.h"

#include <QApplication>

#include <memory>

namespace sorrel {

class AppDelegate;

/// The one instance of the program that runs on a display, from its start to its end.
class SorrelApp {
 public:
  /// `instance` is the first one, and outlives this.
  SorrelApp(int& argc, char** argv, platform::SingleInstance& instance);
  ~SorrelApp();
  SorrelApp(const SorrelApp&) = delete;
  SorrelApp& operator=(const SorrelApp&) = delete;

  /// Does what the program was started for as soon as the hot keys are there. Returns the exit status.
  [[nodiscard]] int run(const platform::LaunchRequest& request);

 private:
  /// For those who start the program again, and for those who call it over the desktop.
  void beReachable();
  /// False if there is no such action.
  bool act(const QByteArray& action);

  QApplication application;
  platform::Environment environment;  // goes before the connection to the display does
  platform::SingleInstance& instance;
  std::optional<platform::DesktopAppearance> appearance;
  EditorWindowController editor;
  std::unique_ptr<AppDelegate> appDelegate;
  std::optional<platform::ApplicationService> service;
  std::optional<SettingsWindowController> settings;  // shows what the updater does, which is the delegate's
};

}  // namespace sorrel
