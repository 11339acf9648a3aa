#include "platform/imaging/png/PngEncoder.h"

#include "platform/imaging/png/Bands.h"
#include "platform/imaging/png/DeflateStream.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <libdeflate.h>
#include <limits>
#include <new>
#include <string_view>
#include <sys/mman.h>
#include <vector>

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

struct FreeBytes {
  void operator()(Byte* bytes) const { std::free(bytes); }
};
using LargeBytes = std::unique_ptr<Byte[], FreeBytes>;

/// The same for a whole picture. Getting such memory page by page, at the first write to each, would take as
/// long as filling it several times over, so the system is asked for large pages.
LargeBytes allocateLarge(std::size_t size) {
  constexpr std::size_t largePage = std::size_t{2} << 20;
  if (size < largePage)
    return LargeBytes(static_cast<Byte*>(std::malloc(size)));
  if (size > std::numeric_limits<std::size_t>::max() - largePage)
    return nullptr;
  const std::size_t rounded = (size + largePage - 1) / largePage * largePage;
  LargeBytes bytes(static_cast<Byte*>(std::aligned_alloc(largePage, rounded)));
  if (bytes)
    madvise(bytes.get(), rounded, MADV_HUGEPAGE);  // a hint, without which all works as well
  return bytes;
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

/// Which filter suits a row, told by the part of its pixels that are a little different from both the one to
/// the left and the one above, as in photographs and slopes of colour; in text and windows, pixels are equal
/// to a neighbour or far from it. Measured: without a filter, text and windows become smaller by a quarter
/// and photographs larger by two thirds.
PngFilter suitableFilter(const Byte* row, const Byte* above, std::size_t rowBytes, std::size_t channels) {
  constexpr int little = 16;
  const auto isLittle = [](const Byte* pixel, const Byte* neighbour) {
    int most = 0;
    for (int channel = 0; channel < 3; ++channel)
      most = std::max(most, std::abs(pixel[channel] - neighbour[channel]));
    return most > 0 && most <= little;
  };
  std::size_t smooth = 0;
  for (std::size_t i = channels; i < rowBytes; i += channels)
    smooth += isLittle(row + i, row + i - channels) && isLittle(row + i, above + i) ? 1 : 0;
  const double part = static_cast<double>(smooth * channels) / static_cast<double>(rowBytes);
  if (part < 0.03)
    return PngFilter::None;
  return part < 0.5 ? PngFilter::Up : PngFilter::Average;
}

/// Brings rows into the form that PNG compresses: the channels in its order, a byte that names the filter
/// before each row, each byte less its prediction.
class RowFilter {
 public:
  RowFilter(int width, const ChannelLayout& order, std::optional<PngFilter> kind)
      : layout(order),
        fixedFilter(kind),
        channels(order.alpha == ChannelLayout::none ? 3 : 4),
        rowBytes(static_cast<std::size_t>(width) * channels),
        // Each row has a pixel of zeros before it, as the predictions assume to the left of the picture.
        current(allocate(rowBytes + channels)),
        previous(allocate(rowBytes + channels)) {
    for (auto* row : {&current, &previous}) {
      if (*row)
        std::memset(row->get(), 0, rowBytes + channels);
    }
  }

  [[nodiscard]] bool hasMemory() const { return current && previous; }
  /// How many bytes a row gives.
  [[nodiscard]] std::size_t size() const { return rowBytes + 1; }

  void run(const Byte* pixels, Byte* out) {
    Byte* row = current.get() + channels;
    const Byte* above = previous.get() + channels;
    gather(pixels, row);
    if (rowsDone % rowsForOneChoice == 0) {
      const Byte* neighbour = rowsDone == 0 ? row - channels : above;
      filter = fixedFilter ? *fixedFilter : suitableFilter(row, neighbour, rowBytes, channels);
    }
    ++rowsDone;
    *out++ = static_cast<Byte>(filter);
    subtract(row, above, out);
    current.swap(previous);
  }

 private:
  void gather(const Byte* from, Byte* to) const {
    const ChannelLayout order = layout;
    const Byte* const end = to + rowBytes;
    if (channels == 3) {
      for (; to != end; from += order.bytesPerPixel, to += 3) {
        to[0] = from[order.red];
        to[1] = from[order.green];
        to[2] = from[order.blue];
      }
      return;
    }
    for (; to != end; from += order.bytesPerPixel, to += 4) {
      to[0] = from[order.red];
      to[1] = from[order.green];
      to[2] = from[order.blue];
      to[3] = from[order.alpha];
    }
  }

  template <typename Predict>
  void subtractEach(const Byte* row, Byte* out, Predict predict) const {
    // A byte may be part of anything, this object too, so only copies stay in registers over the writes.
    const std::size_t count = rowBytes;
    for (std::size_t i = 0; i < count; ++i)
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
        return subtractEach(row, out, [=](std::size_t i) { return left[i]; });
      case PngFilter::Up:
        return subtractEach(row, out, [=](std::size_t i) { return above[i]; });
      case PngFilter::Average:
        return subtractEach(row, out,
                            [=](std::size_t i) { return static_cast<Byte>((left[i] + above[i]) / 2); });
      case PngFilter::Paeth:
        return subtractEach(row, out, [=](std::size_t i) { return paeth(left[i], above[i], aboveLeft[i]); });
    }
  }

  static constexpr int rowsForOneChoice = 16;  // as good as for each, and takes no time

  const ChannelLayout layout;
  const std::optional<PngFilter> fixedFilter;
  const std::size_t channels;
  const std::size_t rowBytes;
  std::unique_ptr<Byte[]> current;
  std::unique_ptr<Byte[]> previous;
  PngFilter filter = PngFilter::None;
  int rowsDone = 0;
};

