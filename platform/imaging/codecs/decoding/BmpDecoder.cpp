#include "platform/imaging/codecs/decoding/Decoders.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <vector>

namespace platform::decoding {
namespace {

enum Compression : std::uint32_t { Plain = 0, Runs8 = 1, Runs4 = 2, Masks = 3, MasksWithAlpha = 6 };

constexpr std::size_t fileHeaderSize = 14;
constexpr std::uint32_t oldHeaderSize = 12;

/// Any part of the file as a number, the low byte first; 0 beyond its end.
std::uint32_t numberAt(Bytes file, std::size_t offset, std::size_t size) {
  std::uint32_t number = 0;
  for (std::size_t i = size; i > 0; --i)
    number = number << 8 | (offset + i <= file.size() ? file[offset + i - 1] : 0U);
  return number;
}

/// Where a channel lies in a pixel's number, and what 8 bits its values become: the largest is 255.
class Channel {
 public:
  Channel() = default;
  explicit Channel(std::uint32_t channelMask) : mask(channelMask), shift(mask ? std::countr_zero(mask) : 0) {
    const std::uint32_t largest = mask >> shift;
    tooFine = std::max(0, static_cast<int>(std::bit_width(largest)) - 8);
    const std::uint32_t steps = largest >> tooFine;
    for (std::uint32_t value = 0; value <= steps; ++value)
      levels[value] = static_cast<std::uint8_t>(steps == 0 ? 0 : (value * 255 + steps / 2) / steps);
  }
  [[nodiscard]] bool isThere() const { return mask != 0; }
  [[nodiscard]] std::uint8_t operator()(std::uint32_t pixel) const {
    return levels[(pixel & mask) >> shift >> tooFine];
  }

 private:
  std::uint32_t mask = 0;
  int shift = 0;
  int tooFine = 0;  // bits beyond eight
  std::array<std::uint8_t, 256> levels{};
};

struct Header {
  std::int64_t width = 0;
  std::int64_t height = 0;
  bool topDown = false;
  std::uint32_t bitsPerPixel = 0;
  std::uint32_t compression = Plain;
  std::size_t pixels = 0;  // where they begin
  std::array<Channel, 4> channels;
  std::vector<std::array<std::uint8_t, 4>> palette;

