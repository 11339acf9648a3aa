#include "platform/imaging/codecs/decoding/Decoders.h"

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <jerror.h>
#include <jpeglib.h>
#include <memory>
#include <string_view>

namespace platform::decoding {
namespace {

constexpr int exifMarker = JPEG_APP0 + 1;
constexpr int profileMarker = JPEG_APP0 + 2;
constexpr int mostScans = 500;  // a forged progressive file of few bytes may ask for far more work

/// All that must outlive a jump out of the library. The functions that call into it own nothing themselves.
struct JpegReader {
  JpegReader();
  ~JpegReader() { jpeg_destroy_decompress(&jpeg); }
  JpegReader(const JpegReader&) = delete;
  JpegReader& operator=(const JpegReader&) = delete;

  jpeg_decompress_struct jpeg{};
  jpeg_error_mgr errors{};
  jpeg_progress_mgr progress{};
  std::jmp_buf exit{};
  bool atEnd = false;  // the file has no more bytes
};

[[noreturn]] void leave(j_common_ptr common) {
  std::longjmp(static_cast<JpegReader*>(common->client_data)->exit, 1);
}
/// The library makes an end mark up where the file has none. A picture that lacks nothing else is whole; of
/// one whose pixels are missing, it would paint over the damage.
void judgeMessage(j_common_ptr common, int level) {
  auto* reader = static_cast<JpegReader*>(common->client_data);
  if (level < 0 && common->err->msg_code == JWRN_JPEG_EOF)
    reader->atEnd = true;
  else if (level < 0 && common->err->msg_code == JWRN_HIT_MARKER && reader->atEnd)
    leave(common);
}
/// Whether a picture that comes in several scans may lack some of them, if its file has no end mark. To be
/// asked before the library gives its memory back.
bool mayLackScans(const jpeg_decompress_struct& jpeg) {
  if (jpeg.arith_code)  // whose missing bits nothing tells
    return true;
  if (!jpeg.coef_bits)
    return jpeg.buffered_image || jpeg.comps_in_scan < jpeg.num_components;
  for (int component = 0; component < jpeg.num_components; ++component)
    for (int coefficient = 0; coefficient < DCTSIZE2; ++coefficient)
      if (jpeg.coef_bits[component][coefficient] != 0)
        return true;
  return false;
}
void limitScans(j_common_ptr common) {
  if (reinterpret_cast<j_decompress_ptr>(common)->input_scan_number > mostScans)
    leave(common);
}

JpegReader::JpegReader() {
  jpeg.err = jpeg_std_error(&errors);
  jpeg.client_data = this;
  errors.error_exit = leave;
  errors.emit_message = judgeMessage;
  progress.progress_monitor = limitScans;
}

PictureHeader headerOf(JpegReader& reader) {
  PictureHeader header{reader.jpeg.output_width, reader.jpeg.output_height, Alpha::None, 1, {}};
  for (auto* marker = reader.jpeg.marker_list; marker; marker = marker->next) {
    const std::string_view data(reinterpret_cast<const char*>(marker->data), marker->data_length);
    if (marker->marker == exifMarker && data.starts_with("Exif")) {
      header.orientation = exifOrientation(Bytes(marker->data, marker->data_length));
      break;
    }
  }
  JOCTET* profile = nullptr;
  unsigned size = 0;
  if (jpeg_read_icc_profile(&reader.jpeg, &profile, &size) != 0) {
    header.profile = QByteArray(reinterpret_cast<const char*>(profile), size);
    std::free(profile);
  }
  return header;
}

/// The library scales by eighths while it decodes, at less than the cost of the whole.
void chooseSize(jpeg_decompress_struct& jpeg, const RowSink& sink) {
  const auto enough = sink.longestSide();
  if (!enough)
    return;
  const auto longest = std::max(jpeg.image_width, jpeg.image_height);
  jpeg.scale_denom = 8;
  for (unsigned eighths : {1U, 2U, 4U, 8U}) {
    jpeg.scale_num = eighths;
    if (std::int64_t{longest} * eighths / 8 >= *enough)
      break;
  }
}

/// Four inks, stored as what they leave of the light, to RGBA in place.
void inksToRgba(std::uint8_t* pixel, std::size_t count) {
  for (std::uint8_t* const end = pixel + 4 * count; pixel != end; pixel += 4) {
    const int black = pixel[3];
    for (int channel = 0; channel < 3; ++channel)
      pixel[channel] = static_cast<std::uint8_t>((pixel[channel] * black + 127) / 255);
    pixel[3] = 255;
  }
}

bool readRows(JpegReader& reader, Bytes file, RowSink& sink) {
  jpeg_decompress_struct& jpeg = reader.jpeg;
  if (setjmp(reader.exit) != 0)
    return false;
  jpeg_create_decompress(&jpeg);
  jpeg.progress = &reader.progress;
  jpeg.mem->max_memory_to_use = static_cast<long>(sink.bounds().bytes);
  jpeg_mem_src(&jpeg, file.data(), file.size());
  jpeg_save_markers(&jpeg, exifMarker, 0xffff);
  jpeg_save_markers(&jpeg, profileMarker, 0xffff);
  jpeg_read_header(&jpeg, TRUE);
  const bool inks = jpeg.jpeg_color_space == JCS_CMYK || jpeg.jpeg_color_space == JCS_YCCK;
  jpeg.out_color_space = inks ? JCS_CMYK : JCS_EXT_RGBA;
  chooseSize(jpeg, sink);
  if (!sink.allows(jpeg.image_width, jpeg.image_height))
    return false;
  jpeg_start_decompress(&jpeg);
  if (!sink.begin(headerOf(reader)))
    return false;
  while (jpeg.output_scanline < jpeg.output_height) {
    JSAMPROW row = sink.row();
    jpeg_read_scanlines(&jpeg, &row, 1);
    if (inks)
      inksToRgba(row, jpeg.output_width);
    sink.finishRow();
  }
  const bool mayLack = mayLackScans(jpeg);
  jpeg_finish_decompress(&jpeg);  // reads on to the end mark
  return !(reader.atEnd && mayLack);
}

}  // namespace

bool decodeJpeg(Bytes file, RowSink& sink) {
  JpegReader reader;
  return readRows(reader, file, sink);
}

}  // namespace platform::decoding
