#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace platform {

/// Starts a program as a child process, which inherits the environment, the current folder and the standard
/// streams.
///
/// Returns an error's description if the program can't be started; `onTermination` is then never called.
/// Otherwise it is called once, on the main thread, after the child has ended in whatever way. The child
/// outlives this program if this program ends first.
[[nodiscard]] std::optional<QString> launchTask(const QString& executable, const QStringList& arguments,
                                                std::function<void()> onTermination);

using TaskLauncher = std::function<std::optional<QString>(
    const QString& executable, const QStringList& arguments, std::function<void()> onTermination)>;

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
