#pragma once

#include "platform/wayland/WaylandGlobals.h"

#include <QImage>

struct wp_viewport;
struct zwlr_layer_surface_v1;

namespace testing_support {

/// One of a compositor's outputs, for tests that look at it and lay a picture under all of its windows. The
/// connection and what it offers must outlive this. Its members throw std::runtime_error where the compositor
/// refuses.
class WaylandOutput {
 public:
  WaylandOutput(wl_display* display, const platform::WaylandGlobals& globals,
                const platform::WaylandGlobals::Global& output);

  /// What it shows now, in its own pixels and without the pointer.
  [[nodiscard]] QImage picture() const;
  /// Shows a picture, of the output's pixels or of one color, until another takes its place; for the
  /// compositor to act on when it likes.
  void setBackground(const QImage& picture);

 private:
  void openBackground();

  wl_display* display;
  const platform::WaylandGlobals& globals;
  platform::WaylandObject<wl_output> output;
  platform::WaylandObject<wl_surface> surface{nullptr, {wl_surface_destroy}};
  platform::WaylandObject<zwlr_layer_surface_v1> layer;
  platform::WaylandObject<wp_viewport> viewport;
  platform::WaylandObject<wl_buffer> buffer{nullptr, {wl_buffer_destroy}};
  QSize points{};  // of the background, as the compositor has told
};

}  // namespace testing_support
