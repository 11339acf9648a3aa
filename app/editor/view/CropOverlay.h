#pragma once

class QPainter;
class QRectF;
class QSizeF;

namespace sorrel {

/// The rectangle that a crop would keep, over the picture: all around it dimmed, its thirds, its frame and
/// its handles, in lines that are as thick on the screen at any scale. Nothing for a rectangle of no extent.
/// On a painter of display space; `canvasScale`: screen points a display unit.
void drawCropOverlay(QPainter& painter, const QRectF& cropRect, const QSizeF& displaySize,
                     double canvasScale);

/// How far the frame and the handles reach beyond the rectangle, in display space.
[[nodiscard]] double cropOverlayReach(double canvasScale);

}  // namespace sorrel
