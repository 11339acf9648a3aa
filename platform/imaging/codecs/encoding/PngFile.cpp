#include "platform/imaging/codecs/Premultiply.h"
#include "platform/imaging/codecs/encoding/Encoders.h"
#include "platform/imaging/png/PngEncoder.h"

#include <cstring>

namespace platform::encoding {
namespace {

constexpr ChannelLayout opaque{4, 0, 1, 2, ChannelLayout::none};
constexpr ChannelLayout withAlpha{4, 0, 1, 2, 3};

QByteArray bytesOf(const PngFile& file) {
  return {reinterpret_cast<const char*>(file.bytes.get()), static_cast<qsizetype>(file.size)};
}

}  // namespace

std::optional<QByteArray> encodePng(const QImage& picture) {
  const auto stride = static_cast<std::size_t>(picture.bytesPerLine());
  if (opacityOf(picture) == Opacity::Opaque) {
    const auto file =
        platform::encodePng({picture.constBits(), picture.width(), picture.height(), stride, opaque});
    return file ? std::optional(bytesOf(*file)) : std::nullopt;
  }
  auto encoder = PngEncoder::begin(picture.width(), picture.height(), withAlpha);
  if (!encoder)
    return std::nullopt;
  QByteArray row(4 * static_cast<qsizetype>(picture.width()), '\0');
  auto* straight = reinterpret_cast<std::uint8_t*>(row.data());
  for (int y = 0; y < picture.height(); ++y) {
    std::memcpy(straight, picture.constScanLine(y), static_cast<std::size_t>(row.size()));
    unpremultiply(straight, static_cast<std::size_t>(picture.width()));
    encoder->addRows(straight, stride, 1);
  }
  const auto file = encoder->finish();
  return file ? std::optional(bytesOf(*file)) : std::nullopt;
}

}  // namespace platform::encoding
