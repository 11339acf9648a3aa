#include "platform/imaging/PngEncoder.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <libdeflate.h>
#include <limits>
#include <new>
#include <string_view>

namespace platform {

namespace {

using Byte = std::uint8_t;

constexpr std::array<Byte, 8> signature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
constexpr std::size_t chunkFrame = 12;  // length, type and checksum around a chunk's data
constexpr std::size_t headerSize = 13;
constexpr std::size_t largestChunk = 0x7fffffff;

/// Bytes without an initial value, or null where there is no memory for them.
std::unique_ptr<Byte[]> allocate(std::size_t size) {
  return std::unique_ptr<Byte[]>(new (std::nothrow) Byte[size]);
}

void putNumber(Byte* to, std::size_t number) {
  for (int shift = 24; shift >= 0; shift -= 8)
    *to++ = static_cast<Byte>(number >> shift);
}

/// Completes a chunk whose `size` bytes of data already lie 8 bytes after `chunk`; returns its end.
Byte* closeChunk(Byte* chunk, std::string_view type, std::size_t size) {
  putNumber(chunk, size);
  std::memcpy(chunk + 4, type.data(), 4);
  putNumber(chunk + 8 + size, libdeflate_crc32(0, chunk + 4, size + 4));
  return chunk + chunkFrame + size;
}

Byte paeth(Byte left, Byte up, Byte upLeft) {
  const int estimate = left + up - upLeft;
  const int toLeft = std::abs(estimate - left);
  const int toUp = std::abs(estimate - up);
  const int toUpLeft = std::abs(estimate - upLeft);
  if (toLeft <= toUp && toLeft <= toUpLeft)
    return left;
  return toUp <= toUpLeft ? up : upLeft;
}

/// Brings a picture's rows into the form that PNG compresses: the channels in its order, a byte that names
/// the filter before each row, each byte less its prediction.
class RowFilter {
 public:
  RowFilter(const PictureView& view, PngFilter kind)
      : picture(view),
        filter(kind),
        channels(view.layout.alpha == ChannelLayout::none ? 3 : 4),
        rowBytes(static_cast<std::size_t>(view.width) * channels),
        // Each row has a pixel of zeros before it, as the predictions assume to the left of the picture.
        rows{allocate(rowBytes + channels), allocate(rowBytes + channels)} {
    for (auto& row : rows) {
      if (row)
        std::memset(row.get(), 0, rowBytes + channels);
    }
  }

  [[nodiscard]] bool hasMemory() const { return rows[0] && rows[1]; }
  [[nodiscard]] std::size_t size() const { return (rowBytes + 1) * static_cast<std::size_t>(picture.height); }

  void run(Byte* out) {
    for (int y = 0; y < picture.height; ++y) {
      Byte* row = rows[y & 1].get() + channels;
      const Byte* above = rows[1 - (y & 1)].get() + channels;
      gather(picture.pixels + static_cast<std::size_t>(y) * picture.stride, row);
      *out++ = static_cast<Byte>(filter);
      subtract(row, above, out);
      out += rowBytes;
    }
  }

 private:
  void gather(const Byte* from, Byte* to) const {
    const ChannelLayout layout = picture.layout;
    if (channels == 3) {
      for (int x = 0; x < picture.width; ++x, from += layout.bytesPerPixel, to += 3) {
        to[0] = from[layout.red];
        to[1] = from[layout.green];
        to[2] = from[layout.blue];
      }
      return;
    }
    for (int x = 0; x < picture.width; ++x, from += layout.bytesPerPixel, to += 4) {
      to[0] = from[layout.red];
      to[1] = from[layout.green];
      to[2] = from[layout.blue];
      to[3] = from[layout.alpha];
    }
  }

  template <typename Predict>
  void subtractEach(const Byte* row, Byte* out, Predict predict) const {
    for (std::size_t i = 0; i < rowBytes; ++i)
      out[i] = static_cast<Byte>(row[i] - predict(i));
  }

