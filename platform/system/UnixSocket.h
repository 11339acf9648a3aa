#pragma once

#include "platform/system/Descriptor.h"

#include <string>

namespace platform {

enum class Inherited { No, Yes };

/// A connection to the socket with this path; not open where nobody answers there. `inherited` says whether a
/// program that takes this one's place keeps it.
[[nodiscard]] Descriptor connectTo(const std::string& path, Inherited inherited = Inherited::No);

}  // namespace platform
