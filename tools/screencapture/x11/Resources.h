#pragma once

#include <string_view>

namespace screencapture {

/// The desktop's scale from the text of the root window's RESOURCE_MANAGER property: its Xft.dpi, 96 being a
/// scale of 1, is the only place where desktops agree to keep the user's choice. 1 where it says nothing of
/// use.
[[nodiscard]] double scaleFromResources(std::string_view resources);

}  // namespace screencapture
