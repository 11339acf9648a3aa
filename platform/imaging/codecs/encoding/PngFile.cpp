#include "platform/imaging/codecs/Premultiply.h"
#include "platform/imaging/codecs/encoding/Encoders.h"
#include "platform/imaging/png/PngEncoder.h"

#include <cstring>

namespace platform::encoding {
namespace {

constexpr ChannelLayout opaque{4, 0, 1, 2, ChannelLayout::none};
constexpr ChannelLayout withAlpha{4, 0, 1, 2, 3};

/// More effort than this costs more time than it saves bytes.
constexpr PngOptions options{2};

}  // namespace

std::optional<QByteArray> encodePng(const QImage& picture) {
  const Opacity opacity = opacityOf(picture);
  auto encoder = PngEncoder::begin(picture.width(), picture.height(),
                                   opacity == Opacity::Opaque ? opaque : withAlpha, options);
  if (!encoder)
    return std::nullopt;
  const auto stride = static_cast<std::size_t>(picture.bytesPerLine());
  if (opacity == Opacity::Opaque) {
    encoder->addRows(picture.constBits(), stride, picture.height());
  } else {
    QByteArray row(4 * static_cast<qsizetype>(picture.width()), '\0');
    auto* straight = reinterpret_cast<std::uint8_t*>(row.data());
    for (int y = 0; y < picture.height(); ++y) {
      std::memcpy(straight, picture.constScanLine(y), static_cast<std::size_t>(row.size()));
      unpremultiply(straight, static_cast<std::size_t>(picture.width()));
      encoder->addRows(straight, stride, 1);
    }
  }
  const auto file = encoder->finish();
  if (!file)
    return std::nullopt;
  return QByteArray(reinterpret_cast<const char*>(file->bytes.get()), static_cast<qsizetype>(file->size));
}

}  // namespace platform::encoding
