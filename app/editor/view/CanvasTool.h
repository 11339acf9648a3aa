#pragma once

#include <QCursor>
#include <QPointF>

#include <optional>

class QPainter;

namespace sorrel {

/// What one of the editor's tools does on the picture. The canvas calls the one that is chosen; places are in
/// display space, and may lie beyond the picture once a drag has begun in it. What a tool shows besides the
/// document it paints over it, and says so by Canvas::updateOver().
class CanvasTool {
 public:
  CanvasTool() = default;
  virtual ~CanvasTool() = default;
  CanvasTool(const CanvasTool&) = delete;
  CanvasTool& operator=(const CanvasTool&) = delete;

  /// It has become the chosen tool; another has. A drag under way has been ended before.
  virtual void chosen() {}
  virtual void left() {}

  /// The pointer's button goes down, moves while it is down, and comes up again. A press that doesn't move
  /// is a drag too.
  virtual void pressed(const QPointF& /*place*/) {}
  virtual void dragged(const QPointF& /*place*/) {}
  virtual void released() {}
  /// In the place of the second press of two.
  virtual void doublePressed(const QPointF& place) { pressed(place); }

  /// Where the pointer is over the picture, dragging or not; none when it has left.
  virtual void hovered(const std::optional<QPointF>& /*place*/) {}
  /// Of the pointer there while nothing is dragged.
  [[nodiscard]] virtual QCursor cursorAt(const QPointF& /*place*/) const { return Qt::ArrowCursor; }

  /// The arrow keys: what the tool works on moves by that much. False if there is nothing that they move.
  [[nodiscard]] virtual bool movedBy(const QPointF& /*step*/) { return false; }

  /// Whether it shows anything now. What a tool shows lies below the watermarks.
  [[nodiscard]] virtual bool isOver() const { return false; }
  /// The painter's unit is a display unit; it is clipped to the picture. `scale`: points of the screen for a
  /// display unit.
  virtual void paintOver(QPainter& /*painter*/, double /*scale*/) const {}
};

}  // namespace sorrel
