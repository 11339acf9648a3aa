#include "platform/desktop/LoginItem.h"

#include "platform/base/Locations.h"
#include "platform/desktop/DesktopEntry.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace platform {
namespace {

const QString entryName = QStringLiteral("org.sorrel.Sorrel.desktop");

QString userFolder() {
  return QFileInfo(Locations::configuration()).path() + QStringLiteral("/autostart");
}

bool startsSomething(const QString& path) {
  const std::optional<DesktopEntry> entry = DesktopEntry::read(path);
  // The last one is how several desktops' own settings switch an entry off.
  if (!entry || entry->value("Exec").isEmpty() || entry->value("Hidden") == "true" ||
      entry->value("X-GNOME-Autostart-enabled") == "false")
    return false;
  const QString program = QString::fromUtf8(entry->value("TryExec").replace("\\\\", "\\"));
  return program.isEmpty() || !QStandardPaths::findExecutable(program).isEmpty();
}

/// Whether the system starts the program unless the user says otherwise.
bool isEnabledForAll() {
  // The first of them is the user's.
  const QStringList folders = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
  for (const QString& folder : folders.sliced(1)) {
    const QString path = folder + QStringLiteral("/autostart/") + entryName;
    if (QFileInfo::exists(path))
      return startsSomething(path);
  }
  return false;
}

const QByteArray entryThatHides = "[Desktop Entry]\nType=Application\nName=Sorrel\nHidden=true\n";

QByteArray entryThatStarts() {
  const QString program = QCoreApplication::applicationFilePath();
  return QStringLiteral(
             "[Desktop Entry]\nType=Application\nName=Sorrel\nIcon=org.sorrel.Sorrel\nTryExec=%1\nExec=%2\n")
      .arg(QString(program).replace(u'\\', QStringLiteral("\\\\")), DesktopEntry::quotedWord(program))
      .toUtf8();
}

Result<> removeFile(const QString& path) {
  QFile file(path);
  return !file.exists() || file.remove() ? Result<>() : Error{file.errorString()};
}

Result<> writeFile(const QString& path, const QByteArray& contents) {
  QDir().mkpath(QFileInfo(path).path());
  QSaveFile file(path);
  if (file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size() && file.commit())
    return {};
  return Error{file.errorString()};
}

}  // namespace

LoginItem::LoginItem(std::function<void()> whenChanged)
    : ownPath(userFolder() + u'/' + entryName),
      onChange(std::move(whenChanged)),
      file(ownPath, onChange),
      folder(userFolder(), [this] {
        file.arm();
        onChange();
      }) {
}

bool LoginItem::isEnabled() const {
  return QFileInfo::exists(ownPath) ? startsSomething(ownPath) : isEnabledForAll();
}

Result<> LoginItem::setEnabled(bool isWanted) {
  if (isWanted == isEnabledForAll())
    return removeFile(ownPath);
  return writeFile(ownPath, isWanted ? entryThatStarts() : entryThatHides);
}

}  // namespace platform
