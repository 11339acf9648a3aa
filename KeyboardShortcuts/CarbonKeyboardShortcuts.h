#pragma once

#include "KeyboardShortcuts/Shortcut.h"

#include <QList>

#include <functional>

/// The one place that speaks to the desktop's hot-key service. It owns a record for each registered shortcut
/// and hears presses and releases of all of them, also while a menu of this program has the keyboard. It
/// knows nothing of names. Main thread only.
namespace KeyboardShortcuts::CarbonKeyboardShortcuts {

using Callback = std::function<void(const Shortcut&)>;

/// A refusal is only logged.
void registerShortcut(const Shortcut& shortcut, Callback onKeyDown, Callback onKeyUp);
/// Drops every record of the shortcut.
void unregisterShortcut(const Shortcut& shortcut);
/// To be called after a change of isEnabled() or isMenuOpen(): takes or gives back the hot keys accordingly.
void updateEventHandler();

/// The shortcuts that the desktop keeps for itself, read anew at each call; none if they can't be read.
[[nodiscard]] QList<Shortcut> system();

/// Gives everything back and forgets all records, as at the program's start.
void resetStatics();

}  // namespace KeyboardShortcuts::CarbonKeyboardShortcuts
