#include "tools/screencapture/x11/FrozenScreen.h"

#include "platform/system/SharedSegment.h"
#include "tools/screencapture/x11/PixelFormat.h"

#include <algorithm>
#include <vector>
#include <xcb/shm.h>

namespace screencapture {

namespace {

constexpr std::uint32_t allPlanes = 0xffffffff;
// Small enough to stay in a processor's cache from the server's write to our read.
constexpr std::size_t bandBytes = 1 << 20;

/// Memory that the X server writes pictures into. Not there where the server is on another machine, lives in
/// another container, or lacks the extension.
class SharedMemory {
 public:
  SharedMemory(const Display& used, std::size_t size) : display(used) {
    if (!display.has(xcb_shm_id))
      return;
    memory = platform::SharedSegment::create(size);
    if (!memory)
      return;
    segment = display.newId();
    const auto attached =
        xcb_shm_attach_checked(display.connection(), segment, static_cast<std::uint32_t>(memory->id()), 0);
    const Reply<xcb_generic_error_t> error(xcb_request_check(display.connection(), attached));
    memory->releaseNumber();
    if (error || display.isLost())
      memory.reset();
  }

  ~SharedMemory() {
    if (memory)
      xcb_shm_detach(display.connection(), segment);
  }
  SharedMemory(const SharedMemory&) = delete;
  SharedMemory& operator=(const SharedMemory&) = delete;

  /// Null where pictures must come through the connection.
  [[nodiscard]] const std::uint8_t* data() const { return memory ? memory->data() : nullptr; }
  [[nodiscard]] xcb_shm_seg_t id() const { return segment; }

 private:
  const Display& display;
  std::optional<platform::SharedSegment> memory;
  xcb_shm_seg_t segment = 0;
};

/// Fetches a part of a pixmap in bands of rows. The server copies the next band while we work on this one.
class BandReader {
 public:
  BandReader(const Display& used, xcb_pixmap_t source, const Rectangle& fetched, std::size_t rowBytes)
      : display(used),
        pixmap(source),
        part(fetched),
        stride(rowBytes),
        rows(std::clamp(static_cast<int>(bandBytes / stride), 1, part.height)),
        shared(display, 2 * static_cast<std::size_t>(rows) * stride) {
    request();
  }

  [[nodiscard]] bool isDone() const { return taken == part.height; }

  /// Calls `use(pixels, rowCount)` with the next band; false where it didn't come.
  template <typename Use>
  [[nodiscard]] bool next(Use use) {
    const Pending band = pending;
    request();
    const Reply<void> answer = wait(band);
    if (!answer)
      return false;
    const std::uint8_t* pixels =
        shared.data() ? shared.data() + band.offset
                      : xcb_get_image_data(static_cast<const xcb_get_image_reply_t*>(answer.get()));
    use(pixels, band.rows);
    taken += band.rows;
    return true;
  }

 private:
  struct Pending {
    unsigned sequence = 0;
    int rows = 0;
    std::size_t offset = 0;  // in the shared memory
  };

  void request() {
    if (requested == part.height)
      return;
    const int count = std::min(rows, part.height - requested);
    const auto x = static_cast<std::int16_t>(part.x), y = static_cast<std::int16_t>(part.y + requested);
    const auto width = static_cast<std::uint16_t>(part.width), height = static_cast<std::uint16_t>(count);
    pending.rows = count;
    // The two halves of the memory take turns.
    pending.offset = pending.offset ? 0 : static_cast<std::size_t>(rows) * stride;
    if (shared.data())
      pending.sequence = xcb_shm_get_image(display.connection(), pixmap, x, y, width, height, allPlanes,
                                           XCB_IMAGE_FORMAT_Z_PIXMAP, shared.id(),
                                           static_cast<std::uint32_t>(pending.offset))
                             .sequence;
    else
      pending.sequence = xcb_get_image(display.connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, x, y, width,
                                       height, allPlanes)
                             .sequence;
    display.flush();
    requested += count;
  }

