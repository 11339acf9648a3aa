#pragma once

#include "platform/input/HotKeyService.h"

namespace platform {

// A hot key's position and modifiers as other programs write them; empty where they can't.

/// For the portal: "ALT+SHIFT+s". A symbol for the key, since positions aren't foreseen: what the key prints
/// in the user's Latin layout.
[[nodiscard]] QString portalTrigger(const HotKey& hotKey);

/// For GNOME: "<Shift><Alt>s", likewise.
[[nodiscard]] QString gnomeAccelerator(const HotKey& hotKey);

/// For sway: "Mod1+Shift+39", by X's keycode, which is the position.
[[nodiscard]] QString swayCombination(const HotKey& hotKey);

}  // namespace platform
