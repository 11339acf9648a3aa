#include "platform/base/TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace platform {
namespace {

// A signal handler may do next to nothing; writing a byte for the event loop to find is allowed. The signals
// aren't blocked in favour of a signalfd, since child processes would inherit that.
int pipeEnds[2] = {-1, -1};

void writeByte(int) {
  const int savedError = errno;
  const char anything = 0;
  [[maybe_unused]] const auto written = ::write(pipeEnds[1], &anything, 1);
  errno = savedError;
}

}  // namespace

void handleTerminationSignals(std::function<void()> handler) {
  if (pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
    return;  // the signals then end the program in the system's own way
  auto* notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, QCoreApplication::instance());
  QObject::connect(notifier, &QSocketNotifier::activated, notifier, [notifier, handler = std::move(handler)] {
    notifier->setEnabled(false);
    handler();
  });
  struct sigaction action {};
  action.sa_handler = writeByte;
  action.sa_flags = SA_RESTART;
  for (const int signal : {SIGTERM, SIGINT, SIGHUP})
    sigaction(signal, &action, nullptr);
}

}  // namespace platform
