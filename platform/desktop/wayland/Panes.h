#pragma once

#include "platform/desktop/wayland/LayerShell.h"

#include <QPointF>
#include <QRect>

#include <functional>

class QScreen;
struct wl_pointer;
struct wp_viewport;

namespace platform {

/// Whether the compositor has what panes and their pointer are made of.
[[nodiscard]] bool arePanesOffered();

/// Over an output, transparent, and there for the pointer.
class Pane {
 public:
  Pane(const QScreen& screen, LayerRole::Extent extent);
  Pane(const Pane&) = delete;
  Pane& operator=(const Pane&) = delete;

  [[nodiscard]] const wl_surface* surface() const { return pane.get(); }

  /// The output's, in the toolkit's coordinates.
  const QRect place;

 private:
  const WaylandObject<wl_surface> pane;
  const LayerRole role;
  const WaylandObject<wp_viewport> viewport;
  const WaylandObject<wl_buffer> pixel;
};

/// What the pointer does on the program's surfaces, its panes among them. The program's own pointer wouldn't
/// say again what the toolkit has been told already.
class PanePointer {
 public:
  /// Hears on `queue`, or if that is null on the connection's default queue. Waits until the compositor has
  /// said whether there is a pointer. `pressed`, if given, is told of each press of a button, and may destroy
  /// this.
  explicit PanePointer(wl_event_queue* queue, std::function<void()> pressed = {});
  PanePointer(const PanePointer&) = delete;
  PanePointer& operator=(const PanePointer&) = delete;

  /// Not where there is touch alone.
  [[nodiscard]] bool isThere() const { return bool(pointer); }
  /// The surface that the pointer is on, or was on last; nullptr before.
  [[nodiscard]] const wl_surface* surface() const { return entered; }
  /// Where it came onto the surface, in the surface's points.
  [[nodiscard]] QPointF place() const { return enteredAt; }

 private:
  struct Listeners;

  const std::function<void()> onPress;
  WaylandObject<wl_seat> seat;
  WaylandObject<wl_pointer> pointer;
  const wl_surface* entered = nullptr;
  QPointF enteredAt;
};

}  // namespace platform
