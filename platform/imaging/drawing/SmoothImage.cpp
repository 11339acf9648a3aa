#include "platform/imaging/drawing/SmoothImage.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace platform {
namespace {

/// With a clear pixel behind each row and below the last: where hardly any of an image is inside the picture,
/// the painter reads one pixel too far.
QImage padded(const QImage& image) {
  return (image.hasAlphaChannel() ? image : image.convertToFormat(QImage::Format_RGBA8888_Premultiplied))
      .copy(0, 0, image.width() + 1, image.height() + 1);
}

}  // namespace

QImage withEnoughPixels(const QImage& image, const QSizeF& onDevice) {
  const QSize enough(std::min(image.width(), static_cast<int>(std::ceil(std::min(onDevice.width(), 1e6)))),
                     std::min(image.height(), static_cast<int>(std::ceil(std::min(onDevice.height(), 1e6)))));
  if (enough.isEmpty())
    return {};
  return enough == image.size() ? image
                                : image.scaled(enough, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

void drawSmoothly(QPainter& painter, const QImage& image, const QRectF& rectangle) {
  const QImage enough = withEnoughPixels(image, painter.deviceTransform().mapRect(rectangle).size());
  if (enough.isNull())
    return;
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  painter.drawImage(rectangle, padded(enough), QRectF({0, 0}, enough.size()));
}

}  // namespace platform
