#include "platform/input/DesktopHotKeys.h"

#include "platform/base/Locations.h"
#include "platform/input/KdeHotKeys.h"
#include "platform/input/XfceHotKeys.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>

namespace platform {
namespace {

using namespace Qt::StringLiterals;

constexpr qint64 longestFile = 1 << 20;
constexpr int longestWaitMilliseconds = 500;

QByteArray contentsOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.read(longestFile) : QByteArray();
}

/// The user's file of that name among the configuration, and the first of the system's.
struct ConfigurationFiles {
  QByteArray user;
  QByteArray system;
};

ConfigurationFiles configurationFiles(const QString& name) {
  const QStringList folders = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
  ConfigurationFiles files;
  files.user = contentsOf(folders.first() + u'/' + name);
  for (const QString& folder : folders.sliced(1))
    if (files.system.isEmpty())
      files.system = contentsOf(folder + u'/' + name);
  return files;
}

/// Desktops that keep their settings in GSettings have them read by a tool of ours: what reads them would
/// stay in this program with a thread and a connection of its own. Where the tool fails, none of their hot
/// keys counts as taken, as where they have no schemas.
std::function<QStringList()> readGSettings(const QString& desktop) {
  const auto tool = std::make_shared<QProcess>();
  tool->setProcessChannelMode(QProcess::SeparateChannels);
  tool->start(Locations::ownTool(u"accelerators"_s), {desktop}, QIODevice::ReadOnly);
  return [tool] {
    if (!tool->waitForFinished(longestWaitMilliseconds)) {
      tool->kill();
      tool->waitForFinished();
      return QStringList();
    }
    return QString::fromUtf8(tool->readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
  };
}

QStringList readKde() {
  const ConfigurationFiles files = configurationFiles(u"kglobalshortcutsrc"_s);
  return kdeAccelerators(files.user.isEmpty() ? files.system : files.user);
}

QStringList readXfce() {
  const ConfigurationFiles files =
      configurationFiles(u"xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml"_s);
  return xfceAccelerators(files.system, files.user);
}

}  // namespace

HotKeyDesktop hotKeyDesktop(const QString& sessionNames) {
  static const QHash<QString, HotKeyDesktop> names{
      {u"gnome"_s, HotKeyDesktop::Gnome},       {u"unity"_s, HotKeyDesktop::Gnome},
      {u"cinnamon"_s, HotKeyDesktop::Cinnamon}, {u"x-cinnamon"_s, HotKeyDesktop::Cinnamon},
      {u"mate"_s, HotKeyDesktop::Mate},         {u"kde"_s, HotKeyDesktop::Kde},
      {u"plasma"_s, HotKeyDesktop::Kde},        {u"xfce"_s, HotKeyDesktop::Xfce}};
  for (const QString& name : sessionNames.split(u':'))
    if (const auto found = names.constFind(name.toLower()); found != names.constEnd())
      return *found;
  return HotKeyDesktop::None;
}

HotKeyDesktop runningHotKeyDesktop() {
  for (const char* variable : {"XDG_CURRENT_DESKTOP", "XDG_SESSION_DESKTOP", "DESKTOP_SESSION"})
    if (const auto found = hotKeyDesktop(qEnvironmentVariable(variable)); found != HotKeyDesktop::None)
      return found;
  return HotKeyDesktop::None;
}

std::function<QStringList()> readAccelerators(HotKeyDesktop desktop) {
  switch (desktop) {
    case HotKeyDesktop::Gnome:
      return readGSettings(u"gnome"_s);
    case HotKeyDesktop::Cinnamon:
      return readGSettings(u"cinnamon"_s);
    case HotKeyDesktop::Mate:
      return readGSettings(u"mate"_s);
    case HotKeyDesktop::Kde:
      return readKde;
    case HotKeyDesktop::Xfce:
      return readXfce;
    case HotKeyDesktop::None:
      break;
  }
  return [] { return QStringList(); };
}

}  // namespace platform