  void subtract(const Byte* row, const Byte* above, Byte* out) const {
    const Byte* left = row - channels;
    const Byte* aboveLeft = above - channels;
    switch (filter) {
      case PngFilter::None:
        std::memcpy(out, row, rowBytes);
        return;
      case PngFilter::Sub:
        return subtractEach(row, out, [&](std::size_t i) { return left[i]; });
      case PngFilter::Up:
        return subtractEach(row, out, [&](std::size_t i) { return above[i]; });
      case PngFilter::Average:
        return subtractEach(row, out,
                            [&](std::size_t i) { return static_cast<Byte>((left[i] + above[i]) / 2); });
      case PngFilter::Paeth:
        return subtractEach(row, out, [&](std::size_t i) { return paeth(left[i], above[i], aboveLeft[i]); });
    }
  }

  const PictureView& picture;
  const PngFilter filter;
  const std::size_t channels;
  const std::size_t rowBytes;
  std::array<std::unique_ptr<Byte[]>, 2> rows;
};

bool isSound(const PictureView& picture, const PngOptions& options) {
  const ChannelLayout& layout = picture.layout;
  const auto inPixel = [&](int offset) { return offset >= 0 && offset < layout.bytesPerPixel; };
  if (!picture.pixels || picture.width <= 0 || picture.height <= 0 || layout.bytesPerPixel <= 0)
    return false;
  if (!inPixel(layout.red) || !inPixel(layout.green) || !inPixel(layout.blue))
    return false;
  if (layout.alpha != ChannelLayout::none && !inPixel(layout.alpha))
    return false;
  const auto bytesPerPixel = static_cast<std::size_t>(layout.bytesPerPixel);
  return picture.stride / bytesPerPixel >= static_cast<std::size_t>(picture.width) && options.level >= 0 &&
         options.level <= 12 && options.filter <= PngFilter::Paeth;
}

Byte* writeHeader(Byte* to, const PictureView& picture) {
  std::memcpy(to, signature.data(), signature.size());
  Byte* chunk = to + signature.size();
  Byte* data = chunk + 8;
  putNumber(data, static_cast<std::size_t>(picture.width));
  putNumber(data + 4, static_cast<std::size_t>(picture.height));
  constexpr Byte bitsPerChannel = 8;
  constexpr Byte colours = 2, coloursWithAlpha = 6;
  data[8] = bitsPerChannel;
  data[9] = picture.layout.alpha == ChannelLayout::none ? colours : coloursWithAlpha;
  data[10] = data[11] = data[12] = 0;  // deflate, the five filters, not interlaced
  return closeChunk(chunk, "IHDR", headerSize);
}

struct Release {
  void operator()(libdeflate_compressor* compressor) const { libdeflate_free_compressor(compressor); }
};

}  // namespace

std::optional<PngFile> encodePng(const PictureView& picture, const PngOptions& options) {
  if (!isSound(picture, options))
    return std::nullopt;
  RowFilter rows(picture, options.filter);
  const std::unique_ptr<Byte[]> filtered = allocate(rows.size());
  const std::unique_ptr<libdeflate_compressor, Release> compressor(
      libdeflate_alloc_compressor(options.level));
  if (!rows.hasMemory() || !filtered || !compressor)
    return std::nullopt;
  rows.run(filtered.get());

  const std::size_t room = libdeflate_zlib_compress_bound(compressor.get(), rows.size());
  PngFile file{allocate(signature.size() + 3 * chunkFrame + headerSize + room), 0};
  if (!file.bytes)
    return std::nullopt;
  Byte* chunk = writeHeader(file.bytes.get(), picture);
  const std::size_t compressed =
      libdeflate_zlib_compress(compressor.get(), filtered.get(), rows.size(), chunk + 8, room);
  if (compressed == 0 || compressed > largestChunk)
    return std::nullopt;
  chunk = closeChunk(chunk, "IDAT", compressed);
  chunk = closeChunk(chunk, "IEND", 0);
  file.size = static_cast<std::size_t>(chunk - file.bytes.get());
  return file;
}

}  // namespace platform
