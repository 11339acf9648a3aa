#pragma once

#include "app/editor/view/CanvasTool.h"
#include "app/editor/view/CropRectangle.h"
#include "platform/base/MainQueue.h"
#include "platform/base/Subscription.h"

#include <QRectF>

#include <optional>

namespace sorrel {

class Canvas;
class CropApplyButton;
class EditorModel;

/// Chooses what a crop keeps. The rectangle lives here alone until the button in the middle of the canvas, or
/// Return, applies it; another tool drops it.
class CropTool : public CanvasTool {
 public:
  CropTool(EditorModel& model, Canvas& canvas);
  ~CropTool() override;

  /// In display space; none while another tool is chosen. Undoing a crop leaves it as it is.
  [[nodiscard]] const std::optional<QRectF>& rectangle() const { return cropRect; }

  void chosen() override;
  void left() override;
  void pressed(const QPointF& place) override;
  void dragged(const QPointF& place) override;
  void released() override;
  [[nodiscard]] QCursor cursorAt(const QPointF& place) const override;
  [[nodiscard]] bool movedBy(const QPointF& step) override;
  [[nodiscard]] bool isOver() const override { return cropRect.has_value(); }
  void paintOver(QPainter& painter, double scale) const override;

 private:
  struct Drag {
    CropHandle handle;
    QRectF startRect;
    QPointF start;
  };

  void show(const std::optional<QRectF>& next);
  void updateButton();
  void apply();
  [[nodiscard]] QRectF wholePicture() const;

  EditorModel& model;
  Canvas& canvas;
  std::optional<QRectF> cropRect;
  std::optional<Drag> drag;
  CropApplyButton* const applyButton;  // the canvas's
  platform::Subscription sizeChange;
  platform::WorkItem buttonUpdate;
};

}  // namespace sorrel
