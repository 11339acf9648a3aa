#include "platform/imaging/codecs/Premultiply.h"
#include "platform/imaging/codecs/encoding/Encoders.h"

#include <cstdint>
#include <cstring>
#include <limits>

namespace platform::encoding {
namespace {

constexpr std::uint32_t fileHeaderSize = 14;
constexpr std::uint32_t plainHeaderSize = 40;   // version 3 of the format
constexpr std::uint32_t alphaHeaderSize = 124;  // version 5
constexpr std::uint32_t pixelsPerMetre = 2835;  // 72 to the inch
constexpr std::uint32_t bitFields = 3;          // a mask for each channel tells where it lies
constexpr std::uint32_t sRgb = 0x73524742;      // "sRGB"
constexpr std::uint32_t perceptual = 4;

/// Appends numbers, the low byte first.
class Numbers {
 public:
  explicit Numbers(QByteArray& bytes) : to(bytes) {}
  Numbers& put16(std::uint32_t number) {
    to.append(static_cast<char>(number)).append(static_cast<char>(number >> 8));
    return *this;
  }
  Numbers& put32(std::uint32_t number) { return put16(number).put16(number >> 16); }

 private:
  QByteArray& to;
};

void writeHeader(QByteArray& file, const QImage& picture, Opacity opacity, std::uint32_t pixelBytes) {
  const bool plain = opacity == Opacity::Opaque;
  const std::uint32_t headerSize = plain ? plainHeaderSize : alphaHeaderSize;
  const std::uint32_t start = fileHeaderSize + headerSize;
  Numbers numbers(file);
  numbers.put16('B' | 'M' << 8).put32(start + pixelBytes).put32(0).put32(start);
  numbers.put32(headerSize)
      .put32(static_cast<std::uint32_t>(picture.width()))
      .put32(static_cast<std::uint32_t>(picture.height()));
  numbers.put16(1).put16(plain ? 24 : 32).put32(plain ? 0 : bitFields).put32(pixelBytes);
  numbers.put32(pixelsPerMetre).put32(pixelsPerMetre).put32(0).put32(0);
  if (plain)
    return;
  numbers.put32(0x00ff0000).put32(0x0000ff00).put32(0x000000ff).put32(0xff000000);
  numbers.put32(sRgb);
  for (int endpointOrGamma = 0; endpointOrGamma < 12; ++endpointOrGamma)
    numbers.put32(0);
  numbers.put32(perceptual).put32(0).put32(0).put32(0);
}

}  // namespace

std::optional<QByteArray> encodeBmp(const QImage& picture) {
  const Opacity opacity = opacityOf(picture);
  const auto width = static_cast<std::size_t>(picture.width());
  const auto height = static_cast<std::size_t>(picture.height());
  const std::size_t channels = opacity == Opacity::Opaque ? 3 : 4;
  const std::size_t rowSize = (channels * width + 3) / 4 * 4;
  const std::size_t size = rowSize * height;
  if (size > std::numeric_limits<std::uint32_t>::max() - fileHeaderSize - alphaHeaderSize)
    return std::nullopt;
  QByteArray file;
  writeHeader(file, picture, opacity, static_cast<std::uint32_t>(size));
  auto end = file.size();
  file.append(static_cast<qsizetype>(size), '\0');
  QByteArray straight(static_cast<qsizetype>(4 * width), '\0');
  for (int y = picture.height() - 1; y >= 0; --y, end += static_cast<qsizetype>(rowSize)) {
    std::memcpy(straight.data(), picture.constScanLine(y), 4 * width);
    auto* from = reinterpret_cast<std::uint8_t*>(straight.data());
    unpremultiply(from, width);
    auto* to = reinterpret_cast<std::uint8_t*>(file.data() + end);
    for (std::size_t x = 0; x < width; ++x, from += 4, to += channels) {
      to[0] = from[2];
      to[1] = from[1];
      to[2] = from[0];
      if (channels == 4)
        to[3] = from[3];
    }
  }
  return file;
}

}  // namespace platform::encoding
