#pragma once

#include "platform/imaging/codecs/DecodeBounds.h"

#include <QByteArray>
#include <QFile>
#include <QImage>

#include <optional>

namespace platform {

/// Small images of the files that `ImageDecoder` reads, in the same form, without the whole picture in memory
/// where the format allows it: rows are reduced as they are decoded. Each pixel is the mean of the area that
/// it covers, in sRGB's own steps. Safe on any thread.
namespace Thumbnail {

/// At most `longestSide` pixels wide and high, at least 1 each way, never larger than the picture itself.
[[nodiscard]] std::optional<QImage> decode(const QByteArray& file, int longestSide,
                                           const DecodeBounds& bounds = {});
/// `path` is in the file system's own bytes.
[[nodiscard]] std::optional<QImage> read(const QByteArray& path, int longestSide,
                                         const DecodeBounds& bounds = {});
[[nodiscard]] inline std::optional<QImage> read(const QString& path, int longestSide,
                                                const DecodeBounds& bounds = {}) {
  return read(QFile::encodeName(path), longestSide, bounds);
}

}  // namespace Thumbnail
}  // namespace platform
