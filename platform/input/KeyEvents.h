#pragma once

#include "platform/base/Event.h"

class QKeyEvent;

namespace platform {

/// The code of a key that hot keys can't have, and of one that is held with a modifier that they can't have,
/// such as AltGr.
inline constexpr int noKeyCode = -1;

/// The toolkit's press or release of a key as an event by position, whatever the layout prints there. That of
/// a modifier key is FlagsChanged.
[[nodiscard]] Event eventFrom(const QKeyEvent& event);

}  // namespace platform
