#include "platform/desktop/tray/X11Picture.h"

#include "platform/x11/X11Connection.h"

#include <QImage>
#include <QPixmap>

#include <algorithm>
#include <xcb/render.h>

namespace platform {
namespace {

/// As QImage::Format_ARGB32_Premultiplied, which has the byte order of the machine.
bool isPremultipliedArgb(const xcb_render_pictforminfo_t& format) {
  const xcb_render_directformat_t& channels = format.direct;
  return format.type == XCB_RENDER_PICT_TYPE_DIRECT && format.depth == 32 && channels.alpha_mask == 0xff &&
         channels.alpha_shift == 24 && channels.red_mask == 0xff && channels.red_shift == 16 &&
         channels.green_mask == 0xff && channels.green_shift == 8 && channels.blue_mask == 0xff &&
         channels.blue_shift == 0;
}

xcb_render_pictformat_t formatOf(const xcb_render_query_pict_formats_reply_t& formats,
                                 xcb_visualid_t visual) {
  for (auto screen = xcb_render_query_pict_formats_screens_iterator(&formats); screen.rem;
       xcb_render_pictscreen_next(&screen))
    for (auto depth = xcb_render_pictscreen_depths_iterator(screen.data); depth.rem;
         xcb_render_pictdepth_next(&depth))
      for (auto each = xcb_render_pictdepth_visuals_iterator(depth.data); each.rem;
           xcb_render_pictvisual_next(&each))
        if (each.data->visual == visual)
          return each.data->format;
  return 0;
}

}  // namespace

X11Look X11Look::of(xcb_connection_t* connection, quint32 visual) {
  const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
  for (auto depth = xcb_screen_allowed_depths_iterator(screen); depth.rem; xcb_depth_next(&depth))
    for (auto each = xcb_depth_visuals_iterator(depth.data); each.rem; xcb_visualtype_next(&each))
      if (visual && each.data->visual_id == visual)
        return {visual, depth.data->depth, depth.data->depth == 32};
  return {screen->root_visual, screen->root_depth, false};
}

X11Picture::X11Picture(xcb_connection_t* display, quint32 drawn, const X11Look& look)
    : connection(display), window(drawn) {
  if (!xcb_get_extension_data(connection, &xcb_render_id)->present)
    return;
  const auto formats = xcbAsk(connection, xcb_render_query_pict_formats, xcb_render_query_pict_formats_reply);
  const xcb_render_pictformat_t windowFormat = formats ? formatOf(*formats, look.visual) : 0;
  if (!windowFormat)
    return;
  const auto* const first = xcb_render_query_pict_formats_formats(formats.get());
  const auto* const last = first + xcb_render_query_pict_formats_formats_length(formats.get());
  if (const auto* const found = std::find_if(first, last, isPremultipliedArgb); found != last)
    iconFormat = found->id;
  target = xcb_generate_id(connection);
  xcb_render_create_picture(connection, target, window, windowFormat, 0, nullptr);
}

X11Picture::~X11Picture() {
  if (target)  // unless it has gone with its window
    xcb_discard_reply(connection, xcb_render_free_picture_checked(connection, target).sequence);
}

void X11Picture::draw(const QIcon& icon, const QSize& windowSize) const {
  xcb_clear_area(connection, false, window, 0, 0, 0, 0);
  const int side = std::min(windowSize.width(), windowSize.height());
  const QImage image =
      icon.pixmap(QSize(side, side), 1).toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
  if (!target || !iconFormat || image.isNull()) {
    xcb_flush(connection);
    return;
  }
  const auto width = static_cast<uint16_t>(image.width());
  const auto height = static_cast<uint16_t>(image.height());
  const xcb_pixmap_t pixmap = xcb_generate_id(connection);
  const xcb_gcontext_t context = xcb_generate_id(connection);
  const xcb_render_picture_t source = xcb_generate_id(connection);
  xcb_create_pixmap(connection, 32, pixmap, window, width, height);
  xcb_create_gc(connection, context, pixmap, 0, nullptr);
  xcb_put_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, context, width, height, 0, 0, 0, 32,
                static_cast<uint32_t>(image.sizeInBytes()), image.constBits());
  xcb_render_create_picture(connection, source, pixmap, iconFormat, 0, nullptr);
  xcb_render_composite(connection, XCB_RENDER_PICT_OP_OVER, source, XCB_NONE, target, 0, 0, 0, 0,
                       static_cast<int16_t>((windowSize.width() - width) / 2),
                       static_cast<int16_t>((windowSize.height() - height) / 2), width, height);
  xcb_render_free_picture(connection, source);
  xcb_free_gc(connection, context);
  xcb_free_pixmap(connection, pixmap);
  xcb_flush(connection);
}

}  // namespace platform
