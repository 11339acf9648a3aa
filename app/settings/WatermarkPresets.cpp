#include "app/settings/WatermarkPresets.h"

#include "app/capture/AppPaths.h"
#include "platform/base/Directory.h"
#include "platform/base/FilePath.h"
#include "platform/base/Log.h"

#include <QDir>
#include <QSaveFile>

#include <array>
#include <string_view>
#include <unistd.h>

namespace sorrel::WatermarkPresets {

namespace FilePath = platform::FilePath;

namespace {

constexpr std::array<std::string_view, 4> imageExtensions{"png", "jpg", "jpeg", "tiff"};

bool hasImageExtension(std::string_view name) {
  return platform::hasExtension(name, imageExtensions);
}

/// File systems end names at 255 bytes, some of which a number and the copy's unfinished name need.
constexpr qsizetype longestName = 240;

QByteArray uniquePath(const QByteArray& name) {
  QString base = FilePath::text(FilePath::baseName(name));
  QByteArray extension = name.sliced(FilePath::baseName(name).size());
  if (extension.size() < 2)
    extension = name.endsWith('.') ? "..png" : ".png";
  while (!base.isEmpty() && base.toUtf8().size() + extension.size() > longestName)
    base.chop(base.back().isLowSurrogate() ? 2 : 1);
  return FilePath::firstFree(FilePath::of(directory()) + base.toUtf8() + extension);
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
      presets << FilePath::url(entry.path);
  return presets;
}

std::optional<QUrl> add(const QUrl& source) {
  const QByteArray path = FilePath::of(source);
  const auto file = FilePath::openToRead(path);
  const QString reason = file ? QString() : qt_error_string();
  const QByteArray target = uniquePath(FilePath::text(FilePath::name(path)).toUtf8());
  QSaveFile copy(FilePath::text(target));
  if (file && copy.open(QIODevice::WriteOnly) && copy.write(file->readAll()) >= 0 && copy.commit())
    return FilePath::url(target);
  platform::log(QStringLiteral("Sorrel preset add failed: ") + (file ? copy.errorString() : reason));
  return std::nullopt;
}

void remove(const QUrl& preset) {
  unlink(FilePath::of(preset).constData());
}

}  // namespace sorrel::WatermarkPresets
