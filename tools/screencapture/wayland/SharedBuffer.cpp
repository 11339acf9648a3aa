#include "tools/screencapture/wayland/SharedBuffer.h"

#include "platform/system/MappedFile.h"

#include <climits>
#include <sys/mman.h>
#include <unistd.h>

namespace screencapture::wayland {

namespace {

constexpr wl_buffer_listener listener{
    [](void* self, wl_buffer*) { static_cast<SharedBuffer*>(self)->isBusy = false; }};

}  // namespace

std::unique_ptr<SharedBuffer> SharedBuffer::create(wl_shm* shm, Size size, std::size_t stride,
                                                   std::uint32_t format) {
  const std::size_t length = stride * static_cast<std::size_t>(size.height);
  const platform::Descriptor file = platform::newFileInMemory("screencapture");
  if (!file.isOpen() || length == 0 || length > INT_MAX ||
      ftruncate(file.get(), static_cast<off_t>(length)) != 0)
    return nullptr;
  void* const memory =
      mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_POPULATE, file.get(), 0);
  if (memory == MAP_FAILED)
    return nullptr;
  std::unique_ptr<SharedBuffer> made(new SharedBuffer(size, stride, format));
  made->memory = {static_cast<std::uint8_t*>(memory), length};
  const platform::WaylandObject<wl_shm_pool> pool(
      wl_shm_create_pool(shm, file.get(), static_cast<std::int32_t>(length)), {wl_shm_pool_destroy});
  made->shared = {wl_shm_pool_create_buffer(pool.get(), 0, size.width, size.height,
                                            static_cast<std::int32_t>(stride), format),
                  {wl_buffer_destroy}};
  wl_buffer_add_listener(made->buffer(), &listener, made.get());
  return made;
}

std::unique_ptr<SharedBuffer> SharedBuffer::create(wl_shm* shm, Size size, std::uint32_t format) {
  return create(shm, size, static_cast<std::size_t>(size.width) * 4, format);
}

SharedBuffer::~SharedBuffer() {
  munmap(memory.data(), memory.size());
}

}  // namespace screencapture::wayland
