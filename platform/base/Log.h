#pragma once

#include <QString>

#include <functional>

namespace platform {

/// Writes one line to the program's log, standard error. The log has no levels.
void log(const QString& line);

/// Writes one line to standard output and flushes it.
void printLine(const QString& line);

/// Where the two go: an environment's own roads, or else the streams. May be called from any thread.
struct LogRoads {
  std::function<void(const QString&)> log;
  std::function<void(const QString&)> print;
};

}  // namespace platform
