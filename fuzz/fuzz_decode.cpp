// Any bytes, decoded whole and as a thumbnail: no image, or one of the promised form.

#include "platform/imaging/codecs/ImageDecoder.h"
#include "platform/imaging/codecs/Thumbnail.h"

#include <algorithm>
#include <cstdlib>
#include <zlib.h>

namespace {

void check(const std::optional<QImage>& image) {
  if (image && (image->isNull() || image->format() != QImage::Format_RGBA8888_Premultiplied))
    std::abort();
}

/// Makes the checksums of a PNG file's chunks right, so that what is inside of them is tried.
void mendChecksums(QByteArray& file) {
  auto* bytes = reinterpret_cast<uint8_t*>(file.data());
  const auto size = static_cast<std::size_t>(file.size());
  const auto numberAt = [&](std::size_t at) {
    return std::size_t{bytes[at]} << 24 | std::size_t{bytes[at + 1]} << 16 | std::size_t{bytes[at + 2]} << 8 |
           bytes[at + 3];
  };
  for (std::size_t at = 8; at + 12 <= size && numberAt(at) <= size - at - 12; at += numberAt(at) + 12) {
    const std::size_t end = at + 8 + numberAt(at);
    const auto sum = crc32(0, bytes + at + 4, static_cast<uInt>(end - at - 4));
    for (std::size_t i = 0; i < 4; ++i)
      bytes[end + i] = static_cast<uint8_t>(sum >> (24 - 8 * i));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // Small, so that many are tried in a second.
  constexpr platform::DecodeBounds bounds{1 << 18, 1 << 22};
  constexpr int longestSide = 16;
  QByteArray file(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  if (file.startsWith("\x89PNG"))
    mendChecksums(file);
  const auto whole = platform::ImageDecoder::decode(file, bounds);
  check(whole);
  const auto thumbnail = platform::Thumbnail::decode(file, longestSide, bounds);
  check(thumbnail);
  if (whole.has_value() != thumbnail.has_value())
    std::abort();
  if (thumbnail && std::max(thumbnail->width(), thumbnail->height()) > longestSide)
    std::abort();
  return 0;
}
