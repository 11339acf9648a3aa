#include "platform/imaging/codecs/decoding/Decoders.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <tiffio.h>

namespace platform::decoding {
namespace {

struct Source {
  Bytes file;
  std::size_t position = 0;
};

Source& source(thandle_t handle) {
  return *static_cast<Source*>(handle);
}

tmsize_t readBytes(thandle_t handle, void* to, tmsize_t size) {
  Source& from = source(handle);
  const std::size_t left = from.file.size() - std::min(from.position, from.file.size());
  const std::size_t count = std::min(static_cast<std::size_t>(size), left);
  std::memcpy(to, from.file.data() + from.position, count);
  from.position += count;
  return static_cast<tmsize_t>(count);
}
tmsize_t refuseToWrite(thandle_t, void*, tmsize_t) {
  return -1;
}
toff_t seek(thandle_t handle, toff_t offset, int origin) {
  Source& from = source(handle);
  const toff_t base = origin == SEEK_SET ? 0 : origin == SEEK_CUR ? from.position : from.file.size();
  return from.position = std::min<toff_t>(base + offset, from.file.size());
}
int closeNothing(thandle_t) {
  return 0;
}
toff_t sizeOf(thandle_t handle) {
  return source(handle).file.size();
}
int ignore(TIFF*, void*, const char*, const char*, va_list) {
  return 1;
}

struct CloseTiff {
  void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using Tiff = std::unique_ptr<TIFF, CloseTiff>;

Tiff open(Source& from, std::int64_t mostMemory) {
  TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
  if (!options)
    return nullptr;
  TIFFOpenOptionsSetMaxSingleMemAlloc(options, mostMemory);
  TIFFOpenOptionsSetErrorHandlerExtR(options, ignore, nullptr);
  TIFFOpenOptionsSetWarningHandlerExtR(options, ignore, nullptr);
  // "m": the library asks for the bytes instead of mapping them itself
  Tiff tiff(TIFFClientOpenExt("", "rm", &from, readBytes, refuseToWrite, seek, closeNothing, sizeOf, nullptr,
                              nullptr, options));
  TIFFOpenOptionsFree(options);
  return tiff;
}

/// The library's converter of any kind of pixels to RGBA.
struct Converter {
  explicit Converter(TIFF* tiff) {
    char why[1024];
    works = TIFFRGBAImageOK(tiff, why) != 0 && TIFFRGBAImageBegin(&image, tiff, 1, why) != 0;
  }
  ~Converter() {
    if (works)
      TIFFRGBAImageEnd(&image);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  TIFFRGBAImage image{};
  bool works = false;
};

Alpha alphaOf(const TIFFRGBAImage& image) {
  if (image.alpha == 0)
    return Alpha::None;
  // The converter multiplies colours with a straight alpha, but not grey.
  const bool isGrey =
      image.photometric == PHOTOMETRIC_MINISBLACK || image.photometric == PHOTOMETRIC_MINISWHITE;
  return isGrey && image.alpha == EXTRASAMPLE_UNASSALPHA ? Alpha::Straight : Alpha::Premultiplied;
}

PictureHeader headerOf(TIFF* tiff, const TIFFRGBAImage& image) {
  PictureHeader header{image.width, image.height, alphaOf(image), 1, {}};
  if (image.orientation >= 1 && image.orientation <= 8)
    header.orientation = image.orientation;
  std::uint32_t size = 0;
  void* profile = nullptr;
  if (TIFFGetField(tiff, TIFFTAG_ICCPROFILE, &size, &profile) != 0)
    header.profile = QByteArray(static_cast<const char*>(profile), size);
  return header;
}

/// How many rows the file keeps together, so that none is unpacked twice.
std::uint32_t rowsTogether(TIFF* tiff, std::uint32_t height) {
  std::uint32_t rows = 0;
  TIFFGetFieldDefaulted(tiff, TIFFIsTiled(tiff) != 0 ? TIFFTAG_TILELENGTH : TIFFTAG_ROWSPERSTRIP, &rows);
  return std::clamp(rows, std::uint32_t{1}, height);
}

}  // namespace

bool decodeTiff(Bytes file, RowSink& sink) {
  Source from{file};
  const Tiff tiff = open(from, sink.bounds().bytes);
  if (!tiff)
    return false;
  Converter converter(tiff.get());
  TIFFRGBAImage& image = converter.image;
  if (!converter.works || !sink.begin(headerOf(tiff.get(), image)))
    return false;
  image.req_orientation = image.orientation;  // rows as they are stored
  const std::uint32_t band = rowsTogether(tiff.get(), image.height);
  const std::unique_ptr<std::uint32_t[]> pixels(new (std::nothrow)
                                                    std::uint32_t[std::size_t{image.width} * band]);
  if (!pixels)
    return false;
  for (std::uint32_t y = 0; y < image.height; y += band) {
    const std::uint32_t count = std::min(band, image.height - y);
    image.row_offset = static_cast<int>(y);
    if (TIFFRGBAImageGet(&image, pixels.get(), image.width, count) == 0)
      return false;
    for (std::uint32_t row = 0; row < count; ++row) {
      std::memcpy(sink.row(), pixels.get() + std::size_t{row} * image.width, std::size_t{4} * image.width);
      sink.finishRow();
    }
  }
  return true;
}

}  // namespace platform::decoding
