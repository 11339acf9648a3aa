#include "tools/screencapture/wayland/Turn.h"

#include <cerrno>
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

std::optional<platform::Descriptor> takeTurn() {
  platform::Descriptor lock(open(lockPath().c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
  if (lock.isOpen() && flock(lock.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
    return std::nullopt;
  return lock;
}

}  // namespace screencapture::wayland
