#include "platform/imaging/codecs/decoding/WholePicture.h"

#include "platform/imaging/codecs/Premultiply.h"
#include "platform/imaging/png/LargeMemory.h"

#include <algorithm>
#include <cstdlib>

namespace platform::decoding {

void settle(std::uint8_t* row, int width, Alpha alpha, const std::optional<ColorConversion>& conversion) {
  const auto count = static_cast<std::size_t>(width);
  if (alpha == Alpha::Premultiplied && conversion)
    unpremultiply(row, count);
  if (conversion)
    conversion->convert(row, count);
  if (alpha == Alpha::Straight || (alpha == Alpha::Premultiplied && conversion)) {
    premultiply(row, count);
  } else if (alpha == Alpha::Premultiplied) {
    for (std::uint8_t* const end = row + 4 * count; row != end; row += 4)
      for (int channel = 0; channel < 3; ++channel)
        row[channel] = std::min(row[channel], row[3]);
  }
}

bool WholePicture::prepare() {
  const std::size_t stride = 4 * static_cast<std::size_t>(picture.width);
  auto memory = allocateLarge<std::uint8_t>(stride * static_cast<std::size_t>(picture.height));
  if (!memory)
    return false;
  pixels = memory.get();
  image =
      QImage(pixels, static_cast<int>(picture.width), static_cast<int>(picture.height),
             static_cast<qsizetype>(stride), QImage::Format_RGBA8888_Premultiplied, std::free, memory.get());
  if (!image.isNull())
    (void)memory.release();  // it is the picture's now
  conversion = ColorConversion::fromProfile(picture.profile);
  return !image.isNull();
}

std::uint8_t* WholePicture::row() {
  return pixels + rowsDone * image.bytesPerLine();
}

void WholePicture::finishRow() {
  settle(row(), image.width(), picture.alpha, conversion);
  ++rowsDone;
}

}  // namespace platform::decoding
