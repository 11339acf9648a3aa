#pragma once

#include "platform/imaging/codecs/ImageFormat.h"

#include <QByteArray>
#include <QImage>

#include <optional>

namespace platform {

/// Makes a file's bytes of a picture in sRGB. Equal pictures give equal bytes. Safe on any thread.
///
/// PNG, TIFF and BMP keep every pixel, and alpha where there is any. JPEG is of quality 90 with full colour,
/// and stands on white where the picture is clear. GIF has up to 256 colours, dithered where those aren't
/// enough, and each pixel is either there or clear.
namespace ImageEncoder {

/// Absent if the picture is empty or larger than the format allows, or if there is not enough memory.
[[nodiscard]] std::optional<QByteArray> encode(const QImage& picture, ImageFileType type);

}  // namespace ImageEncoder
}  // namespace platform
