#pragma once

#include "KeyboardShortcuts/EventStream.h"
#include "KeyboardShortcuts/Name.h"
#include "platform/base/Subscription.h"

#include <functional>
#include <memory>
#include <vector>

/// Global keyboard shortcuts that the user can choose.
///
/// A name's shortcut lives in the settings and nowhere else: it is read at each press, so a change acts at
/// once. The system knows shortcuts, not names: one that two names share is registered once, a press runs the
/// actions of both, and whoever gives it up gives it up for both until it is registered anew. Main thread
/// only.
namespace KeyboardShortcuts {

using Action = std::function<void()>;

/// Posted after every change of a stored shortcut; user info "name": the Name.
inline constexpr char shortcutByNameDidChangeNotification[] = "KeyboardShortcuts_shortcutByNameDidChange";
/// Posted by a recorder as it starts and ends; user info "isActive": boolean.
inline constexpr char recorderActiveStatusDidChangeNotification[] =
    "KeyboardShortcuts_recorderActiveStatusDidChange";

/// The switch of all shortcuts together.
[[nodiscard]] bool isEnabled();
void setIsEnabled(bool value);
/// While paused, presses and releases do nothing, but stay taken from other programs. For the recorder.
[[nodiscard]] bool isPaused();
void setIsPaused(bool value);
/// Whether a menu of this program has the keyboard.
[[nodiscard]] bool isMenuOpen();

/// The settings' key under which the name's shortcut is stored.
[[nodiscard]] QString storeKey(const Name& name);
[[nodiscard]] std::optional<Shortcut> getShortcut(const Name& name);
/// Without a shortcut the name is emptied, which a default survives: it isn't put back at the next start.
void setShortcut(const std::optional<Shortcut>& shortcut, const Name& name);
/// Gives each name its default again; a name without one is emptied.
void reset(const std::vector<Name>& names);
/// Forgets all stored shortcuts; the defaults come back as their names are declared at the next start.
void resetAll();

/// Actions add up, and one added twice runs twice. Each runs as long as its subscription lives.
[[nodiscard]] platform::Subscription onKeyDown(const Name& name, Action action);
[[nodiscard]] platform::Subscription onKeyUp(const Name& name, Action action);
/// These forget actions, not streams.
void removeHandler(const Name& name);
void removeAllHandlers();

/// Registers or gives up the shortcuts of the names, whose settings and actions stay.
void enable(const std::vector<Name>& names);
void disable(const std::vector<Name>& names);
[[nodiscard]] bool isEnabled(const Name& name);

/// Starts to hear at the main queue's next turn; so does the end.
[[nodiscard]] std::unique_ptr<EventStream> events(const Name& name);
[[nodiscard]] std::unique_ptr<EventStream> events(EventType type, const Name& name);

/// The write path of everything above; the recorder's too.
void userDefaultsSet(const Name& name, const Shortcut& shortcut);
/// Whether the settings hold anything for the name, be it an emptied slot.
[[nodiscard]] bool userDefaultsContains(const Name& name);
/// Starts to watch this program's menus. Done by the first name declared.
void initialize();

}  // namespace KeyboardShortcuts
