#include "tools/screencapture/WaylandSocket.h"

#include "platform/system/Descriptor.h"

#include <cstdlib>
#include <string>
#include <sys/socket.h>
#include <sys/un.h>

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
  const std::string path = socketPath();
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.empty() || path.size() >= sizeof address.sun_path)
    return false;
  path.copy(address.sun_path, path.size());
  platform::Descriptor connection(socket(AF_UNIX, SOCK_STREAM, 0));
  if (!connection.isOpen() ||
      connect(connection.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
    return false;
  setenv(handedOver, std::to_string(connection.release()).c_str(), 1);
  return true;
}

}  // namespace screencapture
