#pragma once

#include "platform/input/SymbolicHotKeys.h"

#include <QStringList>

#include <functional>

namespace platform {

/// The desktops whose hot keys can be read from their settings.
enum class HotKeyDesktop { None, Gnome, Cinnamon, Mate, Kde, Xfce };

/// By the names that a session gives itself, parted by colons as "ubuntu:GNOME"; the first that is known
/// counts.
[[nodiscard]] HotKeyDesktop hotKeyDesktop(const QString& sessionNames);

/// The desktop that runs, by the session's variables.
[[nodiscard]] HotKeyDesktop runningHotKeyDesktop();

/// Begins to read what the desktop's settings say at present; what is given back waits for the texts, and
/// gives none where they can't be read.
[[nodiscard]] std::function<QStringList()> readAccelerators(HotKeyDesktop desktop);

}  // namespace platform
