#pragma once

#include "app/editor/model/EditorModel.h"
#include "app/editor/view/CanvasBackdrop.h"
#include "app/editor/view/CanvasFit.h"
#include "app/editor/view/CanvasTool.h"
#include "platform/base/MainQueue.h"
#include "platform/base/Subscription.h"

#include <QAbstractScrollArea>

#include <map>
#include <memory>
#include <optional>

namespace sorrel {

/// The picture with all that lies on it, zoomed and scrolled, and under the pointer of the chosen tool.
///
/// Places in the picture are in display space, places on the canvas in points, and all that is painted lies
/// in whole device pixels.
class Canvas : public QAbstractScrollArea {
 public:
  Canvas(EditorModel& model, QWidget* parent);
  ~Canvas() override;

  /// Serves while the model's tool is this one.
  void setTool(EditorModel::Tool which, std::unique_ptr<CanvasTool> tool);

  [[nodiscard]] const CanvasFit& fit() const { return place; }
  /// Points of the screen for a display unit.
  [[nodiscard]] double canvasScale() const { return place.scale(); }

  /// What a tool shows over the picture has changed within a rectangle of display space.
  void updateOver(const QRectF& rectangle);
  /// What the pointer looks like may have changed.
  void updateCursor();

 protected:
  bool viewportEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  /// The chosen tool; if another has been chosen since, the one before has left.
  CanvasTool* toolNow();
  void modelChanges(EditorModel::Field field);
  void react();
  void fitAnew();
  void show(const CanvasFit& next);
  [[nodiscard]] QRect pointsOf(const QRectF& pixels) const;

  void press(const QPointF& point, bool isDouble);
  /// The pointer is at this point of the canvas, or has left it.
  void hover(const std::optional<QPointF>& point);
  void endDrag();
  void paintPicture(QPainter& painter, const QRect& exposed);

  EditorModel& model;
  CanvasFit place;
  CanvasBackdrop backdrop;
  std::map<EditorModel::Tool, std::unique_ptr<CanvasTool>> tools;
  CanvasTool* chosen = nullptr;
  std::optional<QPointF> hoverLocation;  // in display space
  bool isDragging = false;
  QString knownText;
  platform::Subscription changes;
  platform::Subscription repainting;
  platform::WorkItem reaction;
};

}  // namespace sorrel
