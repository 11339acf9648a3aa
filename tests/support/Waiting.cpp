#include "tests/support/Waiting.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

#include <stdexcept>

namespace testing_support {

void until(const std::string& what, const std::function<bool()>& holds, std::chrono::milliseconds limit) {
  const QDeadlineTimer deadline(limit);
  while (!holds()) {
    if (deadline.hasExpired())
      throw std::runtime_error("waited in vain until " + what);
    QCoreApplication::processEvents();
    QThread::msleep(2);
  }
}

}  // namespace testing_support
