#include "platform/imaging/PngEncoder.h"
#include "platform/imaging/Premultiply.h"
#include "platform/imaging/encoding/Encoders.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace platform::encoding {
namespace {

constexpr ChannelLayout opaque{4, 0, 1, 2, ChannelLayout::none};
constexpr ChannelLayout withAlpha{4, 0, 1, 2, 3};

/// The part of the pixels that are a little different from both the one to the left and the one above, as in
/// photographs and slopes of colour; in text and windows, pixels are equal to a neighbour or far from it.
/// Every eighth row is asked.
double smoothPart(const QImage& picture) {
  constexpr int step = 8, little = 16;
  const auto isLittle = [](const std::uint8_t* pixel, const std::uint8_t* neighbour) {
    int most = 0;
    for (int channel = 0; channel < 3; ++channel)
      most = std::max(most, std::abs(pixel[channel] - neighbour[channel]));
    return most > 0 && most <= little;
  };
  std::int64_t smooth = 0, asked = 0;
  for (int y = step / 2; y < picture.height(); y += step) {
    const std::uint8_t* pixel = picture.constScanLine(y) + 4;
    const std::uint8_t* above = picture.constScanLine(y - 1) + 4;
    for (int x = 1; x < picture.width(); ++x, pixel += 4, above += 4)
      smooth += isLittle(pixel, pixel - 4) && isLittle(pixel, above) ? 1 : 0;
    asked += picture.width() - 1;
  }
  return static_cast<double>(smooth) / static_cast<double>(std::max<std::int64_t>(1, asked));
}

/// Measured: without a filter, text and windows become smaller by a quarter and photographs larger by two
/// thirds; more effort than this costs more time than it saves bytes.
PngOptions optionsFor(const QImage& picture) {
  const double smooth = smoothPart(picture);
  if (smooth < 0.03)
    return {2, PngFilter::None};
  return smooth < 0.5 ? PngOptions{3, PngFilter::Up} : PngOptions{2, PngFilter::Average};
}

}  // namespace

std::optional<QByteArray> encodePng(const QImage& picture) {
  const Opacity opacity = opacityOf(picture);
  auto encoder = PngEncoder::begin(picture.width(), picture.height(),
                                   opacity == Opacity::Opaque ? opaque : withAlpha, optionsFor(picture));
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
