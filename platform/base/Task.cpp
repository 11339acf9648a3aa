#include "platform/base/Task.h"

#include <QProcess>

#include <utility>

namespace platform {
namespace {

TaskLauncher& launcherOverride() {
  static TaskLauncher launcher;
  return launcher;
}

}  // namespace

std::optional<QString> launch(const Task& task, std::function<void()> onTermination) {
  if (launcherOverride())
    return launcherOverride()(task, std::move(onTermination));

  // Without a parent: a QProcess that is destroyed takes its child with it.
  auto process = std::make_unique<QProcess>();
  process->setInputChannelMode(QProcess::ForwardedInputChannel);
  process->setProcessChannelMode(QProcess::ForwardedChannels);
  if (task.output == Task::Output::Discarded) {
    process->setProcessChannelMode(QProcess::SeparateChannels);
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
  }
  process->start(task.executable, task.arguments);
  if (!process->waitForStarted(-1))
    return process->errorString();
  QProcess* const running = process.release();
  QObject::connect(running, &QProcess::finished, running,
                   [running, onTermination = std::move(onTermination)] {
                     running->deleteLater();
                     onTermination();
                   });
  return std::nullopt;
}

TaskLauncherOverride::TaskLauncherOverride(TaskLauncher launcher)
    : previous(std::exchange(launcherOverride(), std::move(launcher))) {
}

TaskLauncherOverride::~TaskLauncherOverride() {
  launcherOverride() = std::move(previous);
}

}  // namespace platform
