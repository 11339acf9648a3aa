#pragma once

#include <QImage>
#include <QRectF>
#include <QSizeF>

class QPainter;

namespace platform {

/// An image with no more pixels than are seen where this one is stretched to that size in device pixels.
/// Drawn in its place there it looks the same, and needn't be reduced anew. Null for no pixels.
[[nodiscard]] QImage withEnoughPixels(const QImage& image, const QSizeF& onDevice);

/// Stretches the whole image over the rectangle. Where that shrinks it, every pixel of the image has its
/// share in the result; a painter by itself would look at the nearest few only. The painter may be scaled but
/// not turned.
void drawSmoothly(QPainter& painter, const QImage& image, const QRectF& rectangle);

}  // namespace platform
