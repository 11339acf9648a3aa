#include "platform/wayland/ClearPixel.h"

#include "platform/system/MappedFile.h"

#include <unistd.h>

namespace platform {

WaylandObject<wl_buffer> clearPixel(const WaylandGlobals& globals) {
  constexpr int size = 4;
  WaylandObject<wl_buffer> buffer(nullptr, {wl_buffer_destroy});
  const Descriptor memory = newFileInMemory("pixel");
  if (!memory.isOpen() || ftruncate(memory.get(), size) != 0)
    return buffer;
  const WaylandObject<wl_shm> sharing(globals.bind<wl_shm>(wl_shm_interface, 1), {wl_shm_destroy});
  const WaylandObject<wl_shm_pool> pool(wl_shm_create_pool(sharing.get(), memory.get(), size),
                                        {wl_shm_pool_destroy});
  buffer.reset(wl_shm_pool_create_buffer(pool.get(), 0, 1, 1, size, WL_SHM_FORMAT_ARGB8888));
  return buffer;
}

}  // namespace platform
