#include "app/settings/WatermarkPresets.h"

#include "app/capture/AppPaths.h"
#include "platform/base/Directory.h"
#include "platform/base/Log.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <array>
#include <string_view>

namespace sorrel::WatermarkPresets {
namespace {

constexpr std::array<std::string_view, 4> imageExtensions{"png", "jpg", "jpeg", "tiff"};

bool hasImageExtension(std::string_view name) {
  return platform::hasExtension(name, imageExtensions);
}

QString uniquePath(const QString& name) {
  const QFileInfo file(name);
  const bool hasExtension = !file.completeBaseName().isEmpty() && !file.suffix().isEmpty();
  const QString base = directory().toLocalFile() + (hasExtension ? file.completeBaseName() : name);
  const QString extension = hasExtension ? file.suffix() : QStringLiteral("png");
  QString candidate = base + u'.' + extension;
  for (int number = 2; QFileInfo::exists(candidate); ++number)
    candidate = base + QStringLiteral(" (%1).").arg(number) + extension;
  return candidate;
}

}  // namespace

QUrl directory() {
  const QString path = AppPaths::supportDirectory().toLocalFile() + QStringLiteral("watermark-logos/");
  QDir().mkpath(path);
  return QUrl::fromLocalFile(path);
}

QList<QUrl> all() {
  QList<QUrl> presets;
  if (const auto entries = platform::newestFirst(directory().toLocalFile(), hasImageExtension))
    for (const auto& entry : *entries)
      presets << QUrl::fromLocalFile(entry.path);
  return presets;
}

std::optional<QUrl> add(const QUrl& source) {
  QFile file(source.toLocalFile());
  const QString target = uniquePath(source.fileName());
  if (!file.copy(target)) {
    platform::log(QStringLiteral("Sorrel preset add failed: ") + file.errorString());
    return std::nullopt;
  }
  return QUrl::fromLocalFile(target);
}

void remove(const QUrl& preset) {
  QFile::remove(preset.toLocalFile());
}

}  // namespace sorrel::WatermarkPresets