  Reply<void> wait(const Pending& band) const {
    if (shared.data())
      return Reply<void>(
          reply(display, xcb_shm_get_image_reply, xcb_shm_get_image_cookie_t{band.sequence}).release());
    Reply<xcb_get_image_reply_t> image =
        reply(display, xcb_get_image_reply, xcb_get_image_cookie_t{band.sequence});
    const bool isWhole = image && static_cast<std::size_t>(xcb_get_image_data_length(image.get())) >=
                                      static_cast<std::size_t>(band.rows) * stride;
    return Reply<void>(isWhole ? image.release() : nullptr);
  }

  const Display& display;
  const xcb_pixmap_t pixmap;
  const Rectangle part;
  const std::size_t stride;
  const int rows;  // of a full band
  SharedMemory shared;
  Pending pending;
  int requested = 0;
  int taken = 0;
};

}  // namespace

FrozenScreen::FrozenScreen(const Display& used) : display(used), picture(used.newId()) {
  const auto [width, height] = display.size();
  const xcb_gcontext_t copy = display.newId();
  // Without inferiors the copy would be of the desktop's background alone.
  const std::uint32_t values[] = {XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS, 0};
  xcb_create_gc(display.connection(), copy, display.root(), XCB_GC_SUBWINDOW_MODE | XCB_GC_GRAPHICS_EXPOSURES,
                values);
  xcb_create_pixmap(display.connection(), display.screen().root_depth, picture, display.root(),
                    static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height));
  xcb_copy_area(display.connection(), display.root(), picture, copy, 0, 0, 0, 0,
                static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height));
  xcb_free_gc(display.connection(), copy);
}

std::optional<platform::PngFile> FrozenScreen::encode(const Rectangle& part) const {
  const std::optional<PixelFormat> format = PixelFormat::ofRoot(display);
  if (!format)
    return std::nullopt;
  const std::optional<platform::ChannelLayout> direct = format->layout();
  auto encoder = platform::PngEncoder::begin(
      part.width, part.height, direct.value_or(platform::ChannelLayout{3}), platform::PngOptions{});
  const std::size_t stride = format->stride(part.width);
  const std::size_t rgbStride = static_cast<std::size_t>(part.width) * 3;
  std::vector<std::uint8_t> rgb(direct ? 0 : rgbStride);
  BandReader bands(display, picture, part, stride);
  while (encoder && !bands.isDone()) {
    const bool came = bands.next([&](const std::uint8_t* pixels, int rows) {
      if (direct)
        return encoder->addRows(pixels, stride, rows);
      for (int row = 0; row < rows; ++row, pixels += stride) {
        format->toRgb(pixels, part.width, rgb.data());
        encoder->addRows(rgb.data(), rgbStride, 1);
      }
    });
    if (!came)
      return std::nullopt;
  }
  return encoder ? encoder->finish() : std::nullopt;
}

std::optional<std::vector<std::uint32_t>> FrozenScreen::pixels(const Rectangle& part) const {
  std::vector<std::uint32_t> colors(static_cast<std::size_t>(part.width) *
                                    static_cast<std::size_t>(part.height));
  const Rectangle seen = part.intersected({0, 0, size().width, size().height});
  if (seen.isEmpty())
    return colors;
  const std::optional<PixelFormat> format = PixelFormat::ofRoot(display);
  if (!format)
    return std::nullopt;
  const xcb_rectangle_t area = toX(seen);
  const auto image = reply(display, xcb_get_image_reply,
                           xcb_get_image(display.connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, picture, area.x,
                                         area.y, area.width, area.height, allPlanes));
  const std::size_t stride = format->stride(seen.width);
  if (!image || static_cast<std::size_t>(xcb_get_image_data_length(image.get())) <
                    stride * static_cast<std::size_t>(seen.height))
    return std::nullopt;
  std::vector<std::uint8_t> rgb(static_cast<std::size_t>(seen.width) * 3);
  for (int y = 0; y < seen.height; ++y) {
    format->toRgb(xcb_get_image_data(image.get()) + static_cast<std::size_t>(y) * stride, seen.width,
                  rgb.data());
    std::uint32_t* color =
        &colors[Size{part.width, part.height}.indexOf({seen.x - part.x, seen.y - part.y + y})];
    for (std::size_t i = 0; i < rgb.size(); i += 3)
      *color++ = 0xff000000U | static_cast<std::uint32_t>(rgb[i] << 16 | rgb[i + 1] << 8 | rgb[i + 2]);
  }
  return colors;
}

}  // namespace screencapture