bool isSound(const ChannelLayout& layout, const PngOptions& options) {
  const auto inPixel = [&](int offset) { return offset >= 0 && offset < layout.bytesPerPixel; };
  return inPixel(layout.red) && inPixel(layout.green) && inPixel(layout.blue) &&
         (layout.alpha == ChannelLayout::none || inPixel(layout.alpha)) && options.level >= 0 &&
         options.level <= 12 && options.filter.value_or(PngFilter::None) <= PngFilter::Paeth;
}

Byte* writeHeader(Byte* to, int width, int height, const ChannelLayout& layout) {
  std::memcpy(to, signature.data(), signature.size());
  Byte* chunk = to + signature.size();
  Byte* data = chunk + 8;
  putNumber(data, static_cast<std::size_t>(width));
  putNumber(data + 4, static_cast<std::size_t>(height));
  constexpr Byte bitsPerChannel = 8;
  constexpr Byte colours = 2, coloursWithAlpha = 6;
  data[8] = bitsPerChannel;
  data[9] = layout.alpha == ChannelLayout::none ? colours : coloursWithAlpha;
  data[10] = data[11] = data[12] = 0;  // deflate, the five filters, not interlaced
  return closeChunk(chunk, "IHDR", headerSize);
}

struct Release {
  void operator()(libdeflate_compressor* compressor) const { libdeflate_free_compressor(compressor); }
};
using Compressor = std::unique_ptr<libdeflate_compressor, Release>;

/// One deflate stream, made of parts of equal size. How the picture is parted depends on its size alone, so
/// that the bytes don't depend on the cores. A part is large enough for what it can't see of the one before
/// it to cost less than a hundredth of the size.
class PartedCompression {
 public:
  PartedCompression(const Byte* picture, std::size_t pictureSize, int compressionLevel)
      : from(picture),
        size(pictureSize),
        level(compressionLevel),
        count((size + partSize - 1) / partSize),
        sizes(count),
        partRoom(libdeflate_deflate_compress_bound(nullptr, partSize) + roomAfterStream) {}

  /// How many bytes `run` may need.
  [[nodiscard]] std::size_t room() const { return count * partRoom; }

  /// The size of the whole, or 0 if there was not enough memory.
  [[nodiscard]] std::size_t run(Byte* to, Cores cores) {
    std::atomic<std::size_t> next = 0;
    // Not dealt out beforehand: a part of a photograph takes ten times as long as one of text.
    forEachBand(static_cast<int>(count), 1, cores, [&](int, int) {
      const Compressor compressor(libdeflate_alloc_compressor(level));
      while (compressor) {
        const std::size_t part = next++;
        if (part >= count)
          return;
        sizes[part] = compress(*compressor, part, to + part * partRoom);
      }
    });
    return join(to);
  }

 private:
  static constexpr std::size_t partSize = std::size_t{1} << 21;

