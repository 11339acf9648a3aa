#pragma once

#include "platform/base/Result.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

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

/// What came of a child that was asked something.
struct TaskAnswer {
  bool isGood = false;  // it ended by itself, with the status 0
  QByteArray output;    // all that it wrote on its standard output
  int status = -1;      // its exit status; -1 where it didn't end by itself
};

/// A child that belongs to somebody. When the last of these goes before the child has ended, the child is
/// killed and nothing more is heard of it.
using OwnedTask = std::shared_ptr<void>;

/// Starts a program for what it writes on its standard output, and calls `onAnswer` once, on the main thread
/// and after this has returned, when it has ended in whatever way; never, if it can't be started.
Result<OwnedTask> ask(const Task& task, std::function<void(const TaskAnswer&)> onAnswer);

/// What does it, as above.
using TaskAsker =
    std::function<Result<OwnedTask>(const Task& task, std::function<void(const TaskAnswer&)> onAnswer)>;

}  // namespace platform
