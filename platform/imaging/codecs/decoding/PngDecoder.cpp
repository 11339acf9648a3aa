#include "platform/imaging/codecs/decoding/Decoders.h"
#include "platform/imaging/codecs/decoding/PngColours.h"
#include "platform/imaging/codecs/decoding/PngRows.h"

#include <array>
#include <csetjmp>
#include <cstring>
#include <memory>
#include <new>
#include <png.h>

namespace platform::decoding {
namespace {

/// All that must outlive a jump out of the library. The functions that call into it own nothing themselves.
struct PngReader {
  explicit PngReader(const ByteSource& source) : file(source) {}
  ~PngReader() { png_destroy_read_struct(&png, &info, nullptr); }
  PngReader(const PngReader&) = delete;
  PngReader& operator=(const PngReader&) = delete;

  const ByteSource& file;
  png_structp png = nullptr;
  png_infop info = nullptr;
  bool isWhole = false;  // every row is there
  bool endsEarly = false;
  std::array<std::uint8_t, 8> chunkHead{};  // size and type, of the chunk that was begun last
  std::unique_ptr<std::uint8_t[]> whole;    // of an interlaced picture, whose rows come in seven passes
};

void readBytes(png_structp png, png_bytep to, std::size_t size) {
  auto* reader = static_cast<PngReader*>(png_get_io_ptr(png));
  reader->endsEarly = !reader->file(to, size);
  if (size == reader->chunkHead.size())
    std::memcpy(reader->chunkHead.data(), to, size);
  if (reader->endsEarly)
    png_error(png, "the file ends early");
}

[[noreturn]] void leave(png_structp png, png_const_charp) {
  png_longjmp(png, 1);
}
void ignore(png_structp, png_const_charp) {
}

/// What the chunks for gamma and primaries tell, which count where there is no profile and no word of sRGB.
PngColours coloursOf(const PngReader& reader) {
  PngColours colours;
  png_get_gAMA(reader.png, reader.info, &colours.gamma);
  auto& [white, red, green, blue] = colours.xy;
  png_get_cHRM(reader.png, reader.info, &white[0], &white[1], &red[0], &red[1], &green[0], &green[1],
               &blue[0], &blue[1]);
  return colours;
}

PictureHeader headerOf(const PngReader& reader, Alpha alpha) {
  PictureHeader header{png_get_image_width(reader.png, reader.info),
                       png_get_image_height(reader.png, reader.info),
                       alpha,
                       1,
                       {}};
  png_charp name = nullptr;
  png_bytep block = nullptr;
  png_uint_32 size = 0;
  int compression = 0;
  if (png_get_iCCP(reader.png, reader.info, &name, &compression, &block, &size) != 0)
    header.profile = QByteArray(reinterpret_cast<const char*>(block), size);
  else if (png_get_valid(reader.png, reader.info, PNG_INFO_sRGB) == 0)
    header.profile = profileOf(coloursOf(reader));
  if (png_get_eXIf_1(reader.png, reader.info, &size, &block) != 0)
    header.orientation = exifOrientation(Bytes(block, size));
  return header;
}

bool hasAlpha(const PngReader& reader) {
  return (png_get_color_type(reader.png, reader.info) & PNG_COLOR_MASK_ALPHA) != 0 ||
         png_get_valid(reader.png, reader.info, PNG_INFO_tRNS) != 0;
}

/// Pixels of one channel, by their number.
void tellColours(const PngReader& reader, PngRows::Form& form) {
  png_bytep alpha = nullptr;
  int alphas = 0;
  png_color_16p clear = nullptr;
  png_get_tRNS(reader.png, reader.info, &alpha, &alphas, &clear);
  png_colorp palette = nullptr;
  int size = 0;
  const unsigned most = (1U << form.bitsPerPixel) - 1;
  if (png_get_PLTE(reader.png, reader.info, &palette, &size) != 0 &&
      png_get_color_type(reader.png, reader.info) == PNG_COLOR_TYPE_PALETTE) {
    form.colours.fill({0, 0, 0, 255});
    for (int i = 0; i < size; ++i)
      form.colours[static_cast<std::size_t>(i)] = {palette[i].red, palette[i].green, palette[i].blue, 255};
    for (int i = 0; i < alphas && alpha; ++i)
      form.colours[static_cast<std::size_t>(i)][3] = alpha[i];
    return;
  }
  for (unsigned i = 0; i <= most; ++i) {
    const auto level = static_cast<std::uint8_t>(i * 255 / most);
    const bool isClear = clear && (clear->gray & most) == i;
    form.colours[i] = {level, level, level, static_cast<std::uint8_t>(isClear ? 0 : 255)};
  }
}

PngRows::Form formOf(const PngReader& reader) {
  PngRows::Form form;
  form.width = png_get_image_width(reader.png, reader.info);
  form.channels = png_get_channels(reader.png, reader.info);
  form.bitsPerPixel = form.channels * png_get_bit_depth(reader.png, reader.info);
  if (form.channels == 1)
    tellColours(reader, form);
  png_color_16p clear = nullptr;
  if (form.channels == 3 && png_get_tRNS(reader.png, reader.info, nullptr, nullptr, &clear) != 0 && clear)
    form.clear = (clear->red & 255) << 16 | (clear->green & 255) << 8 | (clear->blue & 255);
  return form;
}

/// The usual file's rows, without the library, for its inflating is most of the time that a picture takes.
bool readUsualRows(const PngReader& reader, RowSink& sink) {
  if (!sink.begin(headerOf(reader, hasAlpha(reader) ? Alpha::Straight : Alpha::None)))
    return false;
  const std::uint8_t* size = reader.chunkHead.data();
  const std::uint32_t idatSize =
      std::uint32_t{size[0]} << 24 | std::uint32_t{size[1]} << 16 | std::uint32_t{size[2]} << 8 | size[3];
  PngRows rows(reader.file, idatSize, formOf(reader));
  for (std::size_t y = png_get_image_height(reader.png, reader.info); y > 0; --y) {
    if (!rows.next(sink.row()))
      return false;
    sink.finishRow();
  }
  return rows.endsWell();
}

/// Whatever the file's kind of pixels, rows come as RGBA with 8 bits a channel.
Alpha askForRgba(const PngReader& reader) {
  png_set_expand(reader.png);
  png_set_scale_16(reader.png);
  png_set_gray_to_rgb(reader.png);
  png_set_filler(reader.png, 0xff, PNG_FILLER_AFTER);
  return hasAlpha(reader) ? Alpha::Straight : Alpha::None;
}

void readInterlaced(PngReader& reader, int passes, std::size_t rowSize, std::size_t height, RowSink& sink) {
  for (int pass = 0; pass < passes; ++pass)
    for (std::size_t y = 0; y < height; ++y)
      png_read_row(reader.png, nullptr, reader.whole.get() + y * rowSize);
  for (std::size_t y = 0; y < height; ++y) {
    std::memcpy(sink.row(), reader.whole.get() + y * rowSize, rowSize);
    sink.finishRow();
  }
}

/// Reads up to the first row and finds out how the rest is to be read.
enum class Kind { Refused, Usual, Odd };
Kind readHead(PngReader& reader, const RowSink& sink) {
  if (setjmp(png_jmpbuf(reader.png)) != 0)
    return Kind::Refused;
  png_read_info(reader.png, reader.info);
  if (!sink.allows(png_get_image_width(reader.png, reader.info),
                   png_get_image_height(reader.png, reader.info)))
    return Kind::Refused;
  const bool isUsual = png_get_interlace_type(reader.png, reader.info) == PNG_INTERLACE_NONE &&
                       png_get_bit_depth(reader.png, reader.info) <= 8;
  return isUsual ? Kind::Usual : Kind::Odd;
}

bool readOddRows(PngReader& reader, RowSink& sink) {
  if (setjmp(png_jmpbuf(reader.png)) != 0)
    return reader.isWhole && reader.endsEarly;  // nothing but what comes after the pixels is missing
  const Alpha alpha = askForRgba(reader);
  const int passes = png_set_interlace_handling(reader.png);
  png_read_update_info(reader.png, reader.info);
  if (!sink.begin(headerOf(reader, alpha)))
    return false;
  const std::size_t height = png_get_image_height(reader.png, reader.info);
  const std::size_t rowSize = png_get_rowbytes(reader.png, reader.info);
  if (passes > 1) {
    reader.whole.reset(new (std::nothrow) std::uint8_t[rowSize * height]);
    if (!reader.whole)
      return false;
    readInterlaced(reader, passes, rowSize, height, sink);
  } else {
    for (std::size_t y = 0; y < height; ++y) {
      png_read_row(reader.png, sink.row(), nullptr);
      sink.finishRow();
    }
  }
  reader.isWhole = true;
  png_read_end(reader.png, nullptr);
  return true;
}

}  // namespace

bool decodePng(const ByteSource& file, RowSink& sink) {
  PngReader reader(file);
  reader.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, leave, ignore);
  reader.info = reader.png ? png_create_info_struct(reader.png) : nullptr;
  if (!reader.info)
    return false;
  png_set_read_fn(reader.png, &reader, readBytes);
  png_set_user_limits(reader.png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);  // the sink's bounds count instead
  switch (readHead(reader, sink)) {
    case Kind::Usual:
      return readUsualRows(reader, sink);
    case Kind::Odd:
      return readOddRows(reader, sink);
    case Kind::Refused:
      break;
  }
  return false;
}

}  // namespace platform::decoding
