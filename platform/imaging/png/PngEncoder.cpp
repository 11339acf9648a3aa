#include "platform/imaging/png/PngEncoder.h"

#include "platform/imaging/png/BandCompression.h"
#include "platform/imaging/png/Bands.h"
#include "platform/imaging/png/LargeBytes.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#include <limits>
#include <new>
#include <string_view>
#include <vector>
#include <zlib.h>

namespace platform {
namespace {

using Byte = std::uint8_t;

constexpr std::array<Byte, 8> signature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
constexpr std::size_t chunkFrame = 12;  // length, type and checksum around a chunk's data
constexpr std::size_t headerSize = 13;
constexpr std::size_t checksumSize = 4;
constexpr std::array<Byte, 2> zlibHeader{0x78, 0x01};
constexpr std::size_t longestRow = std::size_t{1} << 30;

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
  putNumber(chunk + 8 + size, crc32_gzip_refl(0, chunk + 4, size + 4));
  return chunk + chunkFrame + size;
}

Byte* writeHeader(Byte* to, const PictureView& picture) {
  Byte* chunk = std::ranges::copy(signature, to).out;
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

std::size_t channelsOf(const ChannelLayout& layout) {
  return layout.alpha == ChannelLayout::none ? 3 : 4;
}

std::size_t rowSizeOf(int width, const ChannelLayout& layout) {
  return static_cast<std::size_t>(width) * channelsOf(layout);
}

bool isSound(int width, int height, const ChannelLayout& layout, const PngOptions& options) {
  const auto inPixel = [&](int offset) { return offset >= 0 && offset < layout.bytesPerPixel; };
  return width > 0 && height > 0 && inPixel(layout.red) && inPixel(layout.green) && inPixel(layout.blue) &&
         (layout.alpha == ChannelLayout::none || inPixel(layout.alpha)) &&
         rowSizeOf(width, layout) < longestRow &&
         options.filter.value_or(PngFilter::None) <= PngFilter::Paeth;
}

/// Brings a row's channels into PNG's order.
void gather(const Byte* from, const ChannelLayout layout, Byte* to, std::size_t size) {
  const Byte* const end = to + size;
  if (layout.alpha == ChannelLayout::none) {
    for (; to != end; from += layout.bytesPerPixel, to += 3) {
      to[0] = from[layout.red];
      to[1] = from[layout.green];
      to[2] = from[layout.blue];
    }
    return;
  }
  for (; to != end; from += layout.bytesPerPixel, to += 4) {
    to[0] = from[layout.red];
    to[1] = from[layout.green];
    to[2] = from[layout.blue];
    to[3] = from[layout.alpha];
  }
}

/// The picture in bands of rows, each a chunk of the file. How it is parted depends on its size alone, so
/// that the bytes don't depend on the cores.
struct Bands {
  explicit Bands(const PictureView& view)
      : picture(view),
        rowSize(rowSizeOf(view.width, view.layout)),
        rows(static_cast<int>(
            std::clamp<std::size_t>(wanted / (rowSize + 1), 1, static_cast<std::size_t>(view.height)))),
        count((view.height + rows - 1) / rows),
        room(chunkFrame + zlibHeader.size() +
             BandCompression::room(static_cast<std::size_t>(rows) * (rowSize + 1))) {}

  /// Large enough for what it can't see of the one before it to cost less than a hundredth of its size.
  static constexpr std::size_t wanted = std::size_t{1} << 20;

  const PictureView& picture;
  const std::size_t rowSize;
  const int rows;
  const int count;
  const std::size_t room;  // a chunk takes less
};

/// What one core needs to make bands into chunks.
class BandEncoder {
 public:
  BandEncoder(const Bands& parted, std::optional<PngFilter> wanted)
      : bands(parted),
        filter(wanted),
        filtered(allocateLarge(static_cast<std::size_t>(bands.rows) * (bands.rowSize + 1) + filterSlack)) {
    for (auto* row : {&current, &previous})
      row->reset(new (std::nothrow) Byte[filterSlack + bands.rowSize + filterSlack]());
  }

  struct Chunk {
    std::size_t size = 0;  // 0 if there was not enough memory
    std::uint32_t checksum = 1;
    std::size_t rowsSize = 0;  // of the bytes that the checksum is of
  };

  [[nodiscard]] Chunk run(int band, Byte* to) {
    if (!filtered || !current || !previous)
      return {};
    const int first = band * bands.rows;
    const int end = std::min(first + bands.rows, bands.picture.height);
    std::memset(previous.get(), 0, filterSlack + bands.rowSize);
    if (first > 0)
      gatherRow(first - 1, previous.get());
    Byte* out = filtered.get();
    PngFilter chosen = PngFilter::Up;
    for (int y = first; y < end; ++y)
      out = filterRow(y, chosen, out);
    const std::span<const Byte> rows(filtered.get(), static_cast<std::size_t>(out - filtered.get()));
    Byte* data = to + 8;
    if (first == 0)
      data = std::ranges::copy(zlibHeader, data).out;
    const std::size_t compressed = compression.run(
        rows, end == bands.picture.height ? BandCompression::Place::Last : BandCompression::Place::Inner,
        data);
    if (compressed == 0)
      return {};
    const auto size = static_cast<std::size_t>(data + compressed - (to + 8));
    return {static_cast<std::size_t>(closeChunk(to, "IDAT", size) - to),
            isal_adler32(1, rows.data(), rows.size()), rows.size()};
  }

 private:
  void gatherRow(int y, Byte* row) const {
    const PictureView& picture = bands.picture;
    gather(picture.pixels + static_cast<std::size_t>(y) * picture.stride, picture.layout, row + filterSlack,
           bands.rowSize);
  }

  /// `chosen` is the filter of the row above, and becomes that of this one.
  Byte* filterRow(int y, PngFilter& chosen, Byte* out) {
    gatherRow(y, current.get());
    const PngRow row{current.get() + filterSlack, previous.get() + filterSlack, bands.rowSize,
                     channelsOf(bands.picture.layout)};
    chosen = filter ? *filter : cheapestFilter(row, chosen);
    *out++ = static_cast<Byte>(chosen);
    applyFilter(chosen, row, out);
    current.swap(previous);
    return out + bands.rowSize;
  }

  const Bands& bands;
  const std::optional<PngFilter> filter;
  std::unique_ptr<Byte[]> current;  // with slack on either side
  std::unique_ptr<Byte[]> previous;
  LargeBytes filtered;
  BandCompression compression;
};

/// Makes the bands' chunks one after the other from `to` on, and the one with the checksum of them all.
/// Returns the end, or null if there was not enough memory.
Byte* writeBands(const Bands& bands, const PngOptions& options, Byte* to) {
  std::vector<BandEncoder::Chunk> chunks(static_cast<std::size_t>(bands.count));
  std::atomic<int> next = 0;
  // Not dealt out beforehand: a band of a photograph takes ten times as long as one of text.
  forEachBand(bands.count, 1, options.cores, [&](int, int) {
    BandEncoder encoder(bands, options.filter);
    for (int band = next++; band < bands.count; band = next++)
      chunks[static_cast<std::size_t>(band)] =
          encoder.run(band, to + static_cast<std::size_t>(band) * bands.room);
  });
  const Byte* from = to;
  std::uint32_t checksum = 1;
  for (const BandEncoder::Chunk& chunk : chunks) {
    if (chunk.size == 0)
      return nullptr;
    std::memmove(to, from, chunk.size);
    to += chunk.size;
    from += bands.room;
    checksum = static_cast<std::uint32_t>(
        adler32_combine(checksum, chunk.checksum, static_cast<z_off_t>(chunk.rowsSize)));
  }
  putNumber(to + 8, checksum);
  return closeChunk(to, "IDAT", checksumSize);
}

}  // namespace

std::optional<PngFile> encodePng(const PictureView& picture, const PngOptions& options) {
  if (!isSound(picture.width, picture.height, picture.layout, options) || !picture.pixels ||
      picture.stride / static_cast<std::size_t>(picture.layout.bytesPerPixel) <
          static_cast<std::size_t>(picture.width))
    return std::nullopt;
  const Bands bands(picture);
  const auto count = static_cast<std::size_t>(bands.count);
  constexpr std::size_t around = signature.size() + 3 * chunkFrame + headerSize + checksumSize;
  if (bands.room > (std::numeric_limits<std::size_t>::max() - around) / count)
    return std::nullopt;
  PngFile file{allocate(around + count * bands.room), 0};
  if (!file.bytes)
    return std::nullopt;
  Byte* end = writeBands(bands, options, writeHeader(file.bytes.get(), picture));
  if (!end)
    return std::nullopt;
  end = closeChunk(end, "IEND", 0);
  file.size = static_cast<std::size_t>(end - file.bytes.get());
  return file;
}

struct PngEncoder::State {
  State(int pictureWidth, int pictureHeight, const ChannelLayout& order, const PngOptions& wanted)
      : width(pictureWidth),
        height(pictureHeight),
        layout(order),
        options(wanted),
        rowSize(rowSizeOf(width, layout)),
        rows(allocateLarge(rowSize * static_cast<std::size_t>(height))) {}

