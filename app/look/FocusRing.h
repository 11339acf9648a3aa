#pragma once

class QColor;
class QPainter;
class QRectF;

namespace sorrel {

/// Draws the ring that shows where the keyboard is, around a control's `area`. The colour has to stand out
/// from what the control lies on. `radius`: of the corners, in points.
void drawFocusRing(QPainter& painter, const QRectF& area, const QColor& color, double radius = 4);

}  // namespace sorrel
