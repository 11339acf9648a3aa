#include "platform/base/Locations.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <pwd.h>

namespace platform::Locations {

QString home() {
  return QDir::homePath();
}

QString documents() {
  return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

QString applicationSupport() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
}

QString configuration() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + QStringLiteral("/Sorrel");
}

QString runtime() {
  return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + QStringLiteral("/Sorrel");
}

QString expandingTilde(const QString& path) {
  if (!path.startsWith(u'~'))
    return path;
  qsizetype end = path.indexOf(u'/');
  if (end < 0)
    end = path.size();
  const QString user = path.sliced(1, end - 1);
  if (user.isEmpty())
    return home() + path.sliced(end);
  const passwd* entry = getpwnam(user.toLocal8Bit().constData());
  return entry ? QString::fromLocal8Bit(entry->pw_dir) + path.sliced(end) : path;
}

QString systemTool(const QString& path) {
  if (QFileInfo(path).isExecutable())
    return path;
  const QDir programs(QCoreApplication::applicationDirPath());
  return QDir::cleanPath(
      programs.filePath(QStringLiteral("../" SORREL_LIBEXEC_DIR "/") + QFileInfo(path).fileName()));
}

}  // namespace platform::Locations
