#pragma once

#include "platform/base/Event.h"

#include <QString>

namespace KeyboardShortcuts {

/// Between an event's modifier flags and the hot-key service's numbers for them (platform::HotKeyModifier).
/// Either way only the five modifiers of a shortcut survive.
[[nodiscard]] qint64 carbon(platform::ModifierFlags flags);
[[nodiscard]] platform::ModifierFlags modifierFlags(qint64 carbon);

/// The modifiers' symbols in the order in which a menu writes them.
[[nodiscard]] QString ks_symbolicRepresentation(platform::ModifierFlags flags);

}  // namespace KeyboardShortcuts
