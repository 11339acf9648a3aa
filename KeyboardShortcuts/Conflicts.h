#pragma once

#include "KeyboardShortcuts/Shortcut.h"

namespace platform {
struct Menu;
struct MenuItem;
}  // namespace platform

namespace KeyboardShortcuts {

/// Facts about the process that don't change while it runs.
namespace Constants {
[[nodiscard]] bool isSandboxed();
}

/// The first item of the menu, its submenus included, that the shortcut would choose; nullptr if none does.
/// An item's submenu is searched after the item itself. The result belongs to the menu.
[[nodiscard]] const platform::MenuItem* menuItemWithMatchingShortcut(const Shortcut& shortcut,
                                                                     const platform::Menu& menu);

/// Whether the desktop keeps the shortcut for itself. F12 alone always counts as free.
[[nodiscard]] bool isTakenBySystem(const Shortcut& shortcut);

struct SystemVersion {
  int major = 0;
  int minor = 0;
};
struct Surroundings {
  SystemVersion version;
  bool isSandboxed = false;
};
/// Whether the system never reports the shortcut: some versions hold back option and option with shift from
/// sandboxed programs.
[[nodiscard]] bool isDisallowed(const Shortcut& shortcut, const Surroundings& surroundings);

}  // namespace KeyboardShortcuts
