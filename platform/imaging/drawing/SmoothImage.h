#pragma once

#include <QImage>
#include <QRectF>

class QPainter;

namespace platform {

/// Stretches the whole image over the rectangle. Where that shrinks it, every pixel of the image has its
/// share in the result; a painter by itself would look at the nearest few only. The painter may be scaled but
/// not turned.
void drawSmoothly(QPainter& painter, const QImage& image, const QRectF& rectangle);

}  // namespace platform
