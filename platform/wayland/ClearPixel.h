#pragma once

#include "platform/wayland/WaylandGlobals.h"

namespace platform {

/// A picture of one transparent pixel; null where the system has no memory to give.
[[nodiscard]] WaylandObject<wl_buffer> clearPixel(const WaylandGlobals& globals);

}  // namespace platform