  [[nodiscard]] std::size_t compress(libdeflate_compressor& compressor, std::size_t part, Byte* to) const {
    const std::size_t begin = part * partSize;
    const std::size_t compressed = libdeflate_deflate_compress(
        &compressor, from + begin, std::min(partSize, size - begin), to, partRoom - roomAfterStream);
    return compressed == 0 || part + 1 == count ? compressed : letOthersFollow(to, compressed);
  }

  [[nodiscard]] std::size_t join(Byte* to) const {
    std::size_t joined = 0;
    for (std::size_t part = 0; part < count; ++part) {
      if (sizes[part] == 0)
        return 0;
      std::memmove(to + joined, to + part * partRoom, sizes[part]);
      joined += sizes[part];
    }
    return joined;
  }

  const Byte* const from;
  const std::size_t size;
  const int level;
  const std::size_t count;
  std::vector<std::size_t> sizes;
  const std::size_t partRoom;
};

constexpr std::array<Byte, 2> zlibHeader{0x78, 0x01};
constexpr std::size_t zlibFrame = zlibHeader.size() + 4;  // and the checksum after the stream

}  // namespace

struct PngEncoder::State {
  State(int pictureWidth, int pictureHeight, const ChannelLayout& order, const PngOptions& wanted)
      : width(pictureWidth),
        height(pictureHeight),
        layout(order),
        options(wanted),
        filter(width, layout, options.filter),
        filtered(allocateLarge(size())) {}

  [[nodiscard]] std::size_t size() const { return filter.size() * static_cast<std::size_t>(height); }

  const int width;
  const int height;
  const ChannelLayout layout;
  const PngOptions options;
  RowFilter filter;
  LargeBytes filtered;
  std::uint32_t checksum = 1;
  int rowsDone = 0;
};

PngEncoder::PngEncoder(std::unique_ptr<State> begun) : state(std::move(begun)) {
}
PngEncoder::PngEncoder(PngEncoder&&) noexcept = default;
PngEncoder& PngEncoder::operator=(PngEncoder&&) noexcept = default;
PngEncoder::~PngEncoder() = default;

std::optional<PngEncoder> PngEncoder::begin(int width, int height, const ChannelLayout& layout,
                                            const PngOptions& options) {
  if (width <= 0 || height <= 0 || !isSound(layout, options))
    return std::nullopt;
  auto state = std::make_unique<State>(width, height, layout, options);
  if (!state->filter.hasMemory() || !state->filtered)
    return std::nullopt;
  return PngEncoder(std::move(state));
}

void PngEncoder::addRows(const std::uint8_t* pixels, std::size_t stride, int count) {
  for (; count > 0 && state->rowsDone < state->height; --count, pixels += stride) {
    const auto row = static_cast<std::size_t>(state->rowsDone++);
    Byte* filtered = state->filtered.get() + row * state->filter.size();
    state->filter.run(pixels, filtered);
    state->checksum = libdeflate_adler32(state->checksum, filtered, state->filter.size());
  }
}

std::optional<PngFile> PngEncoder::finish() {
  if (state->rowsDone != state->height)
    return std::nullopt;
  PartedCompression compression(state->filtered.get(), state->size(), state->options.level);
  PngFile file{allocate(signature.size() + 3 * chunkFrame + headerSize + zlibFrame + compression.room()), 0};
  if (!file.bytes)
    return std::nullopt;
  Byte* chunk = writeHeader(file.bytes.get(), state->width, state->height, state->layout);
  Byte* stream = std::ranges::copy(zlibHeader, chunk + 8).out;
  const std::size_t compressed = compression.run(stream, state->options.cores);
  if (compressed == 0 || compressed > largestChunk - zlibFrame)
    return std::nullopt;
  putNumber(stream + compressed, state->checksum);
  chunk = closeChunk(chunk, "IDAT", compressed + zlibFrame);
  chunk = closeChunk(chunk, "IEND", 0);
  file.size = static_cast<std::size_t>(chunk - file.bytes.get());
  return file;
}

std::optional<PngFile> encodePng(const PictureView& picture, const PngOptions& options) {
  auto encoder = PngEncoder::begin(picture.width, picture.height, picture.layout, options);
  if (!encoder || !picture.pixels ||
      picture.stride / static_cast<std::size_t>(picture.layout.bytesPerPixel) <
          static_cast<std::size_t>(picture.width))
    return std::nullopt;
  encoder->addRows(picture.pixels, picture.stride, picture.height);
  return encoder->finish();
}

}  // namespace platform
