// Any bytes, decoded whole and as a thumbnail: no image, or one of the promised form.

#include "platform/imaging/codecs/ImageDecoder.h"
#include "platform/imaging/codecs/Thumbnail.h"

#include <algorithm>
#include <cstdlib>

namespace {

void check(const std::optional<QImage>& image) {
  if (image && (image->isNull() || image->format() != QImage::Format_RGBA8888_Premultiplied))
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // Small, so that many are tried in a second.
  constexpr platform::DecodeBounds bounds{1 << 18, 1 << 22};
  constexpr int longestSide = 16;
  const QByteArray file(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
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
