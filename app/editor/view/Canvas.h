#pragma once

#include "app/editor/model/EditorModel.h"
#include "app/editor/view/CanvasBackdrop.h"
#include "app/editor/view/CanvasFit.h"
#include "app/editor/view/CanvasLayers.h"
#include "app/editor/view/CanvasTool.h"
#include "app/editor/view/SorrelBurst.h"
#include "app/editor/view/StretchedView.h"
#include "platform/base/MainQueue.h"
#include "platform/base/Subscription.h"
#include "platform/desktop/Motion.h"

#include <QAbstractScrollArea>

#include <map>
#include <memory>
#include <optional>

class QNativeGestureEvent;

namespace sorrel {

class CanvasTextEditor;

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

  /// What the user has asked for; the picture may still be on its way there.
  [[nodiscard]] double zoomFactor() const { return zoom.factor; }
  /// What is in the middle stays there.
  void zoomIn();
  void zoomOut();
  void zoomToFit();
  /// Hears of each change of the zoom factor.
  [[nodiscard]] platform::Subscription observeZoom(std::function<void()> observer);

  /// What a tool shows over the picture has changed within a rectangle of display space.
  void updateOver(const QRectF& rectangle);
  /// Scrolls so that a place of display space is in view, as far as that goes.
  void reveal(const QRectF& rectangle);
  /// The watermarks are about to be moved, step by step.
  void carryMarks();
  /// What the pointer looks like may have changed.
  void updateCursor();

 protected:
  bool viewportEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  /// The chosen tool; if another has been chosen since, the one before has left.
  CanvasTool* toolNow();
  void modelChanges(EditorModel::Field field);
  void modelRepaints(EditorModel::Field field, const QRectF& rectangle);
  void react();
  void followTextEditing();

  void fitAnew();
  /// Shows the picture there; layers follow with the next painting.
  void showAt(const CanvasFit& next);
  void fitScrollBars();
  void zoomBy(void (CanvasZoom::*command)());
  void stepZoom(double factor);
  /// Without animation, about a point of the canvas.
  void zoomAtOnce(const QPointF& anchor);
  /// Until settle(), the pixels that are there are stretched.
  void beginStretching();
  /// Stretched pixels are replaced by real ones.
  void settle();

  void press(const QPointF& point, bool isDouble);
  /// The pointer is at this point of the canvas, or has left it.
  void hover(const std::optional<QPointF>& point);
  void endDrag();
  void endUnlessHeld(Qt::MouseButtons held);
  void pinch(const QNativeGestureEvent& event);
  [[nodiscard]] bool beginPan(const QMouseEvent& event);

  void updatePicture(const QRegion& inPicture);
  void paintPicture(QPainter& painter, const QRect& exposed);
  /// The tool's part, the watermarks if they are apart, and the burst, from below.
  void paintOver(QPainter& painter, const CanvasTool* tool);
  void paintMarks(QPainter& painter) const;
  [[nodiscard]] CanvasLayers::Marks marksFor(const CanvasTool* tool) const;
  void settleMarks();

  EditorModel& model;
  CanvasFit place;
  CanvasZoom zoom;
  CanvasBackdrop backdrop;
  CanvasLayers layers;
  StretchedView stretched;  // shows while the zoom changes
  struct Zooming {
    CanvasFit start;
    QPointF anchor;
  };
  Zooming zooming;
  platform::Motion zoomMotion;
  platform::WorkItem settling;
  platform::WorkItem givingBack;
  CanvasLayers::Marks marksAre = CanvasLayers::Marks::within;
  platform::WorkItem settlingMarks;
  platform::Observers zoomObservers;
  double pinched = 1;
  SorrelBurst burst;

  std::map<EditorModel::Tool, std::unique_ptr<CanvasTool>> tools;
  CanvasTool* chosen = nullptr;
  std::optional<QPointF> hoverLocation;  // in display space
  bool isDragging = false;
  struct Pan {
    QPointF from;  // on the canvas
    QPoint scrolled;
    Qt::MouseButton button;
  };
  std::optional<Pan> pan;
  bool isSpaceHeld = false;
  QPointF beyondPixel;  // what a touchpad has turned and no whole pixel has shown
  bool isFittingScrollBars = false;
  QString knownText;

  platform::Subscription changes;
  platform::Subscription repainting;
  platform::Subscription fontChanges;
  platform::WorkItem reaction;
  std::unique_ptr<CanvasTextEditor> textEditor;  // while the text is edited
};

}  // namespace sorrel
