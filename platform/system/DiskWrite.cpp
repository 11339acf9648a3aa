#include "platform/system/DiskWrite.h"

#include "platform/system/Descriptor.h"

#include <algorithm>
#include <fcntl.h>

namespace platform {

int writeTowardsDisk(int file, std::span<const std::uint8_t> bytes, off_t offset) {
  constexpr std::size_t partSize = std::size_t{1} << 20;
  while (!bytes.empty()) {
    const auto part = bytes.first(std::min(partSize, bytes.size()));
    const auto size = static_cast<off_t>(part.size());
    if (const int error = writeAll(file, part, offset); error != 0)
      return error;
    // Where a file system can't begin early, the sync does it all.
    (void)sync_file_range(file, offset, size, SYNC_FILE_RANGE_WRITE);
    bytes = bytes.subspan(part.size());
    offset += size;
  }
  return 0;
}

}  // namespace platform
