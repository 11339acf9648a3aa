#pragma once

#include "platform/base/MainQueue.h"
#include "platform/base/Task.h"

#include <QByteArray>

#include <functional>
#include <optional>
#include <vector>

namespace platform {

/// Lets the user pick the color of a pixel anywhere on the screen, as an eyedropper does: runs the capture
/// tool, which freezes the screen and shows a magnifier. The program's own windows stay as they are and can
/// be picked from. Main thread only.
class ColorSampler {
 public:
  /// Given the color as 0xRRGGBB, or nothing if the user cancelled or the tool failed.
  using Handler = std::function<void(std::optional<quint32>)>;

  /// Calls `handler` once, after this has returned; never, if the sampler goes first, which takes the
  /// magnifier off the screen. One that is on the screen already stays there, and the new handler is given
  /// nothing. The handler may show the sampler anew, or destroy it.
  void show(Handler handler);

 private:
  void refuse(Handler handler);
  void finish(const TaskAnswer& answer);

  Handler waiting;  // while the tool runs
  OwnedTask tool;
  std::vector<WorkItem> refusals;
};

/// The color in what the tool has written, "#RRGGBB" and an end of line; nothing where that is anything else.
[[nodiscard]] std::optional<quint32> sampledColor(const QByteArray& output);

}  // namespace platform
