#include "platform/imaging/codecs/decoding/Decoders.h"

#include <cstring>
#include <memory>
#include <new>
#include <webp/decode.h>
#include <webp/demux.h>

namespace platform::decoding {
namespace {

struct Release {
  void operator()(WebPDemuxer* demuxer) const { WebPDemuxDelete(demuxer); }
};
using Demuxer = std::unique_ptr<WebPDemuxer, Release>;

/// The data of a chunk beside the picture; empty if the file has none.
Bytes chunk(const WebPDemuxer* demuxer, const char* name) {
  WebPChunkIterator found;
  Bytes data;
  if (WebPDemuxGetChunk(demuxer, name, 1, &found) != 0)
    data = Bytes(found.chunk.bytes, found.chunk.size);
  WebPDemuxReleaseChunkIterator(&found);
  return data;
}

/// A rectangle of RGBA pixels within the picture.
struct Frame {
  std::unique_ptr<std::uint8_t[]> pixels;
  std::size_t left = 0, top = 0, width = 0, height = 0;
};

Frame readFrame(const WebPIterator& found) {
  Frame frame;
  int width = 0, height = 0;
  if (WebPGetInfo(found.fragment.bytes, found.fragment.size, &width, &height) == 0 || width != found.width ||
      height != found.height)
    return frame;
  frame.left = static_cast<std::size_t>(found.x_offset);
  frame.top = static_cast<std::size_t>(found.y_offset);
  frame.width = static_cast<std::size_t>(width);
  frame.height = static_cast<std::size_t>(height);
  const std::size_t size = 4 * frame.width * frame.height;
  frame.pixels.reset(new (std::nothrow) std::uint8_t[size]);
  if (frame.pixels && WebPDecodeRGBAInto(found.fragment.bytes, found.fragment.size, frame.pixels.get(), size,
                                         4 * width) == nullptr)
    frame.pixels.reset();
  return frame;
}

void pour(const Frame& frame, std::size_t width, std::size_t height, RowSink& sink) {
  for (std::size_t y = 0; y < height; ++y) {
    std::uint8_t* row = sink.row();
    std::memset(row, 0, 4 * width);
    if (y >= frame.top && y < frame.top + frame.height)
      std::memcpy(row + 4 * frame.left, frame.pixels.get() + 4 * frame.width * (y - frame.top),
                  4 * frame.width);
    sink.finishRow();
  }
}

}  // namespace

bool decodeWebP(Bytes file, RowSink& sink) {
  const WebPData data{file.data(), file.size()};
  const Demuxer demuxer(WebPDemux(&data));
  if (!demuxer)
    return false;
  const std::size_t width = WebPDemuxGetI(demuxer.get(), WEBP_FF_CANVAS_WIDTH);
  const std::size_t height = WebPDemuxGetI(demuxer.get(), WEBP_FF_CANVAS_HEIGHT);
  const Bytes profile = chunk(demuxer.get(), "ICCP");
  const bool hasAlpha =
      (WebPDemuxGetI(demuxer.get(), WEBP_FF_FORMAT_FLAGS) & (ALPHA_FLAG | ANIMATION_FLAG)) != 0;
  if (!sink.begin({static_cast<std::int64_t>(width), static_cast<std::int64_t>(height),
                   hasAlpha ? Alpha::Straight : Alpha::None, exifOrientation(chunk(demuxer.get(), "EXIF")),
                   QByteArray(reinterpret_cast<const char*>(profile.data()),
                              static_cast<qsizetype>(profile.size()))}))
    return false;
  WebPIterator found{};
  Frame frame;
  if (WebPDemuxGetFrame(demuxer.get(), 1, &found) != 0)
    frame = readFrame(found);
  WebPDemuxReleaseIterator(&found);
  if (!frame.pixels || frame.left + frame.width > width || frame.top + frame.height > height)
    return false;
  pour(frame, width, height, sink);
  return true;
}

}  // namespace platform::decoding
