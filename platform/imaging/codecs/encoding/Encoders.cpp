#include "platform/imaging/codecs/encoding/Encoders.h"

#include "platform/imaging/codecs/ImageEncoder.h"

#include <cstdint>
#include <cstring>

namespace platform {

encoding::Opacity encoding::opacityOf(const QImage& picture) {
  for (int y = 0; y < picture.height(); ++y) {
    const auto* pixel = reinterpret_cast<const std::uint32_t*>(picture.constScanLine(y));
    std::uint32_t common = 0xffffffff;
    for (const std::uint32_t* const end = pixel + picture.width(); pixel != end; ++pixel)
      common &= *pixel;
    std::uint8_t bytes[4];
    std::memcpy(bytes, &common, 4);
    if (bytes[3] != 255)
      return Opacity::HasAlpha;
  }
  return Opacity::Opaque;
}

std::optional<QByteArray> ImageEncoder::encode(const QImage& picture, ImageFileType type) {
  const QImage pixels = picture.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
  if (pixels.isNull())
    return std::nullopt;
  switch (type) {
    case ImageFileType::Png:
      return encoding::encodePng(pixels);
    case ImageFileType::Jpeg:
      return encoding::encodeJpeg(pixels);
    case ImageFileType::Tiff:
      return encoding::encodeTiff(pixels);
    case ImageFileType::Gif:
      return encoding::encodeGif(pixels);
    case ImageFileType::Bmp:
      return encoding::encodeBmp(pixels);
  }
  return std::nullopt;
}

}  // namespace platform
