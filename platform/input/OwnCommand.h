#pragma once

#include "platform/base/Task.h"

#include <optional>

namespace platform {

/// What a user types, or a desktop runs, to have this program do what `option` says: "sorrel --capture". With
/// the program's whole path, quoted for a shell, where its name alone would start none or another.
[[nodiscard]] QString ownCommand(const QString& option);

/// The program in which the desktop that runs lets its user choose hot keys; nullopt where it isn't known.
[[nodiscard]] std::optional<Task> keyboardSettings();

}  // namespace platform
