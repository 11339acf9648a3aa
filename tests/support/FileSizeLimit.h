#pragma once

#include <csignal>
#include <sys/resource.h>

namespace testing_support {

/// While it lives, no file can grow beyond `bytes`: a full disk, as far as a program can tell.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : previousHandler(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &previous);
    const rlimit limit{bytes, previous.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &previous);
    std::signal(SIGXFSZ, previousHandler);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit previous{};
  void (*previousHandler)(int);
};

}  // namespace testing_support
