#include "platform/system/UnixSocket.h"

#include <sys/socket.h>
#include <sys/un.h>

namespace platform {

Descriptor connectTo(const std::string& path, Inherited inherited) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.empty() || path.size() >= sizeof address.sun_path)
    return Descriptor();
  path.copy(address.sun_path, path.size());
  Descriptor connection(socket(AF_UNIX, SOCK_STREAM | (inherited == Inherited::No ? SOCK_CLOEXEC : 0), 0));
  if (connection.isOpen() &&
      connect(connection.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
    return Descriptor();
  return connection;
}

}  // namespace platform
