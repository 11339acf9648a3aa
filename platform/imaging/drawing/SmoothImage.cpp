#include "platform/imaging/drawing/SmoothImage.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace platform {

void drawSmoothly(QPainter& painter, const QImage& image, const QRectF& rectangle) {
  const QSizeF onDevice = painter.deviceTransform().mapRect(rectangle).size();
  const QSize enough(std::min(image.width(), static_cast<int>(std::ceil(std::min(onDevice.width(), 1e6)))),
                     std::min(image.height(), static_cast<int>(std::ceil(std::min(onDevice.height(), 1e6)))));
  if (enough.isEmpty())
    return;
  painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  painter.drawImage(rectangle, enough == image.size()
                                   ? image
                                   : image.scaled(enough, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

}  // namespace platform
