#include "tests/tools/screencapture/Child.h"

#include <chrono>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <signal.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr std::chrono::seconds patience{20};
constexpr unsigned glanceMicroseconds = 500;

/// Of any child for -1. Gives its status, or -1 as documented.
int waitFor(pid_t process, bool& ended) {
  const auto end = std::chrono::steady_clock::now() + patience;
  int status = 0;
  do {
    const pid_t result = waitpid(process, &status, WNOHANG);
    ended = result > 0;
    if (ended)
      return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    usleep(glanceMicroseconds);
  } while (std::chrono::steady_clock::now() < end);
  return -1;
}

}  // namespace

Child::Child(const std::vector<std::string>& words, const std::string& display, const std::string& errorFile)
    : errorPath(errorFile) {
  process = fork();
  if (process < 0)
    throw std::runtime_error("can't fork");
  if (process > 0)
    return;
  if (display.empty())
    unsetenv("DISPLAY");
  else
    setenv("DISPLAY", display.c_str(), 1);
  dup2(open(errorPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
  std::vector<char*> arguments;
  for (const std::string& word : words)
    arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  execvp(arguments[0], arguments.data());
  _exit(127);
}

Child::~Child() {
  if (process <= 0)
    return;
  ::kill(process, SIGKILL);
  waitpid(process, nullptr, 0);
}

int Child::wait() {
  bool ended = false;
  const int status = waitFor(process, ended);
  if (ended)
    process = -1;
  return status;
}

void Child::kill(int signal) {
  ::kill(process, signal);
}

bool Child::isRunning() {
  siginfo_t info{};
  return process > 0 && waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
         info.si_pid == 0;
}

std::string Child::errors() const {
  std::ifstream file(errorPath);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

int waitForOrphan() {
  bool ended = false;
  return waitFor(-1, ended);
}
