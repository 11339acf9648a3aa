#include "tests/support/DecodedPng.h"

#include <png.h>

namespace testing_support {

std::optional<DecodedPng> DecodedPng::read(std::span<const std::uint8_t> file) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_memory(&image, file.data(), file.size()))
    return std::nullopt;
  DecodedPng result{static_cast<int>(image.width),
                    static_cast<int>(image.height),
                    static_cast<int>(PNG_IMAGE_SAMPLE_CHANNELS(image.format)),
                    {}};
  result.bytes.resize(PNG_IMAGE_SIZE(image));
  const bool isRead = png_image_finish_read(&image, nullptr, result.bytes.data(), 0, nullptr) != 0;
  const bool isSound = isRead && image.warning_or_error == 0;
  png_image_free(&image);
  return isSound ? std::optional(std::move(result)) : std::nullopt;
}

std::uint32_t DecodedPng::at(int x, int y) const {
  const std::uint8_t* pixel = &bytes[static_cast<std::size_t>((y * width + x) * channels)];
  return static_cast<std::uint32_t>(pixel[0] << 16 | pixel[1] << 8 | pixel[2]);
}

}  // namespace testing_support
