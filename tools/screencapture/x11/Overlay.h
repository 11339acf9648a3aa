#pragma once

#include "tools/screencapture/selection/Artwork.h"
#include "tools/screencapture/selection/Hint.h"
#include "tools/screencapture/selection/Scene.h"
#include "tools/screencapture/x11/Display.h"
#include "tools/screencapture/x11/FrozenScreen.h"

#include <memory>
#include <optional>

namespace screencapture {

/// The picture formats of the RENDER extension that drawing needs.
struct DrawingFormats {
  xcb_render_pictformat_t screen = 0;       // of the root window's pixels
  xcb_render_pictformat_t translucent = 0;  // 32 bits with alpha

  /// Empty where the answer names none for either.
  [[nodiscard]] static std::optional<DrawingFormats> from(const xcb_render_query_pict_formats_reply_t& answer,
                                                          const xcb_screen_t& screen);
};

/// The window over all monitors that shows the frozen screen under a dim veil, and a scene above it.
///
/// Each change is put together off the screen and copied to the window in one go, and only where it differs
/// from what is shown, so nothing flickers.
class Overlay {
 public:
  Overlay(const Display& display, const FrozenScreen& frozen, const DrawingFormats& formats,
          Language language);

  /// Shows the veiled screen. Sends requests without waiting.
  void show();
  void hide();
  void setMetrics(const Metrics& metrics) { measures = metrics; }
  [[nodiscard]] const Metrics& metrics() const { return measures; }
  /// Draws what changes from the scene shown so far to this one.
  void show(const Scene& scene);
  [[nodiscard]] const Scene& shown() const { return scene; }
  /// Draws a part that another window had covered.
  void repaint(const Rectangle& part);

  [[nodiscard]] xcb_cursor_t makeCursor(const Artwork& look) const;

 private:
  class Uploaded;
  /// Artwork that lies above the scene's plain rectangles.
  struct Piece {
    std::unique_ptr<Uploaded> artwork;
    Rectangle place;
  };
  [[nodiscard]] std::vector<Piece> piecesOfScene() const;
  void paint(const Rectangle& part, const std::vector<Piece>& pieces);
  [[nodiscard]] Rectangle whole() const;

  const Display& display;
  const FrozenScreen& frozen;
  const DrawingFormats formats;
  const Language language;  // of the hint
  const xcb_window_t window;
  const xcb_pixmap_t canvas;  // where changes are put together
  const xcb_gcontext_t copying;
  const xcb_render_picture_t canvasPicture;
  Metrics measures;
  Scene scene;
};

}  // namespace screencapture
