#include "platform/base/Task.h"

#include "platform/base/Environment.h"

#include <QProcess>

#include <memory>
#include <utility>

namespace platform {
namespace {

Result<> launchChild(const Task& task, std::function<void()> onTermination) {
  // Without a parent: a QProcess that is destroyed takes its child with it.
  auto process = std::make_unique<QProcess>();
  process->setInputChannelMode(QProcess::ForwardedInputChannel);
  process->setProcessChannelMode(QProcess::ForwardedChannels);
  if (task.output == Task::Output::Discarded) {
    process->setProcessChannelMode(QProcess::SeparateChannels);
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
  }
  if (!task.language.isEmpty()) {
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(QStringLiteral("LANGUAGE"), task.language);
    process->setProcessEnvironment(variables);
  }
  process->start(task.executable, task.arguments);
  if (!process->waitForStarted(-1))
    return Error{process->errorString()};
  QProcess* const running = process.release();
  QObject::connect(running, &QProcess::finished, running,
                   [running, onTermination = std::move(onTermination)] {
                     running->deleteLater();
                     onTermination();
                   });
  return {};
}

}  // namespace

Result<> launch(const Task& task, std::function<void()> onTermination) {
  const auto launcher =
      Environment::shared<TaskLauncher>([] { return std::make_shared<TaskLauncher>(launchChild); });
  return (*launcher)(task, std::move(onTermination));
}

}  // namespace platform
