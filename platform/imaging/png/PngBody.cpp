#include "platform/imaging/png/PngBody.h"

#include "platform/imaging/png/BandCompression.h"
#include "platform/imaging/png/LargeMemory.h"
#include "platform/imaging/png/PngChunks.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <isa-l/igzip_lib.h>
#include <limits>
#include <new>
#include <system_error>
#include <zlib.h>

namespace platform {
namespace {

using Byte = std::uint8_t;

constexpr std::size_t checksumSize = 4;
constexpr std::array<Byte, 2> zlibHeader{0x78, 0x01};
/// Of a band, in bytes: large enough for what it can't see of the one before it to cost less than a hundredth
/// of its size.
constexpr std::size_t wantedBand = std::size_t{1} << 20;
constexpr int givenUp = -1;  // in place of the rows that are there

}  // namespace

PngBody::Bands::Bands(const PictureView& picture)
    : height(picture.height),
      rowSize(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.layout.channels())),
      rows(static_cast<int>(
          std::clamp<std::size_t>(wantedBand / (rowSize + 1), 1, static_cast<std::size_t>(height)))),
      count((height + rows - 1) / rows),
      room(chunkFrame + zlibHeader.size() +
           BandCompression::room(static_cast<std::size_t>(rows) * (rowSize + 1))) {
}

int PngBody::Bands::end(int band) const {
  const int first = band * rows;
  return first + std::min(rows, height - first);
}

/// What one core needs to make bands into chunks.
class PngBody::Encoder {
 public:
  explicit Encoder(const PngBody& owner)
      : body(owner),
        bands(owner.bands),
        filtered(
            allocateLarge<Byte>(static_cast<std::size_t>(bands.rows) * (bands.rowSize + 1) + filterSlack)) {
    for (auto* row : {&current, &previous})
      row->reset(new (std::nothrow) Byte[filterSlack + bands.rowSize + filterSlack]());
  }

  [[nodiscard]] Chunk run(int band, Byte* to) {
    if (!filtered || !current || !previous)
      return {};
    const int first = band * bands.rows, end = bands.end(band);
    std::memset(previous.get(), 0, filterSlack + bands.rowSize);
    if (first > 0)
      packRow(first - 1, previous.get());
    Byte* out = filtered.get();
    PngFilter chosen = PngFilter::Up;
    for (int y = first; y < end; ++y)
      out = filterRow(y, chosen, out);
    const std::span<const Byte> rows(filtered.get(), static_cast<std::size_t>(out - filtered.get()));
    Byte* data = to + 8;
    if (first == 0)
      data = std::ranges::copy(zlibHeader, data).out;
    const std::size_t compressed = compression.run(
        rows, end == bands.height ? BandCompression::Place::Last : BandCompression::Place::Inner, data);
    if (compressed == 0)
      return {};
    const auto size = static_cast<std::size_t>(data + compressed - (to + 8));
    return {static_cast<std::size_t>(closeChunk(to, "IDAT", size) - to),
            isal_adler32(1, rows.data(), rows.size()), rows.size()};
  }

 private:
  void packRow(int y, Byte* row) const {
    const PictureView& picture = body.picture;
    packChannels(picture.pixels + static_cast<std::size_t>(y) * picture.stride, picture.layout,
                 row + filterSlack, bands.rowSize, body.options.effort.instructions);
  }

  /// `chosen` is the filter of the row above, and becomes that of this one.
  Byte* filterRow(int y, PngFilter& chosen, Byte* out) {
    const Instructions instructions = body.options.effort.instructions;
    packRow(y, current.get());
    const PngRow row{current.get() + filterSlack, previous.get() + filterSlack, bands.rowSize,
                     static_cast<std::size_t>(body.picture.layout.channels())};
    chosen = body.options.filter ? *body.options.filter : cheapestFilter(row, chosen, instructions);
    *out++ = static_cast<Byte>(chosen);
    applyFilter(chosen, row, out, instructions);
    current.swap(previous);
    return out + bands.rowSize;
  }

  const PngBody& body;
  const Bands& bands;
  std::unique_ptr<Byte[]> current;  // with slack on either side
  std::unique_ptr<Byte[]> previous;
  LargeMemory<Byte> filtered;
  BandCompression compression;
};

std::optional<std::size_t> PngBody::room(const PictureView& picture) {
  const Bands bands(picture);
  constexpr std::size_t most = std::numeric_limits<std::size_t>::max() / 2;
  const auto count = static_cast<std::size_t>(bands.count);
  return bands.room > most / count ? std::nullopt
                                   : std::optional(count * bands.room + chunkFrame + checksumSize);
}

PngBody::PngBody(const PictureView& view, const PngOptions& wanted, Byte* to)
    : picture(view), options(wanted), bands(view), begin(to), chunks(static_cast<std::size_t>(bands.count)) {
  const int cores =
      options.effort.cores == Cores::One ? 1 : static_cast<int>(std::thread::hardware_concurrency());
  const int wantedHelpers = std::min(cores, bands.count) - 1;  // whoever calls finish() works as well
  try {
    while (static_cast<int>(helpers.size()) < wantedHelpers)
      helpers.emplace_back(&PngBody::work, this);
  } catch (const std::system_error&) {
    // No more threads to be had: those that are there do the work.
  }
}

PngBody::~PngBody() {
  rowsAreThere(givenUp);
  joinHelpers();
}

void PngBody::rowsAreThere(int count) {
  rowsThere.store(count, std::memory_order_release);
  rowsThere.notify_all();
}

bool PngBody::waitForRows(int count) const {
  int there = rowsThere.load(std::memory_order_acquire);
  for (; there < count && there != givenUp; there = rowsThere.load(std::memory_order_acquire))
    rowsThere.wait(there, std::memory_order_acquire);
  return there != givenUp;
}

void PngBody::work() {
  Encoder encoder(*this);
  for (int band = nextBand++; band < bands.count && waitForRows(bands.end(band)); band = nextBand++)
    chunks[static_cast<std::size_t>(band)] =
        encoder.run(band, begin + static_cast<std::size_t>(band) * bands.room);
}

void PngBody::joinHelpers() {
  for (std::thread& helper : helpers)
    helper.join();
  helpers.clear();
}

/// The chunks one after the other, and one with the checksum of them all.
Byte* PngBody::finish() {
  work();
  joinHelpers();
  const Byte* from = begin;
  Byte* to = begin;
  std::uint32_t checksum = 1;
  for (const Chunk& chunk : chunks) {
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

}  // namespace platform
