#include "tools/screencapture/x11/PixelFormat.h"

#include <algorithm>
#include <bit>

namespace screencapture {

namespace {

const xcb_visualtype_t* rootVisual(const xcb_screen_t& screen) {
  for (auto depths = xcb_screen_allowed_depths_iterator(&screen); depths.rem; xcb_depth_next(&depths)) {
    for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem; xcb_visualtype_next(&visuals)) {
      if (visuals.data->visual_id == screen.root_visual)
        return visuals.data;
    }
  }
  return nullptr;
}

std::uint8_t channel(std::uint32_t pixel, std::uint32_t mask) {
  const std::uint64_t largest = mask >> std::countr_zero(mask);
  const std::uint64_t value = (pixel & mask) >> std::countr_zero(mask);
  return static_cast<std::uint8_t>((value * 255 + largest / 2) / largest);
}

}  // namespace

std::optional<PixelFormat> PixelFormat::ofRoot(const Display& display) {
  const xcb_visualtype_t* visual = rootVisual(display.screen());
  if (!visual || !visual->red_mask || !visual->green_mask || !visual->blue_mask)
    return std::nullopt;
  const xcb_setup_t& setup = display.setup();
  const xcb_format_t* const formats = xcb_setup_pixmap_formats(&setup);
  const xcb_format_t* const end = formats + xcb_setup_pixmap_formats_length(&setup);
  const auto* format = std::find_if(
      formats, end, [&](const xcb_format_t& each) { return each.depth == display.screen().root_depth; });
  if (format == end || format->bits_per_pixel % 8 != 0)
    return std::nullopt;
  return PixelFormat{
      format->bits_per_pixel,
      format->scanline_pad,
      setup.image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST ? ByteOrder::LeastFirst : ByteOrder::MostFirst,
      visual->red_mask,
      visual->green_mask,
      visual->blue_mask};
}

std::size_t PixelFormat::stride(int width) const {
  const auto unit = static_cast<std::size_t>(rowUnitBits);
  const std::size_t bits = static_cast<std::size_t>(width) * static_cast<std::size_t>(bitsPerPixel);
  return (bits + unit - 1) / unit * unit / 8;
}

std::optional<platform::ChannelLayout> PixelFormat::layout() const {
  const int bytes = bitsPerPixel / 8;
  const auto offset = [&](std::uint32_t mask) {
    const int place = std::countr_zero(mask) / 8;
    return byteOrder == ByteOrder::LeastFirst ? place : bytes - 1 - place;
  };
  for (const std::uint32_t mask : {redMask, greenMask, blueMask}) {
    if (std::countr_zero(mask) % 8 != 0 || mask >> std::countr_zero(mask) != 0xff)
      return std::nullopt;
  }
  return platform::ChannelLayout{bytes, offset(redMask), offset(greenMask), offset(blueMask)};
}

void PixelFormat::toRgb(const std::uint8_t* row, int width, std::uint8_t* out) const {
  const int bytes = bitsPerPixel / 8;
  for (int x = 0; x < width; ++x, row += bytes) {
    std::uint32_t pixel = 0;
    for (int i = 0; i < bytes; ++i)
      pixel = pixel << 8 | row[byteOrder == ByteOrder::MostFirst ? i : bytes - 1 - i];
    *out++ = channel(pixel, redMask);
    *out++ = channel(pixel, greenMask);
    *out++ = channel(pixel, blueMask);
  }
}

}  // namespace screencapture
