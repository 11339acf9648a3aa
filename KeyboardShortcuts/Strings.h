#pragma once

#include <QString>

namespace KeyboardShortcuts {

/// A text of the module's own table, in the desktop's language. A program without that table can't go on.
[[nodiscard]] QString localizedString(const QString& key);

}  // namespace KeyboardShortcuts
