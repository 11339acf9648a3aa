#include "app/capture/AppPaths.h"

#include "platform/base/Locations.h"
#include "platform/base/UserDefaults.h"

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
  const QString custom =
      UserDefaults::standard().string(QStringLiteral("storageDirectory")).value_or(QString());
  return created(custom.isEmpty() ? Locations::documents() + QStringLiteral("/Sorrel bottle")
                                  : Locations::expandingTilde(custom));
}

QUrl supportDirectory() {
  return created(platform::Locations::applicationSupport() + QStringLiteral("/Sorrel"));
}

}  // namespace sorrel::AppPaths
