#include "app/look/SoftShadow.h"

#include <QPainter>

namespace sorrel {

void paintSoftShadow(QPainter& painter, const QRectF& area, qreal radius, const SoftShadow& shadow) {
  // Rectangles of growing size, each letting a little through: they add up to a fall that is steep at the
  // edge and faint at the end.
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  const int steps = static_cast<int>(shadow.reach);
  for (int step = 1; step <= steps; ++step) {
    const qreal grown = shadow.reach * step / steps;
    const qreal share = 2.0 * (steps - step + 1) / (steps * (steps + 1.0));
    painter.setBrush(QColor::fromRgbF(0, 0, 0, static_cast<float>(shadow.opacity * share)));
    painter.drawRoundedRect(area.adjusted(-grown, -grown, grown, grown).translated(0, shadow.drop),
                            radius + grown, radius + grown);
  }
  painter.restore();
}

}  // namespace sorrel
