#include "tools/screencapture/x11/Stage.h"

#include <cstdio>
#include <utility>
#include <xcb/randr.h>

namespace screencapture {

Stage::Stage(const Display& used) : display(used), input(used), frozen(used) {
}

std::unique_ptr<Stage> Stage::set(const Display& display, const std::optional<Color>& veil) {
  // Three turns of the server lead to the frozen picture: which extensions it has, what they offer, done.
  xcb_prefetch_extension_data(display.connection(), &xcb_render_id);
  std::unique_ptr<Stage> stage(new Stage(display));
  if (!display.has(xcb_render_id)) {
    complain(display, "the X server lacks the RENDER extension");
    return nullptr;
  }
  stage->input.prepare();
  stage->input.request();
  const auto answer = reply(display, xcb_render_query_pict_formats_reply,
                            xcb_render_query_pict_formats(display.connection()));
  const auto formats = answer ? DrawingFormats::from(*answer, display.screen()) : std::nullopt;
  if (!formats) {
    complain(display, "the X server can't draw onto this screen");
    return nullptr;
  }
  stage->overlay.emplace(display, stage->frozen, *formats);
  stage->overlay->show(veil);
  xcb_prefetch_extension_data(display.connection(), &xcb_randr_id);
  return stage;
}

void Stage::clear() {
  // In this order: a click is meant for what is below as soon as nothing is seen of the selection any more.
  input.release();
  overlay->hide();
  display.flush();
}

void Stage::paint(std::span<const Rectangle> parts, const Layers& layers) {
  overlay->paint(parts, layers);
}

void Stage::setCursor(const Artwork& look) {
  const xcb_cursor_t before = std::exchange(cursor, overlay->makeCursor(look));
  input.setCursor(cursor);
  if (before != XCB_CURSOR_NONE)
    xcb_free_cursor(display.connection(), before);
}

std::optional<std::vector<std::uint32_t>> Stage::pixels(const Rectangle& part) const {
  return frozen.pixels(part);
}

void complain(const Display& display, const char* reason) {
  std::fprintf(stderr, "screencapture: %s\n", display.isLost() ? "lost the X server" : reason);
}

}  // namespace screencapture
