#pragma once

#include "platform/imaging/codecs/DecodeBounds.h"

#include <QByteArray>
#include <QFile>
#include <QImage>

#include <optional>

namespace platform {

/// Reads PNG, JPEG, TIFF, GIF (the first picture), BMP, WebP (the first picture) and HEIC, by content,
/// whatever the file is called.
///
/// A picture comes as `QImage::Format_RGBA8888_Premultiplied` in sRGB, upright: an embedded colour profile is
/// converted, as are the gamma and the primaries that a PNG tells, and an orientation applied. A file that is
/// damaged or over the bounds gives none, nor does one that lacks pixels: whoever saves or copies what they
/// see would lose the rest without a word. One cut short behind its last pixel lacks nothing. Safe on any
/// thread.
namespace ImageDecoder {

[[nodiscard]] std::optional<QImage> decode(const QByteArray& file, const DecodeBounds& bounds = {});
/// `path` is in the file system's own bytes.
[[nodiscard]] std::optional<QImage> read(const QByteArray& path, const DecodeBounds& bounds = {});
[[nodiscard]] inline std::optional<QImage> read(const QString& path, const DecodeBounds& bounds = {}) {
  return read(QFile::encodeName(path), bounds);
}

}  // namespace ImageDecoder
}  // namespace platform
