#include "bench/Running.h"

#include "tests/support/Waiting.h"

#include <QDir>
#include <QFile>

#include <chrono>
#include <signal.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace bench {

namespace {

double number(const QString& path, const char* field) {
  QFile file(path);
  if (file.open(QIODevice::ReadOnly))
    for (const QByteArray& line : file.readAll().split('\n'))
      if (line.startsWith(field))
        return line.mid(static_cast<qsizetype>(qstrlen(field))).trimmed().split(' ').first().toDouble();
  throw std::runtime_error("cannot read " + path.toStdString());
}

}  // namespace

Running::Running(const QString& program) {
  const QByteArray path = QFile::encodeName(program);
  char* arguments[] = {const_cast<char*>(path.constData()), nullptr};
  if (posix_spawn(&process, path.constData(), nullptr, nullptr, arguments, environ) != 0)
    throw std::runtime_error("cannot start " + path.toStdString());
}

Running::~Running() {
  kill(process, SIGKILL);
  waitpid(process, nullptr, 0);
}

double Running::proportionalSetSize() const {
  return number(folder() + QStringLiteral("/smaps_rollup"), "Pss:");
}

double Running::sleepsIn30Seconds(const std::function<void()>& use) const {
  std::this_thread::sleep_for(std::chrono::seconds(1));
  const QStringList first = threads();
  use();
  // Idle helpers of the toolkit's thread pool stay for half a minute.
  testing_support::until(
      "the threads that it used have ended", [&] { return threads() == first; }, std::chrono::seconds(60));
  std::this_thread::sleep_for(std::chrono::seconds(5));
  const double before = sleeps();
  std::this_thread::sleep_for(std::chrono::seconds(30));
  return sleeps() - before;
}

QString Running::folder() const {
  return QStringLiteral("/proc/%1").arg(process);
}

QStringList Running::threads() const {
  return QDir(folder() + QStringLiteral("/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
}

double Running::sleeps() const {
  double sum = 0;
  const QDir tasks(folder() + QStringLiteral("/task"));
  for (const QString& task : threads())
    sum += number(tasks.filePath(task) + QStringLiteral("/status"), "voluntary_ctxt_switches:");
  return sum;
}

}  // namespace bench
