#include "app/capture/ClipboardService.h"

#include "app/capture/Quillon.h"
#include "app/settings/LocalizationManager.h"
#include "platform/base/FilePath.h"
#include "platform/base/Locations.h"
#include "platform/desktop/Pasteboard.h"
#include "platform/desktop/Workspace.h"
#include "platform/imaging/codecs/ImageDecoder.h"
#include "platform/imaging/codecs/ImageEncoder.h"
#include "platform/imaging/codecs/Thumbnail.h"

namespace sorrel::ClipboardService {
namespace {

/// A PNG file of the same picture: the file itself where it is one.
QByteArray pngOf(const QByteArray& file) {
  const auto bytes = std::span(reinterpret_cast<const std::uint8_t*>(file.constData()),
                               static_cast<std::size_t>(file.size()));
  if (platform::imageFormatOf(bytes) == platform::ImageFormat::Png)
    return file;
  const auto picture = platform::ImageDecoder::decode(file);
  const auto png =
      picture ? platform::ImageEncoder::encode(*picture, platform::ImageFileType::Png) : std::nullopt;
  return png.value_or(QByteArray());
}

/// The picture in a file, whose bytes are read now and converted, where they must be, when they are pasted.
std::optional<platform::PasteboardImage> imageWithContentsOf(const QByteArray& path) {
  const auto file = platform::FilePath::openToRead(path);
  if (!file || file->size() > platform::DecodeBounds().bytes)
    return std::nullopt;
  const QByteArray bytes = file->readAll();
  // The smallest thumbnail is the cheapest way to see that all of the file can be decoded.
  if (!platform::Thumbnail::decode(bytes, 1))
    return std::nullopt;
  return platform::PasteboardImage{[bytes] { return pngOf(bytes); }};
}

}  // namespace

void copy(const QUrl& url) {
  platform::Pasteboard::clearContents();
  std::vector<platform::PasteboardObject> objects;
  if (auto image = imageWithContentsOf(platform::FilePath::of(url)))
    objects.emplace_back(std::move(*image));
  objects.emplace_back(url);
  platform::Pasteboard::writeObjects(objects);
}

bool isQuillonRunning() {
  return platform::Workspace::isRunning(QString::fromLatin1(Quillon::identifier));
}

bool isQuillonInstalled() {
  return platform::Workspace::isInstalled(QString::fromLatin1(Quillon::identifier));
}

QString copyConfirmation() {
  return localized(isQuillonRunning() ? QStringLiteral("clipboard.copied.quillon")
                                      : QStringLiteral("clipboard.copied.plain"));
}

const QUrl& quillonPageURL() {
  static const QString page = QString::fromLatin1(Quillon::page);
  static const QUrl url =
      page.isEmpty() ? QUrl::fromLocalFile(platform::Locations::ownFile(QStringLiteral("quillon.html")))
                     : QUrl(page);
  return url;
}

}  // namespace sorrel::ClipboardService
