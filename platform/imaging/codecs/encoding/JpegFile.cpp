#include "platform/imaging/codecs/encoding/Encoders.h"

#include <algorithm>
#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <jpeglib.h>
#include <vector>

namespace platform::encoding {
namespace {

constexpr int quality = 90;

/// All that must outlive a jump out of the library. The functions that call into it own nothing themselves.
struct Writer {
  Writer();
  ~Writer() {
    jpeg_destroy_compress(&jpeg);
    std::free(bytes);
  }
  Writer(const Writer&) = delete;
  Writer& operator=(const Writer&) = delete;

  jpeg_compress_struct jpeg{};
  jpeg_error_mgr errors{};
  std::jmp_buf exit{};
  unsigned char* bytes = nullptr;
  unsigned long size = 0;
  std::vector<std::uint8_t> row;
};

[[noreturn]] void leave(j_common_ptr common) {
  std::longjmp(static_cast<Writer*>(common->client_data)->exit, 1);
}
void ignore(j_common_ptr, int) {
}

Writer::Writer() {
  jpeg.err = jpeg_std_error(&errors);
  jpeg.client_data = this;
  errors.error_exit = leave;
  errors.emit_message = ignore;
}

/// Puts premultiplied pixels on white.
void putOnWhite(const std::uint8_t* from, std::uint8_t* to, std::size_t count) {
  for (const std::uint8_t* const end = from + 4 * count; from != end; from += 4, to += 4) {
    const int white = 255 - from[3];
    for (int channel = 0; channel < 3; ++channel)
      to[channel] = static_cast<std::uint8_t>(std::min(255, from[channel] + white));
    to[3] = 255;
  }
}

bool writeRows(Writer& writer, const QImage& picture) {
  jpeg_compress_struct& jpeg = writer.jpeg;
  if (setjmp(writer.exit) != 0)
    return false;
  jpeg_create_compress(&jpeg);
  jpeg_mem_dest(&jpeg, &writer.bytes, &writer.size);
  jpeg.image_width = static_cast<JDIMENSION>(picture.width());
  jpeg.image_height = static_cast<JDIMENSION>(picture.height());
  jpeg.input_components = 4;
  jpeg.in_color_space = JCS_EXT_RGBX;
  jpeg_set_defaults(&jpeg);
  jpeg_set_quality(&jpeg, quality, TRUE);
  for (int component = 0; component < jpeg.num_components; ++component)
    jpeg.comp_info[component].h_samp_factor = jpeg.comp_info[component].v_samp_factor = 1;
  jpeg_start_compress(&jpeg, TRUE);
  while (jpeg.next_scanline < jpeg.image_height) {
    putOnWhite(picture.constScanLine(static_cast<int>(jpeg.next_scanline)), writer.row.data(),
               jpeg.image_width);
    JSAMPROW row = writer.row.data();
    jpeg_write_scanlines(&jpeg, &row, 1);
  }
  jpeg_finish_compress(&jpeg);
  return true;
}

}  // namespace

std::optional<QByteArray> encodeJpeg(const QImage& picture) {
  Writer writer;
  writer.row.resize(4 * static_cast<std::size_t>(picture.width()));
  if (!writeRows(writer, picture))
    return std::nullopt;
  return QByteArray(reinterpret_cast<const char*>(writer.bytes), static_cast<qsizetype>(writer.size));
}

}  // namespace platform::encoding
