#include "tools/screencapture/x11/Overlay.h"

#include <bit>
#include <memory>

namespace screencapture {

namespace {

/// From 8-bit channels to the protocol's 16 bits with the colours multiplied by alpha.
constexpr xcb_render_color_t toX(const Color& color) {
  const auto channel = [&](unsigned shift) {
    return static_cast<std::uint16_t>(((color.rgb >> shift) & 0xff) * 0x101 * color.alpha);
  };
  return {channel(16), channel(8), channel(0), static_cast<std::uint16_t>(0xffff * color.alpha)};
}

constexpr std::uint8_t translucentDepth = 32;

}  // namespace

std::optional<DrawingFormats> DrawingFormats::from(const xcb_render_query_pict_formats_reply_t& answer,
                                                   const xcb_screen_t& screen) {
  DrawingFormats found;
  for (auto screens = xcb_render_query_pict_formats_screens_iterator(&answer); screens.rem;
       xcb_render_pictscreen_next(&screens)) {
    for (auto depths = xcb_render_pictscreen_depths_iterator(screens.data); depths.rem;
         xcb_render_pictdepth_next(&depths)) {
      for (auto visuals = xcb_render_pictdepth_visuals_iterator(depths.data); visuals.rem;
           xcb_render_pictvisual_next(&visuals)) {
        if (visuals.data->visual == screen.root_visual)
          found.screen = visuals.data->format;
      }
    }
  }
  for (auto formats = xcb_render_query_pict_formats_formats_iterator(&answer); formats.rem;
       xcb_render_pictforminfo_next(&formats)) {
    const xcb_render_pictforminfo_t& each = *formats.data;
    if (each.depth == translucentDepth && each.direct.alpha_mask == 0xff && each.direct.alpha_shift == 24 &&
        each.direct.red_shift == 16 && each.direct.blue_shift == 0)
      found.translucent = each.id;
  }
  return found.screen && found.translucent ? std::optional(found) : std::nullopt;
}

/// Artwork in the X server, for as long as this lives.
class Overlay::Uploaded {
 public:
  Uploaded(const Display& used, const Artwork& artwork, xcb_render_pictformat_t format)
      : display(used), picture(display.newId()) {
    xcb_connection_t* const connection = display.connection();
    const auto width = static_cast<std::uint16_t>(artwork.size.width);
    const auto height = static_cast<std::uint16_t>(artwork.size.height);
    const xcb_pixmap_t pixmap = display.newId();
    const xcb_gcontext_t context = display.newId();
    xcb_create_pixmap(connection, translucentDepth, pixmap, display.root(), width, height);
    xcb_create_gc(connection, context, pixmap, 0, nullptr);
    std::vector<std::uint32_t> pixels = artwork.pixels;
    const bool serverIsLittle = display.setup().image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    if (serverIsLittle != (std::endian::native == std::endian::little)) {
      for (std::uint32_t& pixel : pixels)
        pixel = __builtin_bswap32(pixel);
    }
    xcb_put_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, width, height, 0, 0, 0,
                  translucentDepth, static_cast<std::uint32_t>(pixels.size() * sizeof(std::uint32_t)),
                  reinterpret_cast<const std::uint8_t*>(pixels.data()));
    xcb_render_create_picture(connection, picture, pixmap, format, 0, nullptr);
    xcb_free_gc(connection, context);
    xcb_free_pixmap(connection, pixmap);
  }
  ~Uploaded() { xcb_render_free_picture(display.connection(), picture); }
  Uploaded(const Uploaded&) = delete;
  Uploaded& operator=(const Uploaded&) = delete;

 private:
  const Display& display;

 public:
  const xcb_render_picture_t picture;
};

Overlay::Overlay(const Display& used, const FrozenScreen& screen, const DrawingFormats& known)
    : display(used),
      frozen(screen),
      formats(known),
      window(used.newId()),
      canvas(used.newId()),
      copying(used.newId()),
      canvasPicture(used.newId()) {
  xcb_connection_t* const connection = display.connection();
  const auto width = static_cast<std::uint16_t>(whole().width);
  const auto height = static_cast<std::uint16_t>(whole().height);
  const std::uint32_t values[] = {frozen.pixmap(), 1};
  xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, display.root(), 0, 0, width, height, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                    XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT, values);
  constexpr std::string_view name = "screencapture";
  xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                      static_cast<std::uint32_t>(name.size()), name.data());
}

