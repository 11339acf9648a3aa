#include "platform/imaging/codecs/decoding/PngRows.h"

#include "platform/imaging/png/PngFilters.h"

#include <algorithm>
#include <cstring>
#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>
#include <new>

namespace platform::decoding {
namespace {

constexpr std::size_t inputSize = std::size_t{32} << 10;
constexpr std::size_t usualOutput = std::size_t{128} << 10;
constexpr std::array<std::uint8_t, 4> idat{'I', 'D', 'A', 'T'};

std::uint32_t numberOf(const std::uint8_t* bytes) {
  return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 |
         bytes[3];
}

std::unique_ptr<std::uint8_t[]> zeros(std::size_t size) {
  return std::unique_ptr<std::uint8_t[]>(new (std::nothrow) std::uint8_t[size]());
}

}  // namespace

PngRows::PngRows(const ByteSource& source, std::uint32_t idatSize, const Form& pixels)
    : file(source),
      form(pixels),
      rowSize((form.width * form.bitsPerPixel + 7) / 8),
      outputSize(std::max(usualOutput, rowSize + 1)),
      inflating(new (std::nothrow)
                    inflate_state{}),  // its tables too: damaged data may look up what they lack
      input(zeros(inputSize)),
      output(zeros(outputSize + filterSlack)),
      current(zeros(rowSize + 2 * filterSlack)),
      previous(zeros(rowSize + 2 * filterSlack)),
      left(idatSize),
      checksum(crc32_gzip_refl(0, idat.data(), idat.size())) {
  if (inflating) {
    isal_inflate_init(inflating.get());
    inflating->crc_flag = ISAL_ZLIB;
    inflating->avail_in = 0;
  }
}

PngRows::~PngRows() = default;

bool PngRows::next(std::uint8_t* rgba) {
  if (!inflating || !input || !output || !current || !previous || !fillRow())
    return false;
  const std::uint8_t* row = output.get() + begin;
  if (row[0] > static_cast<std::uint8_t>(PngFilter::Paeth))
    return false;
  undoFilter(static_cast<PngFilter>(row[0]), row + 1, previous.get() + filterSlack, rowSize,
             std::max(1U, form.bitsPerPixel / 8), current.get() + filterSlack);
  begin += rowSize + 1;
  expand(current.get() + filterSlack, rgba);
  current.swap(previous);
  return true;
}

/// Inflates until a whole row lies in the output.
bool PngRows::fillRow() {
  while (end - begin < rowSize + 1) {
    std::memmove(output.get(), output.get() + begin, end - begin);
    end -= begin;
    begin = 0;
    if (inflating->block_state == ISAL_BLOCK_FINISH || (inflating->avail_in == 0 && !readInput()))
      return false;
    inflating->next_out = output.get() + end;
    inflating->avail_out = static_cast<std::uint32_t>(outputSize - end);
    const std::uint32_t before = inflating->avail_in;
    const int result = isal_inflate(inflating.get());
    const std::size_t reached = outputSize - inflating->avail_out;
    const bool stands = reached == end && inflating->avail_in == before;
    end = reached;
    // A wrong checksum at the very end is no reason to lose rows that the chunks' own say are sound.
    if ((result != ISAL_DECOMP_OK && result != ISAL_INCORRECT_CHECKSUM) || stands)
      return end - begin >= rowSize + 1;
  }
  return true;
}

/// The next bytes of the chunks, which follow each other without others between them.
bool PngRows::readInput() {
  while (left == 0) {
    std::array<std::uint8_t, 12> between{};  // the chunk's checksum, the next one's size and type
    if (!file(between.data(), between.size()) || numberOf(between.data()) != checksum ||
        !std::equal(idat.begin(), idat.end(), between.begin() + 8))
      return false;
    left = numberOf(between.data() + 4);
    checksum = crc32_gzip_refl(0, idat.data(), idat.size());
  }
  const std::uint32_t count = std::min(left, static_cast<std::uint32_t>(inputSize));
  if (!file(input.get(), count))
    return false;
  left -= count;
  checksum = crc32_gzip_refl(checksum, input.get(), count);
  inflating->next_in = input.get();
  inflating->avail_in = count;
  return true;
}

bool PngRows::endsWell() {
  while (left > 0)
    if (!readInput())
      return true;  // cut short behind the last pixel
  std::array<std::uint8_t, 4> told{};
  return !file(told.data(), told.size()) || numberOf(told.data()) == checksum;
}

void PngRows::expand(const std::uint8_t* row, std::uint8_t* rgba) const {
  const std::uint8_t* const last = rgba + 4 * form.width;
  if (form.channels == 4) {
    std::memcpy(rgba, row, 4 * form.width);
  } else if (form.channels == 3 && form.clear < 0) {
    for (; rgba != last; row += 3, rgba += 4) {
      rgba[0] = row[0];
      rgba[1] = row[1];
      rgba[2] = row[2];
      rgba[3] = 255;
    }
  } else if (form.channels == 3) {
    for (; rgba != last; row += 3, rgba += 4) {
      std::copy_n(row, 3, rgba);
      rgba[3] = (row[0] << 16 | row[1] << 8 | row[2]) == form.clear ? 0 : 255;
    }
  } else if (form.channels == 2) {
    for (; rgba != last; row += 2, rgba += 4) {
      rgba[0] = rgba[1] = rgba[2] = row[0];
      rgba[3] = row[1];
    }
  } else {
    const unsigned bits = form.bitsPerPixel, perByte = 8 / bits, most = (1U << bits) - 1;
    for (std::size_t x = 0; x < form.width; ++x, rgba += 4)
      std::ranges::copy(form.colours[(unsigned{row[x / perByte]} >> (8 - bits * (1 + x % perByte))) & most],
                        rgba);
  }
}

}  // namespace platform::decoding