  [[nodiscard]] bool hasRuns() const { return compression == Runs8 || compression == Runs4; }
  [[nodiscard]] std::size_t rowBits() const { return static_cast<std::size_t>(width) * bitsPerPixel; }
  [[nodiscard]] std::size_t stride() const { return (rowBits() + 31) / 32 * 4; }
};

void readMasks(Bytes file, std::uint32_t headerSize, Header& header) {
  const bool told = header.compression == Masks || header.compression == MasksWithAlpha;
  std::array<std::uint32_t, 4> masks{};
  if (told) {
    constexpr std::size_t place = fileHeaderSize + 40;
    for (std::size_t i = 0; i < 3; ++i)
      masks[i] = numberAt(file, place + 4 * i, 4);
    if (headerSize >= 56 || header.compression == MasksWithAlpha)
      masks[3] = numberAt(file, place + 12, 4);
  } else if (header.bitsPerPixel == 16) {
    masks = {0x7c00, 0x03e0, 0x001f, 0};
  } else {
    masks = {0xff0000, 0x00ff00, 0x0000ff, 0};
  }
  std::ranges::transform(masks, header.channels.begin(), [](std::uint32_t mask) { return Channel(mask); });
}

void readPalette(Bytes file, std::uint32_t headerSize, Header& header) {
  const bool isOld = headerSize == oldHeaderSize;
  const std::uint32_t all = 1U << header.bitsPerPixel;
  const std::uint32_t told = isOld ? 0 : numberAt(file, 46, 4);
  const std::uint32_t count = told == 0 ? all : std::min(told, all);
  const std::size_t entrySize = isOld ? 3 : 4;
  header.palette.assign(256, {0, 0, 0, 255});  // whatever isn't in the file is black
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t entry = fileHeaderSize + headerSize + i * entrySize;
    if (entry + entrySize > header.pixels)
      break;
    for (std::size_t channel = 0; channel < 3; ++channel)
      header.palette[i][channel] = static_cast<std::uint8_t>(numberAt(file, entry + 2 - channel, 1));
  }
}

bool isKnown(const Header& header) {
  const std::uint32_t bits = header.bitsPerPixel;
  switch (header.compression) {
    case Plain:
      return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
    case Runs8:
      return bits == 8 && !header.topDown;
    case Runs4:
      return bits == 4 && !header.topDown;
    case Masks:
    case MasksWithAlpha:
      return bits == 16 || bits == 32;
    default:
      return false;
  }
}

std::optional<Header> readHeader(Bytes file) {
  const std::uint32_t headerSize = numberAt(file, 14, 4);
  Header header;
  header.pixels = numberAt(file, 10, 4);
  if (headerSize == oldHeaderSize) {
    header.width = numberAt(file, 18, 2);
    header.height = numberAt(file, 20, 2);
    header.bitsPerPixel = numberAt(file, 24, 2);
  } else {
    header.width = static_cast<std::int32_t>(numberAt(file, 18, 4));
    const std::int64_t height = static_cast<std::int32_t>(numberAt(file, 22, 4));
    header.height = std::abs(height);
    header.topDown = height < 0;
    header.bitsPerPixel = numberAt(file, 28, 2);
    header.compression = numberAt(file, 30, 4);
  }
  const bool isSound = headerSize == oldHeaderSize || (headerSize >= 40 && headerSize <= file.size());
  if (!isSound || !isKnown(header) || header.pixels < fileHeaderSize + headerSize ||
      header.pixels > file.size())
    return std::nullopt;
  if (header.bitsPerPixel <= 8)
    readPalette(file, headerSize, header);
  else
    readMasks(file, headerSize, header);
  return header;
}

/// Whether all pixels are there, told before any memory is taken for them: the last row may lack its padding,
/// and two bytes are a run of 255 at the most.
bool canHold(Bytes file, const Header& header) {
  const std::size_t size = file.size() - header.pixels;
  if (header.hasRuns())
    return header.width * header.height <= static_cast<std::int64_t>(size / 2) * 255;
  return (static_cast<std::size_t>(header.height) - 1) * header.stride() + (header.rowBits() + 7) / 8 <= size;
}

/// The picture's indices, from its bottom row up, of runs as the format's own documents tell them. False if
/// they end before the picture does.
bool unpackRuns(Bytes runs, const Header& header, std::vector<std::uint8_t>& indices) {
  const auto width = static_cast<std::size_t>(header.width), height = static_cast<std::size_t>(header.height);
  const bool nibbles = header.compression == Runs4;
  std::size_t x = 0, y = 0;
  const auto put = [&](std::uint8_t index) {
    if (x < width && y < height)
      indices[y * width + x] = index;
    ++x;
  };
  const auto half = [](std::uint8_t byte, std::size_t i) {
    return static_cast<std::uint8_t>(i % 2 == 0 ? byte >> 4 : byte & 15);
  };
  for (std::size_t at = 0; at + 2 <= runs.size();) {
    const std::uint8_t count = runs[at], value = runs[at + 1];
    at += 2;
    if (count > 0) {
      for (std::size_t i = 0; i < count; ++i)
        put(nibbles ? half(value, i) : value);
    } else if (value == 0) {
      x = 0;
      ++y;
    } else if (value == 1) {
      return true;
    } else if (value == 2) {
      if (at + 2 > runs.size())
        return false;
      x += runs[at];
      y += runs[at + 1];
      at += 2;
    } else {
      const std::size_t size = nibbles ? (value + 1U) / 2 : value;
      if (at + size > runs.size())
        return false;
      for (std::size_t i = 0; i < value; ++i)
        put(nibbles ? half(runs[at + i / 2], i) : runs[at + i]);
      at += (size + 1) / 2 * 2;
    }
  }
  return y >= height;  // nothing is missing but the mark of the end
}

void putIndexed(const Header& header, const std::uint8_t* from, std::uint8_t* to) {
  const std::uint32_t bits = header.bitsPerPixel, perByte = 8 / bits;
  for (std::size_t x = 0; x < static_cast<std::size_t>(header.width); ++x, to += 4) {
    const auto shift = 8 - bits * (1 + x % perByte);
    const auto index = static_cast<std::size_t>(from[x / perByte] >> shift) & ((1U << bits) - 1);
    std::ranges::copy(header.palette[index], to);
  }
}

void putColours(const Header& header, const std::uint8_t* from, std::uint8_t* to) {
  const std::size_t size = header.bitsPerPixel / 8;
  const bool hasAlpha = header.channels[3].isThere();
  for (std::int64_t x = 0; x < header.width; ++x, from += size, to += 4) {
    const std::uint32_t pixel = numberAt({from, size}, 0, size);
    for (std::size_t channel = 0; channel < 3; ++channel)
      to[channel] = header.channels[channel](pixel);
    to[3] = hasAlpha ? header.channels[3](pixel) : 255;
  }
}

}  // namespace

bool decodeBmp(Bytes file, RowSink& sink) {
  std::optional<Header> header = readHeader(file);
  if (!header || !sink.allows(header->width, header->height) || !canHold(file, *header))
    return false;
  Bytes pixels = file.subspan(header->pixels);
  std::vector<std::uint8_t> indices;
  if (header->hasRuns()) {
    indices.resize(static_cast<std::size_t>(header->width * header->height));
    if (!unpackRuns(pixels, *header, indices))
      return false;
    header->bitsPerPixel = 8;
    pixels = indices;
  }
  const std::size_t stride = indices.empty() ? header->stride() : static_cast<std::size_t>(header->width);
  const Alpha alpha = header->channels[3].isThere() ? Alpha::Straight : Alpha::None;
  if (!sink.begin({header->width, header->height, alpha, 1, {}}))
    return false;
  const auto put = header->palette.empty() ? putColours : putIndexed;
  for (std::int64_t y = 0; y < header->height; ++y) {
    const std::int64_t row = header->topDown ? y : header->height - 1 - y;
    put(*header, pixels.data() + static_cast<std::size_t>(row) * stride, sink.row());
    sink.finishRow();
  }
  return true;
}

}  // namespace platform::decoding
