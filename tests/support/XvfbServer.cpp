#include "tests/support/XvfbServer.h"

#include <array>
#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace testing_support {

namespace {

constexpr int startTimeoutMilliseconds = 30'000;

[[noreturn]] void runServer(std::vector<std::string> words) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
  dup2(null, STDOUT_FILENO);
  dup2(null, STDERR_FILENO);
  std::vector<char*> arguments;
  for (std::string& word : words)
    arguments.push_back(word.data());
  arguments.push_back(nullptr);
  execvp(arguments[0], arguments.data());
  _exit(127);
}

/// The display's number, which the server writes with a newline once it takes connections; empty on failure.
std::string readNumber(int descriptor) {
  std::string number;
  pollfd waiting{descriptor, POLLIN, 0};
  while (number.find('\n') == std::string::npos) {
    std::array<char, 16> buffer{};
    if (poll(&waiting, 1, startTimeoutMilliseconds) <= 0)
      return {};
    const ssize_t count = read(descriptor, buffer.data(), buffer.size());
    if (count <= 0)
      return {};
    number.append(buffer.data(), static_cast<std::size_t>(count));
  }
  return number.substr(0, number.find('\n'));
}

}  // namespace

XvfbServer::XvfbServer(int width, int height, int depth, const std::vector<std::string>& options) {
  const std::string screen =
      std::to_string(width) + "x" + std::to_string(height) + "x" + std::to_string(depth);
  std::array<int, 2> ready{};
  if (pipe(ready.data()) != 0)
    throw std::runtime_error("no pipe for the X server");
  std::vector<std::string> words{
      "Xvfb", "-displayfd", std::to_string(ready[1]), "-screen", "0", screen, "-noreset", "-nolisten", "tcp"};
  words.insert(words.end(), options.begin(), options.end());
  process = fork();
  if (process == 0) {
    close(ready[0]);
    runServer(std::move(words));
  }
  close(ready[1]);
  const std::string number = process > 0 ? readNumber(ready[0]) : std::string();
  close(ready[0]);
  if (number.empty()) {
    kill();
    throw std::runtime_error("Xvfb did not start");
  }
  name = ":" + number;
}

XvfbServer::~XvfbServer() {
  kill();
}

void XvfbServer::kill() {
  if (process <= 0)
    return;
  // A server that is asked politely removes its socket and its lock; it has no other state to lose.
  ::kill(process, SIGTERM);
  waitpid(process, nullptr, 0);
  process = -1;
}

}  // namespace testing_support
