#include "platform/imaging/codecs/encoding/Encoders.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <tiffio.h>
#include <vector>

namespace platform::encoding {
namespace {

struct Target {
  QByteArray file;
  qsizetype position = 0;
};

Target& target(thandle_t handle) {
  return *static_cast<Target*>(handle);
}

tmsize_t readBytes(thandle_t handle, void* to, tmsize_t size) {
  Target& from = target(handle);
  const qsizetype count = std::clamp<qsizetype>(from.file.size() - from.position, 0, size);
  std::memcpy(to, from.file.constData() + from.position, static_cast<std::size_t>(count));
  from.position += count;
  return count;
}
tmsize_t writeBytes(thandle_t handle, void* bytes, tmsize_t size) {
  Target& to = target(handle);
  if (to.position + size > to.file.size())
    to.file.resize(to.position + size);
  std::memcpy(to.file.data() + to.position, bytes, static_cast<std::size_t>(size));
  to.position += size;
  return size;
}
toff_t seek(thandle_t handle, toff_t offset, int origin) {
  Target& to = target(handle);
  const qsizetype base = origin == SEEK_SET ? 0 : origin == SEEK_CUR ? to.position : to.file.size();
  to.position = base + static_cast<qsizetype>(offset);
  return static_cast<toff_t>(to.position);
}
int closeNothing(thandle_t) {
  return 0;
}
toff_t sizeOf(thandle_t handle) {
  return static_cast<toff_t>(target(handle).file.size());
}

struct CloseTiff {
  void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using Tiff = std::unique_ptr<TIFF, CloseTiff>;

void describe(TIFF* tiff, const QImage& picture, Opacity opacity) {
  const int channels = opacity == Opacity::Opaque ? 3 : 4;
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, picture.width());
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, picture.height());
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, channels);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_LZW);
  TIFFSetField(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
  if (opacity == Opacity::HasAlpha) {
    const std::uint16_t premultiplied = EXTRASAMPLE_ASSOCALPHA;
    TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &premultiplied);
  }
  TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, TIFFDefaultStripSize(tiff, 0));
}

/// The library changes the row that it is given.
void copyRow(const std::uint8_t* from, std::vector<std::uint8_t>& to, Opacity opacity) {
  if (opacity == Opacity::HasAlpha) {
    std::memcpy(to.data(), from, to.size());
    return;
  }
  for (std::size_t i = 0; i < to.size(); i += 3, from += 4)
    std::memcpy(to.data() + i, from, 3);
}

}  // namespace

std::optional<QByteArray> encodeTiff(const QImage& picture) {
  Target to;
  Tiff tiff(
      TIFFClientOpen("", "wl", &to, readBytes, writeBytes, seek, closeNothing, sizeOf, nullptr, nullptr));
  if (!tiff)
    return std::nullopt;
  const Opacity opacity = opacityOf(picture);
  describe(tiff.get(), picture, opacity);
  std::vector<std::uint8_t> row((opacity == Opacity::Opaque ? 3 : 4) *
                                static_cast<std::size_t>(picture.width()));
  for (int y = 0; y < picture.height(); ++y) {
    copyRow(picture.constScanLine(y), row, opacity);
    if (TIFFWriteScanline(tiff.get(), row.data(), static_cast<std::uint32_t>(y)) < 0)
      return std::nullopt;
  }
  if (TIFFFlush(tiff.get()) == 0)
    return std::nullopt;
  tiff.reset();
  return std::move(to.file);
}

}  // namespace platform::encoding
