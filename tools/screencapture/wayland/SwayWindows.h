#pragma once

#include "platform/system/Descriptor.h"
#include "tools/screencapture/selection/Geometry.h"

#include <optional>
#include <string_view>
#include <vector>

namespace screencapture::wayland {

/// The windows that sway shows, asked over the socket on which it takes commands.
class SwayWindows {
 public:
  /// Asks without waiting, if the environment names such a socket.
  SwayWindows();

  /// Waits for the answer: the windows' frames with their title bars, in the compositor's unit, the topmost
  /// first. Nothing where it isn't sway, or it doesn't answer.
  [[nodiscard]] std::optional<std::vector<Rectangle>> frames();

 private:
  platform::Descriptor socket;
};

/// The same of its answer, which is JSON; nothing where it is anything else.
[[nodiscard]] std::optional<std::vector<Rectangle>> framesInTree(std::string_view json);

}  // namespace screencapture::wayland
