#pragma once

#include "app/editor/view/EditorWindowController.h"
#include "app/settings/view/SettingsWindowController.h"
#include "platform/base/Environment.h"
#include "platform/base/SingleInstance.h"
#include "platform/desktop/DesktopAppearance.h"

#include <QApplication>

#include <memory>

namespace sorrel {

class AppDelegate;

/// The program from its start to its end. Takes no arguments of its own, only the toolkit's.
class SorrelApp {
 public:
  SorrelApp(int& argc, char** argv);
  ~SorrelApp();
  SorrelApp(const SorrelApp&) = delete;
  SorrelApp& operator=(const SorrelApp&) = delete;

  /// Returns the exit status. Where the program runs already on this display, that instance comes forward and
  /// this one ends at once, with status 0.
  [[nodiscard]] int run();

 private:
  QApplication application;
  platform::Environment environment;  // goes before the connection to the display does
  platform::SingleInstance instance;
  std::optional<platform::DesktopAppearance> appearance;
  EditorWindowController editor;
  SettingsWindowController settings;
  std::unique_ptr<AppDelegate> appDelegate;
};

}  // namespace sorrel
