#include "platform/imaging/codecs/decoding/Decoders.h"

#include <algorithm>
#include <string_view>

namespace platform::decoding {
namespace {

using namespace std::string_view_literals;

/// Numbers of either byte order at an offset; 0 beyond the end.
struct Numbers {
  Bytes bytes;
  bool littleEndian;

  [[nodiscard]] std::uint32_t at(std::size_t offset, std::size_t size) const {
    if (offset > bytes.size() || size > bytes.size() - offset)
      return 0;
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < size; ++i)
      number = number << 8 | bytes[offset + (littleEndian ? size - 1 - i : i)];
    return number;
  }
};

}  // namespace

int exifOrientation(Bytes exif) {
  const auto startsWith = [&](std::string_view text) {
    return exif.size() >= text.size() &&
           std::equal(text.begin(), text.end(), exif.begin(),
                      [](char left, std::uint8_t right) { return static_cast<std::uint8_t>(left) == right; });
  };
  if (startsWith("Exif\0\0"sv))
    exif = exif.subspan(6);
  if (!startsWith("II*\0"sv) && !startsWith("MM\0*"sv))
    return 1;
  constexpr std::uint32_t orientationTag = 0x0112;
  constexpr std::size_t entrySize = 12;
  const Numbers numbers{exif, exif[0] == 'I'};
  const std::size_t directory = numbers.at(4, 4);
  const std::size_t count = numbers.at(directory, 2);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t entry = directory + 2 + i * entrySize;
    if (numbers.at(entry, 2) != orientationTag)
      continue;
    const std::uint32_t value = numbers.at(entry + 8, 2);
    return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
  }
  return 1;
}

}  // namespace platform::decoding
