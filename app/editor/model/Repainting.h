#pragma once

#include <QList>
#include <QPointF>
#include <QRectF>

namespace sorrel {

/// What has to be painted again when a line under way has changed, in display space. It remembers what is
/// shown, so an added point costs the same however long the line is.
class LineRepainting {
 public:
  /// `isSame` says that it is the line of the last call, with points appended if any.
  [[nodiscard]] QRectF shown(const QList<QPointF>& points, double width, bool isSame);

 private:
  qsizetype count = 0;
  double shownWidth = 0;
  QRectF bounds;
};

}  // namespace sorrel
