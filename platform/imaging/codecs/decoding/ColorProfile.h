#pragma once

#include <lcms2.h>
#include <memory>

namespace platform::decoding {

struct CloseProfile {
  void operator()(void* profile) const { cmsCloseProfile(profile); }
};
/// One of the color library's; null where it couldn't be made.
using ColorProfile = std::unique_ptr<void, CloseProfile>;

}  // namespace platform::decoding
