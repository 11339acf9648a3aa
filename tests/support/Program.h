#pragma once

#include <QProcess>
#include <QStringList>

namespace testing_support {

/// The processes that this one has started, also the ended ones that it hasn't taken note of.
[[nodiscard]] QList<qint64> childrenOf(qint64 process);

/// A program that runs for as long as this object lives, at the longest until the test program ends. Throws
/// std::runtime_error where it can't be started.
class Program {
 public:
  Program(const QStringList& command, const QProcessEnvironment& environment);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  [[nodiscard]] qint64 processId() const { return process.processId(); }
  [[nodiscard]] bool isRunning() const { return process.state() != QProcess::NotRunning; }
  /// All that it has written so far.
  [[nodiscard]] QByteArray output();
  [[nodiscard]] QByteArray errors();

  void send(int signal);
  /// Waits until it has ended; its exit status, or minus the signal that ended it.
  int waitForEnd();

 private:
  const QString name;
  QProcess process;
  QByteArray written;
  QByteArray complained;
};

}  // namespace testing_support
