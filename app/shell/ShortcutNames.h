#pragma once

#include "KeyboardShortcuts/Name.h"

/// The program's four global shortcuts. The first use of a name declares it, which puts its default into the
/// settings on the first run.
namespace sorrel::ShortcutNames {

[[nodiscard]] const KeyboardShortcuts::Name& captureNormal();
[[nodiscard]] const KeyboardShortcuts::Name& captureFeature();
[[nodiscard]] const KeyboardShortcuts::Name& captureClipboard();
[[nodiscard]] const KeyboardShortcuts::Name& openHistory();

}  // namespace sorrel::ShortcutNames
