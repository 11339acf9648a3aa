#include "tests/support/ScratchHome.h"

#include "tests/support/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace testing_support {

ScratchHome::ScratchHome() {
  const auto set = [this](const char* name, const QString& value) {
    saved.emplace_back(name, qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt);
    qputenv(name, QFile::encodeName(value));
  };
  set("HOME", folder.path());
  set("XDG_CONFIG_HOME", path(QStringLiteral(".config")));
  set("XDG_DATA_HOME", path(QStringLiteral(".local/share")));
  set("XDG_STATE_HOME", path(QStringLiteral(".local/state")));
  set("XDG_CACHE_HOME", path(QStringLiteral(".cache")));
  set("XDG_RUNTIME_DIR", path(QStringLiteral(".runtime")));
  QDir().mkpath(path(QStringLiteral(".runtime")));
  QFile::setPermissions(path(QStringLiteral(".runtime")),
                        QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  environment.emplace();
}

ScratchHome::~ScratchHome() {
  environment.reset();
  for (auto entry = saved.rbegin(); entry != saved.rend(); ++entry) {
    if (entry->second)
      qputenv(entry->first.constData(), *entry->second);
    else
      qunsetenv(entry->first.constData());
  }
}

void ScratchHome::restart() {
  environment.reset();
  environment.emplace();
}

QString ScratchHome::path(const QString& relative) const {
  return relative.isEmpty() ? folder.path() : folder.filePath(relative);
}

QString ScratchHome::write(const QString& relative, const QByteArray& contents) const {
  const QString file = path(relative);
  writeFile(file, contents);
  return file;
}

}  // namespace testing_support
