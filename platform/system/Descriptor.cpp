#include "platform/system/Descriptor.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

namespace platform {

namespace {

constexpr std::size_t readAtOnce = 1 << 16;

int writeFrom(int file, std::span<const std::uint8_t> rest, std::optional<off_t> offset) {
  while (!rest.empty()) {
    const ssize_t written =
        offset ? pwrite(file, rest.data(), rest.size(), *offset) : write(file, rest.data(), rest.size());
    if (written < 0 && errno == EINTR)
      continue;
    if (written <= 0)
      return written < 0 ? errno : EIO;
    rest = rest.subspan(static_cast<std::size_t>(written));
    if (offset)
      *offset += written;
  }
  return 0;
}

}  // namespace

int Descriptor::close() {
  const int closed = release();
  return closed < 0 || ::close(closed) == 0 ? 0 : errno;
}

int writeAll(int file, std::span<const std::uint8_t> bytes) {
  return writeFrom(file, bytes, std::nullopt);
}

int writeAll(int file, std::span<const std::uint8_t> bytes, off_t offset) {
  return writeFrom(file, bytes, offset);
}

int readAll(int source, std::vector<std::uint8_t>& bytes) {
  for (;;) {
    const std::size_t before = bytes.size();
    bytes.resize(before + readAtOnce);
    const ssize_t count = read(source, bytes.data() + before, readAtOnce);
    const int error = errno;
    bytes.resize(before + static_cast<std::size_t>(count > 0 ? count : 0));
    if (count == 0 || (count < 0 && error != EINTR))
      return count == 0 ? 0 : error;
  }
}

Pipe makePipe() {
  std::array<int, 2> ends{-1, -1};
  (void)pipe2(ends.data(), O_CLOEXEC);
  return {Descriptor(ends[0]), Descriptor(ends[1])};
}

}  // namespace platform
