#pragma once

#include "KeyboardShortcuts/Name.h"
#include "platform/input/HotKeyService.h"

#include <QList>

#include <functional>

/// The one place that speaks to the desktop's hot-key service. It owns a record for each registered shortcut
/// and hears presses and releases of all of them, also while a menu of this program has the keyboard. Of
/// names it only passes on what they are for. Main thread only.
namespace KeyboardShortcuts::CarbonKeyboardShortcuts {

using Callback = std::function<void(const Shortcut&)>;

/// A refusal is only logged.
void registerShortcut(const Shortcut& shortcut, const Name& name, Callback onKeyDown, Callback onKeyUp);
/// Drops every record of the shortcut.
void unregisterShortcut(const Shortcut& shortcut);
/// Which keys are to be heard from now on. Hot keys are with the service while grabbed keys are heard, and
/// handed back otherwise; their records stay. Grabbed keys, until it is called.
void updateEventHandler(platform::HotKeyService::Keys wanted);

/// The shortcuts that the desktop keeps for itself, read anew at each call; none if they can't be read.
[[nodiscard]] QList<Shortcut> system();

}  // namespace KeyboardShortcuts::CarbonKeyboardShortcuts
