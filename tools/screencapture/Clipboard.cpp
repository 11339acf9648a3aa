#include "tools/screencapture/Clipboard.h"

#include "tools/screencapture/Arguments.h"
#include "tools/screencapture/ClipboardOwner.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

extern char** environ;

namespace screencapture {

namespace {

// Where a holder finds what it was given. Everything above is closed.
constexpr int pictureDescriptor = 3;
constexpr int readyDescriptor = 4;
constexpr unsigned firstUnused = 5;

/// A file in memory with the bytes; -1 on failure. At `pictureDescriptor` or above, so that the standard
/// streams may be missing.
int fileInMemory(std::span<const std::uint8_t> bytes) {
  const int file = memfd_create("screenshot", MFD_CLOEXEC);
  for (std::size_t done = 0; file >= 0 && done < bytes.size();) {
    const ssize_t written = write(file, bytes.data() + done, bytes.size() - done);
    if (written < 0 && errno == EINTR)
      continue;
    if (written <= 0) {
      close(file);
      return -1;
    }
    done += static_cast<std::size_t>(written);
  }
  return file;
}

bool spawnHolder(int picture, int ready) {
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  // First out of the way of the numbers that they get: a copy onto itself would stay closed on exec.
  const int pictureCopy = fcntl(picture, F_DUPFD_CLOEXEC, static_cast<int>(firstUnused));
  const int readyCopy = fcntl(ready, F_DUPFD_CLOEXEC, static_cast<int>(firstUnused));
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    posix_spawn_file_actions_addopen(&files, stream, "/dev/null", O_RDWR, 0);
  posix_spawn_file_actions_adddup2(&files, pictureCopy, pictureDescriptor);
  posix_spawn_file_actions_adddup2(&files, readyCopy, readyDescriptor);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  // A session of its own: closing the terminal or stopping the tool's group must not take the picture away.
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
  std::array<char, sizeof holderArgument> argument{};
  std::copy(std::begin(holderArgument), std::end(holderArgument), argument.begin());
  std::array<char, 14> name{"screencapture"};
  char* const words[] = {name.data(), argument.data(), nullptr};
  pid_t process = 0;
  const int error = posix_spawn(&process, "/proc/self/exe", &files, &attributes, words, environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&files);
  close(pictureCopy);
  close(readyCopy);
  return error == 0;
}

}  // namespace

bool leaveOnClipboard(std::span<const std::uint8_t> png) {
  std::array<int, 2> ready{};
  const int picture = fileInMemory(png);
  if (picture < 0)
    return false;
  if (pipe2(ready.data(), O_CLOEXEC) != 0) {
    close(picture);
    return false;
  }
  const bool started = spawnHolder(picture, ready[1]);
  close(picture);
  close(ready[1]);
  // The holder writes its byte once it owns the clipboard; if it ends before, the pipe does too.
  char byte = 0;
  ssize_t count = -1;
  do {
    count = started ? read(ready[0], &byte, 1) : 0;
  } while (count < 0 && errno == EINTR);
  close(ready[0]);
  return count == 1;
}

int runClipboardHolder() {
  struct stat picture {};
  if (fstat(pictureDescriptor, &picture) != 0 || picture.st_size <= 0 || fcntl(readyDescriptor, F_GETFD) < 0)
    return wrongUseStatus;
  close_range(firstUnused, ~0U, 0);
  // Stays out of the way of whoever wants to unmount the folder that we were started in.
  if (chdir("/") != 0)
    return 1;
  const auto size = static_cast<std::size_t>(picture.st_size);
  void* const bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, pictureDescriptor, 0);
  close(pictureDescriptor);
  if (bytes == MAP_FAILED)
    return 1;
  std::optional<ClipboardOwner> owner = ClipboardOwner::take({static_cast<const std::uint8_t*>(bytes), size});
  if (!owner || write(readyDescriptor, "1", 1) != 1)
    return 1;
  close(readyDescriptor);
  owner->serve();
  return 0;
}

}  // namespace screencapture
