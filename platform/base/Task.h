#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace platform {

/// A program to run as a child process. It inherits the environment, the current folder and the standard
/// input.
struct Task {
  enum class Output { Inherited, Discarded };

  QString executable;
  QStringList arguments;
  Output output = Output::Inherited;
};

/// Starts the program.
///
/// Returns an error's description if it can't be started; `onTermination` is then never called. Otherwise
/// that is called once, on the main thread, after the child has ended in whatever way. The child outlives
/// this program if this program ends first.
[[nodiscard]] std::optional<QString> launch(const Task& task, std::function<void()> onTermination);

using TaskLauncher =
    std::function<std::optional<QString>(const Task& task, std::function<void()> onTermination)>;

/// Has `launcher` asked in place of the system while it lives.
class TaskLauncherOverride {
 public:
  explicit TaskLauncherOverride(TaskLauncher launcher);
  ~TaskLauncherOverride();
  TaskLauncherOverride(const TaskLauncherOverride&) = delete;
  TaskLauncherOverride& operator=(const TaskLauncherOverride&) = delete;

 private:
  TaskLauncher previous;
};

}  // namespace platform
