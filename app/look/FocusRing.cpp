#include "app/look/FocusRing.h"

#include <QPainter>

namespace sorrel {

void drawFocusRing(QPainter& painter, const QRectF& area, const QColor& color, double radius) {
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(color, 1.5));
  painter.drawRoundedRect(area.adjusted(0.75, 0.75, -0.75, -0.75), radius, radius);
}

}  // namespace sorrel
