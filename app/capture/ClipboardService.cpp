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

/// The bytes of a PNG file of the same picture: the file itself where it is one.
std::optional<QByteArray> pngOf(const QByteArray& file) {
  const auto bytes = std::span(reinterpret_cast<const std::uint8_t*>(file.constData()),
                               static_cast<std::size_t>(file.size()));
  // The smallest thumbnail is the cheapest way to see that all of the file can be decoded.
  if (platform::imageFormatOf(bytes) == platform::ImageFormat::Png)
    return platform::Thumbnail::decode(file, 1) ? std::optional(file) : std::nullopt;
  const auto picture = platform::ImageDecoder::decode(file);
  return picture ? platform::ImageEncoder::encode(*picture, platform::ImageFileType::Png) : std::nullopt;
}

std::optional<platform::PasteboardImage> imageWithContentsOf(const QByteArray& path) {
  const auto file = platform::FilePath::openToRead(path);
  if (!file || file->size() > platform::DecodeBounds().bytes)
    return std::nullopt;
  auto png = pngOf(file->readAll());
  return png ? std::optional(platform::PasteboardImage{std::move(*png)}) : std::nullopt;
}

}  // namespace

bool copy(const QUrl& url) {
  platform::Pasteboard::clearContents();
  std::vector<platform::PasteboardObject> objects;
  if (auto image = imageWithContentsOf(platform::FilePath::of(url)))
    objects.emplace_back(std::move(*image));
  objects.emplace_back(url);
  return platform::Pasteboard::writeObjects(objects);
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
