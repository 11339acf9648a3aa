#include "tests/support/Program.h"

#include "tests/support/Waiting.h"

#include <QDir>
#include <QFile>

#include <signal.h>
#include <stdexcept>
#include <sys/prctl.h>

using namespace Qt::StringLiterals;

namespace testing_support {

QList<qint64> childrenOf(qint64 process) {
  QList<qint64> children;
  for (const QString& thread :
       QDir(u"/proc/%1/task"_s.arg(process)).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    QFile list(u"/proc/%1/task/%2/children"_s.arg(process).arg(thread));
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
  process.setWorkingDirectory(environment.value(u"HOME"_s));
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

}  // namespace testing_support
