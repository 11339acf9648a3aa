#pragma once

#include "tools/screencapture/selection/Canvas.h"
#include "tools/screencapture/x11/Display.h"
#include "tools/screencapture/x11/FrozenScreen.h"

#include <optional>
#include <span>

namespace screencapture {

/// The picture formats of the RENDER extension that drawing needs.
struct DrawingFormats {
  xcb_render_pictformat_t screen = 0;       // of the root window's pixels
  xcb_render_pictformat_t translucent = 0;  // 32 bits with alpha

  /// Empty where the answer names none for either.
  [[nodiscard]] static std::optional<DrawingFormats> from(const xcb_render_query_pict_formats_reply_t& answer,
                                                          const xcb_screen_t& screen);
};

/// The window over all monitors that shows the frozen screen and what lies over it.
///
/// Each change is put together off the screen and copied to the window in one go, so nothing flickers.
class Overlay {
 public:
  Overlay(const Display& display, const FrozenScreen& frozen, const DrawingFormats& formats);

  /// Shows the frozen screen, under a veil if there is one. Sends requests without waiting.
  void show(const std::optional<Color>& veil);
  void hide();
  /// Draws these parts of the screen with what lies over them.
  void paint(std::span<const Rectangle> parts, const Layers& layers);

  [[nodiscard]] xcb_cursor_t makeCursor(const Artwork& look) const;

 private:
  class Uploaded;
  void composite(const Uploaded& piece, const Rectangle& place, const Rectangle& within);
  [[nodiscard]] Rectangle whole() const;

  const Display& display;
  const FrozenScreen& frozen;
  const DrawingFormats formats;
  const xcb_window_t window;
  const xcb_pixmap_t canvas;  // where changes are put together
  const xcb_gcontext_t copying;
  const xcb_render_picture_t canvasPicture;
};

}  // namespace screencapture
