#pragma once

#include "platform/base/Result.h"

#include <QString>
#include <QStringList>

#include <functional>

namespace platform {

/// A program to run as a child process. It inherits the environment, the current folder and the standard
/// input.
struct Task {
  enum class Output { Inherited, Discarded };

  QString executable;
  QStringList arguments;
  Output output = Output::Inherited;
  /// The language that it is to speak, as "ko"; empty: the desktop's.
  QString language = {};
};

/// Starts the program, and calls `onTermination` once, on the main thread, after the child has ended in
/// whatever way; never, if it can't be started. The child outlives this program if this program ends first.
Result<> launch(const Task& task, std::function<void()> onTermination);

/// What does it: the environment's own launcher, or else the system.
using TaskLauncher = std::function<Result<>(const Task& task, std::function<void()> onTermination)>;

}  // namespace platform
