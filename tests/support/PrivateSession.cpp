#include "tests/support/PrivateSession.h"

#include "tests/support/Files.h"

#include <QDir>
#include <QFile>

#include <signal.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace testing_support {

namespace {

/// Nothing of the user's own session passes, only what a program needs to be found and to be examined.
QProcessEnvironment environmentOf(const QString& home) {
  const QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
  const QString data = QStringLiteral(SORREL_SESSION_DATA "/");
  QProcessEnvironment variables;
  for (const auto* kept : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS"}) {
    const QString name = QString::fromLatin1(kept);
    if (own.contains(name))
      variables.insert(name, own.value(name));
  }
  const auto set = [&](const char* name, const QString& value) {
    variables.insert(QString::fromLatin1(name), value);
  };
  set("HOME", home);
  // A test puts its doubles of programs there.
  set("PATH", home + u"/.local/bin:"_s + own.value(u"PATH"_s));
  set("XDG_CONFIG_HOME", home + u"/.config"_s);
  set("XDG_DATA_HOME", home + u"/.local/share"_s);
  set("XDG_CACHE_HOME", home + u"/.cache"_s);
  set("XDG_RUNTIME_DIR", home + u"/.runtime"_s);
  set("XDG_DATA_DIRS", data + u":/usr/local/share:/usr/share"_s);
  set("FONTCONFIG_FILE", data + u"fonts.conf"_s);
  set("NO_AT_BRIDGE", u"1"_s);
  set("LANG", u"en_US.UTF-8"_s);
  set("LANGUAGE", u"en"_s);
  return variables;
}

}  // namespace

PrivateSession::PrivateSession() {
  variables = environmentOf(folder.path());
  prctl(PR_SET_CHILD_SUBREAPER, 1);
  QDir(home()).mkdir(u".runtime"_s);
  QFile::setPermissions(home(u".runtime"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  bus = std::make_unique<PrivateBus>(variables);
  setVariable("DBUS_SESSION_BUS_ADDRESS", bus->address());
}

PrivateSession::~PrivateSession() {
  bus.reset();
  endPrograms();
}

void PrivateSession::endPrograms() {
  // Also those whose own parent has ended before them.
  for (;;) {
    const QList<qint64> children = childrenOf(getpid());
    if (children.isEmpty())
      return;
    for (const qint64 child : children) {
      kill(static_cast<pid_t>(child), SIGKILL);
      waitpid(static_cast<pid_t>(child), nullptr, 0);
    }
  }
}

void PrivateSession::setVariable(const char* name, const QString& value) {
  variables.insert(QString::fromLatin1(name), value);
}

std::unique_ptr<Program> PrivateSession::start(const QStringList& command) const {
  return std::make_unique<Program>(command, variables);
}

QByteArray PrivateSession::run(const QStringList& command) const {
  const std::unique_ptr<Program> program = start(command);
  if (program->waitForEnd() != 0)
    throw std::runtime_error(command.first().toStdString() + " failed: " + program->errors().toStdString());
  return program->output();
}

QString PrivateSession::home(const QString& relative) const {
  return relative.isEmpty() ? folder.path() : folder.filePath(relative);
}

QString PrivateSession::write(const QString& relative, const QByteArray& contents) const {
  const QString path = home(relative);
  writeFile(path, contents);
  return path;
}

}  // namespace testing_support
