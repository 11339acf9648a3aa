#pragma once

class QColor;
class QPainter;
class QRectF;

namespace sorrel {

/// Draws the ring that shows where the keyboard is, around a control's `area`. The colour has to stand out
/// from what the control lies on.
void drawFocusRing(QPainter& painter, const QRectF& area, const QColor& color);

}  // namespace sorrel
