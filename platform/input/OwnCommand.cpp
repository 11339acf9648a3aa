#include "platform/input/OwnCommand.h"

#include "platform/input/DesktopHotKeys.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

namespace platform {
namespace {

using namespace Qt::StringLiterals;

QString quoted(const QString& path) {
  static const QRegularExpression plain(u"^[A-Za-z0-9_./+-]+$"_s);
  return plain.match(path).hasMatch() ? path : u'\'' + QString(path).replace(u"'"_s, u"'\\''"_s) + u'\'';
}

/// The first of these programs that is installed.
std::optional<Task> firstInstalled(const QStringList& programs, const QStringList& arguments) {
  for (const QString& program : programs)
    if (const QString path = QStandardPaths::findExecutable(program); !path.isEmpty())
      return Task{path, arguments, Task::Output::Discarded};
  return std::nullopt;
}

}  // namespace

QString ownCommand(const QString& option) {
  const QFileInfo program(QCoreApplication::applicationFilePath());
  const QFileInfo named(QStandardPaths::findExecutable(program.fileName()));
  const bool isInPath = named.exists() && named.canonicalFilePath() == program.canonicalFilePath();
  return quoted(isInPath ? program.fileName() : program.filePath()) + u' ' + option;
}

std::optional<Task> keyboardSettings() {
  switch (runningHotKeyDesktop()) {
    case HotKeyDesktop::Kde:
      return firstInstalled({u"systemsettings"_s, u"systemsettings5"_s}, {u"kcm_keys"_s});
    case HotKeyDesktop::Gnome:
      return firstInstalled({u"gnome-control-center"_s}, {u"keyboard"_s});
    default:
      return std::nullopt;
  }
}

}  // namespace platform
