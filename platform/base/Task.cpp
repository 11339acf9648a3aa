#include "platform/base/Task.h"

#include "platform/base/Environment.h"

#include <QProcess>

#include <memory>
#include <utility>

namespace platform {
namespace {

Result<> start(QProcess& process, const Task& task) {
  process.setInputChannelMode(QProcess::ForwardedInputChannel);
  if (!task.language.isEmpty()) {
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(QStringLiteral("LANGUAGE"), task.language);
    process.setProcessEnvironment(variables);
  }
  process.start(task.executable, task.arguments);
  return process.waitForStarted(-1) ? Result<>() : Error{process.errorString()};
}

Result<> launchChild(const Task& task, std::function<void()> onTermination) {
  // Without a parent: a QProcess that is destroyed takes its child with it.
  auto process = std::make_unique<QProcess>();
  process->setProcessChannelMode(QProcess::ForwardedChannels);
  if (task.output == Task::Output::Discarded) {
    process->setProcessChannelMode(QProcess::SeparateChannels);
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
  }
  if (const auto started = start(*process, task); !started)
    return started;
  QProcess* const running = process.release();
  QObject::connect(running, &QProcess::finished, running,
                   [running, onTermination = std::move(onTermination)] {
                     running->deleteLater();
                     onTermination();
                   });
  return {};
}

Result<OwnedTask> askChild(const Task& task, std::function<void(const TaskAnswer&)> onAnswer) {
  auto process = std::make_unique<QProcess>();
  process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
  if (const auto started = start(*process, task); !started)
    return started.error();
  QProcess* const running = process.release();
  QObject::connect(
      running, &QProcess::finished, running,
      [running, onAnswer = std::move(onAnswer)](int status, QProcess::ExitStatus ending) {
        const bool isByItself = ending == QProcess::NormalExit;
        onAnswer({isByItself && status == 0, running->readAllStandardOutput(), isByItself ? status : -1});
      });
  // It may go during that call, so the process itself goes later.
  return OwnedTask(running, [](QProcess* ended) {
    ended->disconnect();
    ended->kill();
    ended->deleteLater();
  });
}

}  // namespace

Result<> launch(const Task& task, std::function<void()> onTermination) {
  const auto launcher =
      Environment::shared<TaskLauncher>([] { return std::make_shared<TaskLauncher>(launchChild); });
  return (*launcher)(task, std::move(onTermination));
}

Result<OwnedTask> ask(const Task& task, std::function<void(const TaskAnswer&)> onAnswer) {
  const auto asker = Environment::shared<TaskAsker>([] { return std::make_shared<TaskAsker>(askChild); });
  return (*asker)(task, std::move(onAnswer));
}

}  // namespace platform
