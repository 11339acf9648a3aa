#include "tools/screencapture/wayland/Turn.h"

#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/file.h>

namespace screencapture::wayland {

namespace {

std::string valueOf(const char* variable) {
  const char* const value = std::getenv(variable);
  return value ? value : "";
}

/// One for each session of the user.
std::string lockPath() {
  const std::string display = valueOf("WAYLAND_DISPLAY");
  return valueOf("XDG_RUNTIME_DIR") + "/sorrel-selection-" + display.substr(display.rfind('/') + 1);
}

}  // namespace

platform::Descriptor takeTurn() {
  platform::Descriptor lock(open(lockPath().c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  // Where there is no place for a lock, a second selection is the lesser evil than none.
  if (!lock.isOpen())
    return platform::Descriptor(open("/dev/null", O_RDWR | O_CLOEXEC));
  return flock(lock.get(), LOCK_EX | LOCK_NB) == 0 ? std::move(lock) : platform::Descriptor();
}

}  // namespace screencapture::wayland
