#pragma once

#include <QByteArray>
#include <QImage>

#include <optional>

namespace platform::encoding {

enum class Opacity { Opaque, HasAlpha };

/// Of a picture in `QImage::Format_RGBA8888_Premultiplied`, as all below.
[[nodiscard]] Opacity opacityOf(const QImage& picture);

/// One for each format.
[[nodiscard]] std::optional<QByteArray> encodePng(const QImage& picture);
[[nodiscard]] std::optional<QByteArray> encodeJpeg(const QImage& picture);
[[nodiscard]] std::optional<QByteArray> encodeTiff(const QImage& picture);
[[nodiscard]] std::optional<QByteArray> encodeGif(const QImage& picture);
[[nodiscard]] std::optional<QByteArray> encodeBmp(const QImage& picture);

}  // namespace platform::encoding
