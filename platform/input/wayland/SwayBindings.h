#pragma once

#include "platform/input/KeySymbols.h"
#include "platform/input/SymbolicHotKeys.h"

#include <QByteArray>

#include <functional>
#include <vector>

namespace platform {

/// The texts of the files that "include PATTERN" names.
using SwayIncludes = std::function<std::vector<QByteArray>(const QString& pattern)>;

/// The hot keys that sway has by the text of its configuration (man 5 sway): those of the default mode, with
/// variables put in and other files read. What isn't understood is passed over.
[[nodiscard]] std::vector<SymbolicHotKey> swayBindings(const QByteArray& configuration,
                                                       const KeySymbols& keyboard,
                                                       const SwayIncludes& includes);

/// Reads what a pattern names on the disk: a path, perhaps with wildcards in its last part, that begins at
/// the configuration's folder. Patterns that a shell would have to work out name nothing.
[[nodiscard]] SwayIncludes swayIncludesOf(const QString& configurationPath);

}  // namespace platform
