#include "platform/system/SharedSegment.h"

#include <sys/ipc.h>
#include <sys/shm.h>

namespace platform {

std::optional<SharedSegment> SharedSegment::create(std::size_t size) {
  const int number = shmget(IPC_PRIVATE, size, IPC_CREAT | 0600);
  if (number < 0)
    return std::nullopt;
  void* const at = shmat(number, nullptr, 0);
  if (at != reinterpret_cast<void*>(-1))
    return SharedSegment(number, static_cast<std::uint8_t*>(at));
  shmctl(number, IPC_RMID, nullptr);
  return std::nullopt;
}

SharedSegment::~SharedSegment() {
  releaseNumber();
  if (memory)
    shmdt(memory);
}

void SharedSegment::releaseNumber() {
  if (identifier >= 0)
    shmctl(std::exchange(identifier, -1), IPC_RMID, nullptr);
}

}  // namespace platform