  const int width;
  const int height;
  const ChannelLayout layout;
  const PngOptions options;
  const std::size_t rowSize;
  LargeBytes rows;  // in PNG's order
  int rowsDone = 0;
};

PngEncoder::PngEncoder(std::unique_ptr<State> begun) : state(std::move(begun)) {
}
PngEncoder::PngEncoder(PngEncoder&&) noexcept = default;
PngEncoder& PngEncoder::operator=(PngEncoder&&) noexcept = default;
PngEncoder::~PngEncoder() = default;

std::optional<PngEncoder> PngEncoder::begin(int width, int height, const ChannelLayout& layout,
                                            const PngOptions& options) {
  if (!isSound(width, height, layout, options))
    return std::nullopt;
  auto state = std::make_unique<State>(width, height, layout, options);
  if (!state->rows)
    return std::nullopt;
  return PngEncoder(std::move(state));
}

void PngEncoder::addRows(const std::uint8_t* pixels, std::size_t stride, int count) {
  for (; count > 0 && state->rowsDone < state->height; --count, pixels += stride) {
    const auto row = static_cast<std::size_t>(state->rowsDone++);
    gather(pixels, state->layout, state->rows.get() + row * state->rowSize, state->rowSize);
  }
}

std::optional<PngFile> PngEncoder::finish() {
  if (state->rowsDone != state->height)
    return std::nullopt;
  const bool opaque = state->layout.alpha == ChannelLayout::none;
  const ChannelLayout packed =
      opaque ? ChannelLayout{3, 0, 1, 2, ChannelLayout::none} : ChannelLayout{4, 0, 1, 2, 3};
  return encodePng({state->rows.get(), state->width, state->height, state->rowSize, packed}, state->options);
}

}  // namespace platform
