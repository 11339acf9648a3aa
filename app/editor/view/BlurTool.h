#pragma once

#include "app/editor/view/CanvasTool.h"
#include "app/editor/view/Guide.h"
#include "platform/base/MainQueue.h"
#include "platform/base/Subscription.h"

#include <QPainterPath>
#include <QRectF>

#include <optional>
#include <vector>

namespace sorrel {

class Canvas;
class EditorModel;

/// Blurs along a brush's way or in a rectangle, with a guide that shows where: the brush's circle, a cross
/// before an area is begun, and the area's frame.
class BlurTool : public CanvasTool {
 public:
  BlurTool(EditorModel& model, Canvas& canvas);

  void chosen() override { updateGuide(); }
  void left() override;
  void pressed(const QPointF& place) override;
  void dragged(const QPointF& place) override;
  void released() override;
  void hovered(const std::optional<QPointF>& place) override;
  [[nodiscard]] QCursor cursorAt(const QPointF&) const override { return Qt::CrossCursor; }
  [[nodiscard]] bool isOver() const override { return !shown.empty(); }
  void paintOver(QPainter& painter, double scale) const override;

 private:
  /// One stroke of the guide, a path or a circle, and the rectangles that hold it.
  struct Line {
    QPainterPath path;
    QPointF center;
    double diameter = 0;
    Emphasis emphasis = Emphasis::Emphasized;
    std::vector<QRectF> bounds;
  };
  [[nodiscard]] std::vector<Line> guide() const;
  /// Shows the guide where it belongs now, in the place of where it was.
  void updateGuide();
  void update(const std::vector<Line>& lines);

  EditorModel& model;
  Canvas& canvas;
  QPointF start;  // of an area
  std::optional<QPointF> hoverLocation;
  std::vector<Line> shown;
  mutable GuideCircle circle;
  platform::Subscription settings;
  platform::WorkItem settingsUpdate;
};

}  // namespace sorrel
