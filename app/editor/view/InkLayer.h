#pragma once

#include "app/editor/view/CanvasView.h"
#include "app/editor/view/SavedTiles.h"
#include "platform/imaging/drawing/LineMask.h"

#include <QImage>
#include <QRect>
#include <QUuid>

#include <deque>

namespace sorrel {

class EditorModel;
struct PenStroke;

/// The document's pen strokes, with the one under way, on nothing else.
///
/// An added point, the end of a stroke and the undoing of one cost the same however many there are. Each
/// follow function returns what has changed on the layer, in its pixels; the stroke under way always
/// looks as it will when it has been committed.
class InkLayer {
 public:
  explicit InkLayer(const EditorModel& document);

  /// The document is another: nothing that is painted is of use.
  void reset();
  /// Paints all anew, or what another part of the picture at the same size doesn't have in common.
  void show(const CanvasView& next);
  /// The stroke under way has begun, grown or gone.
  [[nodiscard]] QRect followGesture();
  /// Strokes have been added or taken.
  [[nodiscard]] QRect followStrokes();

  /// Null while nothing has been drawn.
  [[nodiscard]] const QImage& pixels() const { return ink; }

 private:
  void needPixels();
  void paintCommitted(qsizetype from, qsizetype count, const QRect& part);
  [[nodiscard]] QRect takeBack(qsizetype count);
  void remember(SavedTiles before);
  void forget();

  [[nodiscard]] QRect lengthen(const PenStroke& stroke);
  [[nodiscard]] QRect dropGesture();

  const EditorModel& model;
  CanvasView view;
  QImage ink;
  qsizetype painted = 0;  // of the committed strokes
  /// What was there before each of the last strokes, the latest at the end.
  std::deque<SavedTiles> before;
  qsizetype rememberedBytes = 0;

  struct Gesture {
    QUuid id;  // null while there is none
    qsizetype points = 0;
    platform::LineMask mask;
    SavedTiles before;
  };
  Gesture gesture;
};

}  // namespace sorrel
