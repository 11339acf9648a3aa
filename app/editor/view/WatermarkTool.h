#pragma once

#include "app/editor/view/CanvasTool.h"
#include "app/editor/view/Snapping.h"

#include <QSizeF>

#include <optional>

namespace sorrel {

class Canvas;
class EditorModel;

/// Moves the text and the logo, by the pointer with guides that they keep to, and by the arrow keys; a double
/// click edits the text. No move can be undone.
class WatermarkTool : public CanvasTool {
 public:
  WatermarkTool(EditorModel& model, Canvas& canvas);

  void left() override;
  void pressed(const QPointF& place) override;
  void dragged(const QPointF& place) override;
  void released() override;
  void doublePressed(const QPointF& place) override;
  [[nodiscard]] bool movedBy(const QPointF& step) override;
  [[nodiscard]] QCursor cursorAt(const QPointF& place) const override;
  [[nodiscard]] bool isOver() const override { return snapGuideV || snapGuideH; }
  void paintOver(QPainter& painter, double scale) const override;

 private:
  enum class Mark { text, logo };

  [[nodiscard]] std::optional<Mark> markAt(const QPointF& place) const;
  [[nodiscard]] bool isThere(Mark mark) const;
  [[nodiscard]] QPointF centerOf(Mark mark) const;
  [[nodiscard]] QSizeF sizeOf(Mark mark) const;
  void moveTo(Mark mark, const QPointF& center);
  void showGuides(const Snap& snap);
  void updateGuides();

  EditorModel& model;
  Canvas& canvas;
  std::optional<Mark> selected;  // what the arrow keys move
  struct Drag {
    Mark mark;
    QPointF start;
    std::optional<QPointF> startCenter;  // once it has gone far enough to be one
  };
  std::optional<Drag> drag;
  std::optional<double> snapGuideV;
  std::optional<double> snapGuideH;
};

}  // namespace sorrel
