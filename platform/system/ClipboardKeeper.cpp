#include "platform/system/ClipboardKeeper.h"

#include "platform/system/MappedFile.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace platform {

namespace {

/// The forms as one run of bytes in a file of its own, to be read from its start; not open on failure.
Descriptor fileOf(std::span<const ClipboardForm> forms) {
  Descriptor file = newFileInMemory("clipboard");
  if (!file.isOpen())
    return file;
  for (const ClipboardForm& form : forms) {
    if (writeAll(file.get(), bytesOf(headerOf(form))) != 0 || writeAll(file.get(), form.bytes) != 0)
      return Descriptor();
  }
  return lseek(file.get(), 0, SEEK_SET) == 0 ? std::move(file) : Descriptor();
}

/// The new process, or -1.
pid_t spawn(const std::string& program, int input) {
  posix_spawn_file_actions_t files;
  posix_spawn_file_actions_init(&files);
  posix_spawn_file_actions_adddup2(&files, input, STDIN_FILENO);
  posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t noSignals;
  sigemptyset(&noSignals);
  posix_spawnattr_setsigmask(&attributes, &noSignals);
  // A session of its own: closing the terminal or stopping our group must not take the contents away.
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK);
  std::string name = program;
  char* const words[] = {name.data(), nullptr};
  pid_t process = -1;
  const int error = posix_spawn(&process, name.c_str(), &files, &attributes, words, environ);
  posix_spawnattr_destroy(&attributes);
  posix_spawn_file_actions_destroy(&files);
  return error == 0 ? process : -1;
}

/// Whether the process ends in time and with success; one that doesn't end in time is ended.
bool succeeds(pid_t process, std::chrono::milliseconds patience) {
  const Descriptor watched(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
  pollfd ending{watched.get(), POLLIN, 0};
  int ready = -1;
  const auto deadline = std::chrono::steady_clock::now() + patience;
  do {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    ready = poll(&ending, 1, static_cast<int>(std::max(left.count(), std::chrono::milliseconds::rep{0})));
  } while (ready < 0 && errno == EINTR);
  if (ready <= 0)
    kill(process, SIGKILL);
  int status = -1;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

bool leaveOnClipboard(const std::string& keeper, std::span<const ClipboardForm> forms,
                      std::chrono::milliseconds patience) {
  const Descriptor file = fileOf(forms);
  const pid_t process = file.isOpen() ? spawn(keeper, file.get()) : -1;
  return process > 0 && succeeds(process, patience);
}

}  // namespace platform
