#include "tools/screencapture/wayland/Screencopy.h"

#include <algorithm>
#include <wlr-screencopy-unstable-v1.h>

namespace screencapture::wayland {

struct Screencopy::Listener {
  static Copy& copyOf(void* self) { return *static_cast<Copy*>(self); }

  static void begin(Copy& copy) {
    if (copy.buffer)
      zwlr_screencopy_frame_v1_copy(copy.frame.get(), copy.buffer->buffer());
    else
      copy.progress = Progress::Failed;
  }

  static constexpr zwlr_screencopy_frame_v1_listener events{
      .buffer =
          [](void* self, zwlr_screencopy_frame_v1* frame, std::uint32_t format, std::uint32_t width,
             std::uint32_t height, std::uint32_t stride) {
            Copy& copy = copyOf(self);
            if (!copy.buffer)
              copy.buffer = SharedBuffer::create(
                  copy.shm, {static_cast<int>(width), static_cast<int>(height)}, stride, format);
            if (zwlr_screencopy_frame_v1_get_version(frame) <
                ZWLR_SCREENCOPY_FRAME_V1_BUFFER_DONE_SINCE_VERSION)
              begin(copy);
          },
      .flags =
          [](void* self, zwlr_screencopy_frame_v1*, std::uint32_t flags) {
            if (flags & ZWLR_SCREENCOPY_FRAME_V1_FLAGS_Y_INVERT)
              copyOf(self).order = RowOrder::FromBottom;
          },
      .ready = [](void* self, zwlr_screencopy_frame_v1*, std::uint32_t, std::uint32_t,
                  std::uint32_t) { copyOf(self).progress = Progress::Done; },
      .failed = [](void* self, zwlr_screencopy_frame_v1*) { copyOf(self).progress = Progress::Failed; },
      .damage = [](void*, zwlr_screencopy_frame_v1*, std::uint32_t, std::uint32_t, std::uint32_t,
                   std::uint32_t) {},
      .linux_dmabuf = [](void*, zwlr_screencopy_frame_v1*, std::uint32_t, std::uint32_t, std::uint32_t) {},
      .buffer_done = [](void* self, zwlr_screencopy_frame_v1*) { begin(copyOf(self)); }};
};

Screencopy::Screencopy(const Display& display) {
  constexpr std::int32_t withoutPointer = 0;
  for (const auto& output : display.outputs) {
    Copy& copy = *copies.emplace_back(std::make_unique<Copy>());
    copy.shm = display.shm.get();
    copy.output = output.get();
    copy.frame = {zwlr_screencopy_manager_v1_capture_output(display.screencopy.get(), withoutPointer,
                                                            output->proxy.get()),
                  {zwlr_screencopy_frame_v1_destroy}};
    zwlr_screencopy_frame_v1_add_listener(copy.frame.get(), &Listener::events, &copy);
  }
}

Screencopy::Progress Screencopy::progress() const {
  const auto any = [this](Progress wanted) {
    return std::ranges::any_of(copies, [wanted](const auto& copy) { return copy->progress == wanted; });
  };
  return any(Progress::Failed)    ? Progress::Failed
         : any(Progress::Waiting) ? Progress::Waiting
                                  : Progress::Done;
}

std::optional<std::vector<Picture>> Screencopy::pictures() const {
  std::vector<Picture> all;
  for (const auto& copy : copies) {
    const SharedBuffer& buffer = *copy->buffer;
    auto picture = uprightPicture({buffer.format, buffer.size, buffer.stride, buffer.bytes()},
                                  copy->output->transform, copy->order, copy->buffer);
    if (!picture)
      return std::nullopt;
    all.push_back(std::move(*picture));
  }
  return all;
}

}  // namespace screencapture::wayland
