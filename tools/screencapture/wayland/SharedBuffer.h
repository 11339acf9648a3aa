#pragma once

#include "platform/wayland/WaylandGlobals.h"
#include "tools/screencapture/selection/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace screencapture::wayland {

/// Pixels in memory that the compositor sees, too.
class SharedBuffer {
 public:
  /// `stride` in bytes, `format` of wl_shm. Null where the system has no memory to give.
  [[nodiscard]] static std::unique_ptr<SharedBuffer> create(wl_shm* shm, Size size, std::size_t stride,
                                                            std::uint32_t format);
  /// For what we draw: rows without gaps.
  [[nodiscard]] static std::unique_ptr<SharedBuffer> create(wl_shm* shm, Size size, std::uint32_t format);
  ~SharedBuffer();
  SharedBuffer(const SharedBuffer&) = delete;
  SharedBuffer& operator=(const SharedBuffer&) = delete;

  [[nodiscard]] wl_buffer* buffer() const { return shared.get(); }
  [[nodiscard]] std::span<std::uint8_t> bytes() const { return memory; }
  [[nodiscard]] std::uint32_t* row(int y) const {
    return reinterpret_cast<std::uint32_t*>(memory.data() + static_cast<std::size_t>(y) * stride);
  }

  const Size size;
  const std::size_t stride;  // bytes
  const std::uint32_t format;
  /// While the compositor reads it; set by who hands it over.
  bool isBusy = false;

 private:
  SharedBuffer(Size size, std::size_t stride, std::uint32_t format)
      : size(size), stride(stride), format(format) {}

  platform::WaylandObject<wl_buffer> shared;
  std::span<std::uint8_t> memory;
};

}  // namespace screencapture::wayland
