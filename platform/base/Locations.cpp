#include "platform/base/Locations.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <pwd.h>

namespace platform::Locations {
namespace {

/// The folder that the environment names, or else `usual` in the home folder. A relative path counts as none,
/// as the base directory rules have it; QStandardPaths would take it from wherever the program was started.
QString baseFolder(const char* variable, const QString& usual) {
  const QString named = qEnvironmentVariable(variable);
  return named.startsWith(u'/') ? QDir::cleanPath(named) : home() + u'/' + usual;
}

QString besideThePrograms(const QString& path) {
  return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../") + path);
}

}  // namespace

QString home() {
  return QDir::homePath();
}

QString documents() {
  return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

QString applicationSupport() {
  return baseFolder("XDG_DATA_HOME", QStringLiteral(".local/share"));
}

QString configuration() {
  return baseFolder("XDG_CONFIG_HOME", QStringLiteral(".config")) + QStringLiteral("/Sorrel");
}

QString state() {
  return baseFolder("XDG_STATE_HOME", QStringLiteral(".local/state")) + QStringLiteral("/Sorrel");
}

QString cache() {
  return baseFolder("XDG_CACHE_HOME", QStringLiteral(".cache")) + QStringLiteral("/Sorrel");
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

QString abbreviatingWithTilde(const QString& path) {
  const QString folder = home();
  const QString clean = QDir::cleanPath(path);
  const bool isInside = clean == folder || clean.startsWith(folder + u'/');
  return isInside ? u'~' + clean.sliced(folder.size()) : clean;
}

QString ownTool(const QString& name) {
  return besideThePrograms(QStringLiteral(SORREL_LIBEXEC_DIR "/") + name);
}

QString ownFile(const QString& name) {
  return besideThePrograms(QStringLiteral(SORREL_DATA_DIR "/") + name);
}

QString systemTool(const QString& path) {
  return QFileInfo(path).isExecutable() ? path : ownTool(QFileInfo(path).fileName());
}

}  // namespace platform::Locations
