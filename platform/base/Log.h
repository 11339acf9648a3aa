#pragma once

#include <QStringList>

#include <functional>

namespace platform {

/// Writes one line to the program's log, standard error. The log has no levels.
void log(const QString& line);

/// Writes one line to standard output and flushes it.
void printLine(const QString& line);

/// Takes over both roads above while it lives, so that a test can read what was said.
class LogCapture {
 public:
  LogCapture();
  ~LogCapture();
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  QStringList logged;
  QStringList printed;

 private:
  LogCapture* previous;
};

}  // namespace platform
