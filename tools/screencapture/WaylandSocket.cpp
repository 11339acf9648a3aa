#include "tools/screencapture/WaylandSocket.h"

#include "platform/system/UnixSocket.h"

#include <cstdlib>
#include <string>

namespace screencapture {

namespace {

constexpr char handedOver[] = "WAYLAND_SOCKET";

/// Empty where the environment names no compositor.
std::string socketPath() {
  const char* const name = std::getenv("WAYLAND_DISPLAY");
  if (!name || !*name)
    return {};
  if (*name == '/')
    return name;
  const char* const folder = std::getenv("XDG_RUNTIME_DIR");
  return folder && *folder ? std::string(folder) + "/" + name : std::string();
}

}  // namespace

bool handOverWaylandSocket() {
  if (const char* const given = std::getenv(handedOver); given && *given)
    return true;  // by who started us
  platform::Descriptor connection = platform::connectTo(socketPath(), platform::Inherited::Yes);
  if (!connection.isOpen())
    return false;
  setenv(handedOver, std::to_string(connection.release()).c_str(), 1);
  return true;
}

}  // namespace screencapture
