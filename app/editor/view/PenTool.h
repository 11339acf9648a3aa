#pragma once

#include "app/editor/view/CanvasTool.h"

namespace sorrel {

class EditorModel;

/// Draws by hand. The points are the pointer's, as they come.
class PenTool : public CanvasTool {
 public:
  explicit PenTool(EditorModel& document) : model(document) {}

  void pressed(const QPointF& place) override;
  void dragged(const QPointF& place) override;
  void released() override;
  [[nodiscard]] QCursor cursorAt(const QPointF&) const override { return Qt::CrossCursor; }

 private:
  EditorModel& model;
};

}  // namespace sorrel
