#pragma once

#include "KeyboardShortcuts/Name.h"

/// The program's four global shortcuts. Their first use declares them, which puts their defaults into the
/// settings on the first run.
namespace sorrel::ShortcutNames {

[[nodiscard]] const KeyboardShortcuts::Name& captureNormal();
[[nodiscard]] const KeyboardShortcuts::Name& captureFeature();
[[nodiscard]] const KeyboardShortcuts::Name& captureClipboard();
[[nodiscard]] const KeyboardShortcuts::Name& openHistory();

}  // namespace sorrel::ShortcutNames
