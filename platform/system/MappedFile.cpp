#include "platform/system/MappedFile.h"

#include <sys/mman.h>
#include <sys/stat.h>

namespace platform {

Descriptor newFileInMemory(const char* name) {
  return Descriptor(memfd_create(name, MFD_CLOEXEC));
}

std::optional<MappedFile> MappedFile::of(int file) {
  struct stat status {};
  if (fstat(file, &status) != 0 || status.st_size <= 0)
    return std::nullopt;
  const auto size = static_cast<std::size_t>(status.st_size);
  void* const at = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
  return at == MAP_FAILED ? std::nullopt : std::optional(MappedFile({static_cast<std::uint8_t*>(at), size}));
}

MappedFile::~MappedFile() {
  if (!mapped.empty())
    munmap(mapped.data(), mapped.size());
}

}  // namespace platform
