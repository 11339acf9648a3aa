#include "tools/screencapture/Clipboard.h"

#include "tools/screencapture/Arguments.h"
#include "tools/screencapture/ClipboardForms.h"
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
constexpr int formsDescriptor = 3;
constexpr int readyDescriptor = 4;
constexpr unsigned firstUnused = 5;

/// Owns the number of an open file, or -1.
class Descriptor {
 public:
  explicit Descriptor(int opened) : number(opened) {}
  ~Descriptor() { close(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  operator int() const { return number; }
  void close() {
    if (number >= 0)
      ::close(number);
    number = -1;
  }

 private:
  int number;
};

int newFileInMemory() {
  return memfd_create("clipboard", MFD_CLOEXEC);
}

bool append(int file, std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR)
      continue;
    if (written <= 0)
      return false;
    bytes = bytes.subspan(static_cast<std::size_t>(written));
  }
  return true;
}

/// Reads to the end of `source`.
bool appendAll(int file, int source) {
  std::vector<std::uint8_t> buffer(1 << 16);
  for (;;) {
    const ssize_t count = read(source, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR)
      continue;
    if (count <= 0)
      return count == 0;
    if (!append(file, std::span(buffer).first(static_cast<std::size_t>(count))))
      return false;
  }
}

bool spawnHolder(int forms, int ready) {
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  // First out of the way of the numbers that they get: a copy onto itself would stay closed on exec.
  const int formsCopy = fcntl(forms, F_DUPFD_CLOEXEC, static_cast<int>(firstUnused));
  const int readyCopy = fcntl(ready, F_DUPFD_CLOEXEC, static_cast<int>(firstUnused));
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    posix_spawn_file_actions_addopen(&files, stream, "/dev/null", O_RDWR, 0);
  posix_spawn_file_actions_adddup2(&files, formsCopy, formsDescriptor);
  posix_spawn_file_actions_adddup2(&files, readyCopy, readyDescriptor);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  // A session of its own: closing the terminal or stopping the tool's group must not take the contents away.
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
  std::array<char, sizeof holderArgument> argument{};
  std::copy(std::begin(holderArgument), std::end(holderArgument), argument.begin());
  std::array<char, 14> name{"screencapture"};
  char* const words[] = {name.data(), argument.data(), nullptr};
  pid_t process = 0;
  const int error = posix_spawn(&process, "/proc/self/exe", &files, &attributes, words, environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&files);
  close(formsCopy);
  close(readyCopy);
  return error == 0;
}

bool leaveHolder(int forms) {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0)
    return false;
  const Descriptor ready(ends[0]);
  Descriptor holdersEnd(ends[1]);
  const bool started = spawnHolder(forms, holdersEnd);
  holdersEnd.close();
  // The holder writes its byte once it owns the clipboard; if it ends before, the pipe does too.
  char byte = 0;
  ssize_t count = -1;
  do {
    count = started ? read(ready, &byte, 1) : 0;
  } while (count < 0 && errno == EINTR);
  return count == 1;
}

}  // namespace

bool leaveOnClipboard(std::span<const std::uint8_t> png) {
  const Descriptor file(newFileInMemory());
  const std::string header = headerOf({"image/png", png});
  return file >= 0 && append(file, {reinterpret_cast<const std::uint8_t*>(header.data()), header.size()}) &&
         append(file, png) && leaveHolder(file);
}

bool leaveInputOnClipboard() {
  const Descriptor file(newFileInMemory());
  return file >= 0 && appendAll(file, STDIN_FILENO) && leaveHolder(file);
}

int runClipboardHolder() {
  struct stat file {};
  if (fstat(formsDescriptor, &file) != 0 || file.st_size <= 0 || fcntl(readyDescriptor, F_GETFD) < 0)
    return wrongUseStatus;
  close_range(firstUnused, ~0U, 0);
  // Stays out of the way of whoever wants to unmount the folder that we were started in.
  if (chdir("/") != 0)
    return 1;
  const auto size = static_cast<std::size_t>(file.st_size);
  void* const bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, formsDescriptor, 0);
  close(formsDescriptor);
  if (bytes == MAP_FAILED)
    return 1;
  const auto forms = parseForms({static_cast<const std::uint8_t*>(bytes), size});
  std::optional<ClipboardOwner> owner = forms ? ClipboardOwner::take(*forms) : std::nullopt;
  if (!owner || write(readyDescriptor, "1", 1) != 1)
    return 1;
  close(readyDescriptor);
  owner->serve();
  return 0;
}

}  // namespace screencapture
