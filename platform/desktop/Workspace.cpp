#include "platform/desktop/Workspace.h"

#include "platform/base/Locations.h"
#include "platform/base/Task.h"
#include "platform/desktop/DesktopEntry.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

namespace platform::Workspace {
namespace {

/// The text of a ".directory" file with its icon set to `icon`; everything else in it as it was.
QString withIcon(const QString& contents, const QString& icon) {
  static const QString group = QStringLiteral("[Desktop Entry]");
  const QString entry = QStringLiteral("Icon=") + icon;
  QStringList lines = contents.isEmpty() ? QStringList{group} : contents.split(u'\n');
  if (lines.last().isEmpty())
    lines.removeLast();
  qsizetype start = lines.indexOf(group);
  if (start < 0) {
    start = lines.size();
    lines << group;
  }
  for (qsizetype at = start + 1; at < lines.size() && !lines[at].startsWith(u'['); ++at) {
    if (lines[at].startsWith(QStringLiteral("Icon="))) {
      lines[at] = entry;
      return lines.join(u'\n') + u'\n';
    }
  }
  lines.insert(start + 1, entry);
  return lines.join(u'\n') + u'\n';
}

/// Puts the image where file managers can read it, and returns its path; empty if the program has no such
/// image.
QString imageOnDisk(const QString& imageName) {
  const QString name = imageName + QStringLiteral(".svg");
  QFile image(QStringLiteral(":/sorrel/images/") + name);
  if (!image.open(QIODevice::ReadOnly))
    return {};
  const QByteArray bytes = image.readAll();
  const QString folder = Locations::applicationSupport() + QStringLiteral("/Sorrel/folder-icons");
  QString path = folder + u'/' + name;
  QFile present(path);
  if (present.open(QIODevice::ReadOnly) && present.readAll() == bytes)
    return path;
  QDir().mkpath(folder);
  QSaveFile out(path);
  const bool isWritten = out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size() && out.commit();
  return isWritten ? path : QString();
}

constexpr int busPatience = 500;  // milliseconds; the bus itself answers, and at once

/// The path of the entry NAME below the folder; empty if there is none.
QString findEntry(const QString& folder, const QString& name) {
  const QString path = folder + u'/' + name;
  if (QFileInfo(path).isFile())
    return path;
  for (qsizetype dash = name.indexOf(u'-'); dash >= 0; dash = name.indexOf(u'-', dash + 1)) {
    const QString below = folder + u'/' + name.first(dash);
    if (dash == 0 || !QFileInfo(below).isDir())
      continue;
    if (const QString found = findEntry(below, name.sliced(dash + 1)); !found.isEmpty())
      return found;
  }
  return {};
}

/// Whether the desktop entry at the path says of itself that it counts as removed, or is none.
bool isHidden(const QString& path) {
  const std::optional<DesktopEntry> entry = DesktopEntry::read(path);
  return !entry || entry->value("Hidden") == "true";
}

}  // namespace

void open(const QUrl& url) {
  QDesktopServices::openUrl(url);
}

bool isRunning(const QString& busName) {
  const QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected())
    return false;
  QDBusMessage question = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
      QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
  question << busName;
  const QDBusReply<bool> answer = bus.call(question, QDBus::Block, busPatience);
  return answer.isValid() && answer.value();
}

bool isInstalled(const QString& identifier) {
  QStringList folders = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
  folders.replace(0, Locations::applicationSupport());
  for (const QString& folder : folders) {
    const QString entry =
        findEntry(folder + QStringLiteral("/applications"), identifier + QStringLiteral(".desktop"));
    if (!entry.isEmpty())
      return !isHidden(entry);
  }
  return false;
}

bool setIcon(const QString& imageName, const QString& folder) {
  const QString icon = imageOnDisk(imageName);
  if (icon.isEmpty())
    return false;

  const QString directoryFile = QDir(folder).filePath(QStringLiteral(".directory"));
  QFile present(directoryFile);
  const QByteArray before = present.open(QIODevice::ReadOnly) ? present.readAll() : QByteArray();
  const QByteArray after = withIcon(QString::fromUtf8(before), icon).toUtf8();
  if (after == before)
    return true;  // all of it was done at an earlier time
  QSaveFile out(directoryFile);
  if (!out.open(QIODevice::WriteOnly) || out.write(after) != after.size() || !out.commit())
    return false;

  if (const QString gio = QStandardPaths::findExecutable(QStringLiteral("gio")); !gio.isEmpty()) {
    const QStringList arguments{QStringLiteral("set"), folder, QStringLiteral("metadata::custom-icon"),
                                QUrl::fromLocalFile(icon).toString(QUrl::FullyEncoded)};
    // Not every file system keeps such metadata; the entry above stands either way.
    [[maybe_unused]] const auto launched = launch({gio, arguments, Task::Output::Discarded}, [] {});
  }
  return true;
}

}  // namespace platform::Workspace
