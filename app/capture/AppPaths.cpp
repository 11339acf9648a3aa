#include "app/capture/AppPaths.h"

#include "app/settings/SettingsKeys.h"
#include "platform/base/Locations.h"

#include <QDir>

namespace sorrel::AppPaths {
namespace {

QUrl created(const QString& path) {
  QDir folder(path);
  folder.mkpath(QStringLiteral("."));
  return QUrl::fromLocalFile(folder.absolutePath() + u'/');
}

}  // namespace

QUrl bottleDirectory() {
  using namespace platform;
  const QString custom = UserDefaults::standard().value(SettingsKeys::storageDirectory);
  return created(custom.isEmpty() ? Locations::documents() + QStringLiteral("/Sorrel bottle")
                                  : Locations::expandingTilde(custom));
}

QUrl supportDirectory() {
  return created(platform::Locations::applicationSupport() + QStringLiteral("/Sorrel"));
}

}  // namespace sorrel::AppPaths
