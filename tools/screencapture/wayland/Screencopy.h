#pragma once

#include "tools/screencapture/wayland/Display.h"
#include "tools/screencapture/wayland/SharedBuffer.h"

struct zwlr_screencopy_frame_v1;

namespace screencapture::wayland {

/// Copies of all outputs, made by the compositor itself, without the pointer. Asked for at once, without
/// waiting.
class Screencopy {
 public:
  /// The compositor must offer it.
  explicit Screencopy(const Display& display);

  enum class Progress { Waiting, Done, Failed };
  [[nodiscard]] Progress progress() const;
  /// Once they are done, and the outputs' transforms are known: one for each output, in the same order. Empty
  /// where the pixels are of a kind that isn't known.
  [[nodiscard]] std::optional<std::vector<Picture>> pictures() const;

 private:
  struct Copy {
    wl_shm* shm = nullptr;
    const Output* output = nullptr;
    platform::WaylandObject<zwlr_screencopy_frame_v1> frame;
    std::shared_ptr<SharedBuffer> buffer;
    RowOrder order = RowOrder::FromTop;
    Progress progress = Progress::Waiting;
  };
  struct Listener;

  std::vector<std::unique_ptr<Copy>> copies;
};

}  // namespace screencapture::wayland