void Overlay::show(const std::optional<Color>& veil) {
  xcb_connection_t* const connection = display.connection();
  const auto width = static_cast<std::uint16_t>(whole().width);
  const auto height = static_cast<std::uint16_t>(whole().height);
  xcb_map_window(connection, window);
  if (veil) {
    // It goes straight onto the window: the first picture is there with one pass less over the pixels.
    const xcb_render_picture_t onWindow = display.newId();
    const xcb_rectangle_t all = toX(whole());
    xcb_render_create_picture(connection, onWindow, window, formats.screen, 0, nullptr);
    xcb_render_fill_rectangles(connection, XCB_RENDER_PICT_OP_OVER, onWindow, toX(*veil), 1, &all);
    xcb_render_free_picture(connection, onWindow);
  }
  // From here on the server must not paint the window by itself, which would show the screen without the
  // veil; it tells what to paint instead.
  const std::uint32_t values[] = {XCB_BACK_PIXMAP_NONE, XCB_EVENT_MASK_EXPOSURE};
  xcb_change_window_attributes(connection, window, XCB_CW_BACK_PIXMAP | XCB_CW_EVENT_MASK, values);

  xcb_create_pixmap(connection, display.screen().root_depth, canvas, display.root(), width, height);
  const std::uint32_t noExposures = 0;
  xcb_create_gc(connection, copying, window, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
  xcb_render_create_picture(connection, canvasPicture, canvas, formats.screen, 0, nullptr);
}

void Overlay::hide() {
  xcb_destroy_window(display.connection(), window);
}

xcb_cursor_t Overlay::makeCursor(const Artwork& look) const {
  const Uploaded picture(display, look, formats.translucent);
  const xcb_cursor_t cursor = display.newId();
  xcb_render_create_cursor(display.connection(), cursor, picture.picture,
                           static_cast<std::uint16_t>(look.hotSpot.x),
                           static_cast<std::uint16_t>(look.hotSpot.y));
  return cursor;
}

void Overlay::paint(std::span<const Rectangle> parts, const Layers& layers) {
  xcb_connection_t* const connection = display.connection();
  std::vector<std::unique_ptr<Uploaded>> uploads;
  for (const Layers::Piece& piece : layers.pieces)
    uploads.push_back(std::make_unique<Uploaded>(display, piece.artwork, formats.translucent));
  for (const Rectangle& part : parts) {
    const Rectangle within = part.intersected(whole());
    if (within.isEmpty())
      continue;
    const xcb_rectangle_t area = toX(within);
    xcb_copy_area(connection, frozen.pixmap(), canvas, copying, area.x, area.y, area.x, area.y, area.width,
                  area.height);
    for (const Fill& fill : layers.fills(within)) {
      const xcb_rectangle_t filled = toX(fill.area);
      xcb_render_fill_rectangles(connection, XCB_RENDER_PICT_OP_OVER, canvasPicture, toX(fill.color), 1,
                                 &filled);
    }
    for (std::size_t i = 0; i < uploads.size(); ++i)
      composite(*uploads[i], layers.pieces[i].place, within);
    xcb_copy_area(connection, canvas, window, copying, area.x, area.y, area.x, area.y, area.width,
                  area.height);
  }
}

void Overlay::composite(const Uploaded& piece, const Rectangle& place, const Rectangle& within) {
  const Rectangle shown = place.intersected(within);
  if (shown.isEmpty())
    return;
  const xcb_rectangle_t to = toX(shown);
  xcb_render_composite(display.connection(), XCB_RENDER_PICT_OP_OVER, piece.picture, XCB_RENDER_PICTURE_NONE,
                       canvasPicture, static_cast<std::int16_t>(shown.x - place.x),
                       static_cast<std::int16_t>(shown.y - place.y), 0, 0, to.x, to.y, to.width, to.height);
}

Rectangle Overlay::whole() const {
  return {0, 0, frozen.size().width, frozen.size().height};
}

}  // namespace screencapture
