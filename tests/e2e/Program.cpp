#include "tests/e2e/Program.h"

#include "tests/e2e/Waiting.h"

#include <QDir>
#include <QFile>

#include <signal.h>
#include <stdexcept>
#include <sys/prctl.h>

namespace e2e {

QList<qint64> childrenOf(qint64 process) {
  QList<qint64> children;
  for (const QString& thread :
       QDir(QStringLiteral("/proc/%1/task").arg(process)).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    QFile list(QStringLiteral("/proc/%1/task/%2/children").arg(process).arg(thread));
    if (!list.open(QIODevice::ReadOnly))
      continue;
    for (const QByteArray& child : list.readAll().simplified().split(' ')) {
      if (!child.isEmpty())
        children << child.toLongLong();
    }
  }
  return children;
}

Program::Program(const QStringList& command, const QProcessEnvironment& environment) : name(command.first()) {
  process.setProcessEnvironment(environment);
  process.setWorkingDirectory(environment.value(QStringLiteral("HOME")));
  process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
  process.start(command.first(), command.sliced(1));
  if (!process.waitForStarted())
    throw std::runtime_error(name.toStdString() + " does not start: " + process.errorString().toStdString());
}

Program::~Program() {
  process.terminate();
  if (!process.waitForFinished(5000)) {
    process.kill();
    process.waitForFinished();
  }
}

QByteArray Program::output() {
  return written += process.readAllStandardOutput();
}

QByteArray Program::errors() {
  return complained += process.readAllStandardError();
}

void Program::send(int signal) {
  ::kill(static_cast<pid_t>(processId()), signal);
}

int Program::waitForEnd() {
  until(name.toStdString() + " has ended", [this] { return !isRunning(); });
  return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -process.exitCode();
}

}  // namespace e2e
